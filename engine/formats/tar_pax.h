#pragma once

#include "engine/formats/archive.h"
#include "engine/formats/tar_header.h"

namespace vantoro {

/// What extended headers say of a file (POSIX.1-2001, with the records of GNU tar, star and libarchive).
struct TarRecords {
    std::optional<std::string> path, linkPath, owner, group, comment, sparseName;
    std::optional<std::uint64_t> size, realSize;
    std::optional<Timestamp> modified, accessed, created;
    std::vector<std::pair<std::string, std::string>> attributes;
    bool namesAreBinary = false; ///< hdrcharset=BINARY
    // GNU sparse files: 0.0 and 0.1 put the map here, 1.0 in front of the data.
    std::vector<TarExtent> sparseMap;
    bool hasSparseMap = false;
    unsigned sparseMajor = 0, sparseMinor = 0;

    /// Reads the records of one extended header; what it does not know is passed over. Later ones win.
    Result<void> parse(ConstBytes block);

private:
    Result<void> take(std::string_view key, std::string_view value);
    Result<bool> takeSparse(std::string_view key, std::string_view value);
    Result<void> takeAttribute(std::string_view name, std::string value);
    std::optional<std::uint64_t> m_pendingOffset; // GNU.sparse.offset, until its numbytes comes
};

/// A decimal number and nothing else.
std::optional<std::uint64_t> parseDecimal(std::string_view text);

}
