#pragma once

#include "engine/formats/archive.h"

namespace vantoro {

/// One header of an LHA, LArc or PMarc archive, levels 0 to 3. Source of the format: LHa for UNIX's header.doc.
struct LhaHeader {
    std::string method; ///< "-lh5-"
    unsigned level = 0;
    char system = 0; ///< 'M' MS-DOS, 'U' Unix, 'm' Mac OS, 'A' Amiga …; 0 when not stored
    std::string name; ///< folder and file name as stored, folders divided by '/' where the format says so
    CharsetId nameCharset = kCharsetUnknown;
    std::string comment, owner, group;
    std::uint64_t packedSize = 0, size = 0;
    std::uint16_t crc = 0; ///< of the decoded data
    Timestamp modified, created, accessed;
    std::optional<std::uint32_t> mode; ///< of Unix
    std::optional<std::string> linkTarget;
    std::uint64_t dataPosition = 0;

    bool isFolder() const { return method == "-lhd-" && !linkTarget; }
    std::uint64_t end() const { return dataPosition + packedSize; }

    /// The header at `position`, its checksum held against it; nothing where the archive ends: at a zero byte, at the
    /// end of the source, or at CP/M's padding.
    static Result<std::optional<LhaHeader>> read(const ByteSource& source, std::uint64_t position);
    /// Whether a header may stand at the start of `bytes`.
    static bool looksRight(ConstBytes bytes);
};

}
