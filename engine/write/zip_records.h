#pragma once

#include "engine/write/source_list.h"

namespace vantoro {

/// What the headers of one zip entry say. Source of the layout: PKWARE's APPNOTE.TXT 6.3.9, sections 4.3 to 4.5, and
/// Info-ZIP's extended timestamp; AE-2 as its publisher describes it.
struct ZipRecord {
    std::string name; ///< with '/' behind a folder's
    std::uint16_t method = 0; ///< 0 stored, 8 deflated
    bool isAes = false; ///< AE-2, 256 bits
    bool isClassic = false; ///< the old cipher
    bool hasWideSizes = false; ///< the local header has room for 64-bit sizes
    std::uint32_t crc = 0;
    std::uint64_t size = 0, packedSize = 0;
    std::uint64_t offset = 0; ///< of the local header
    std::uint32_t mode = 0;
    std::uint32_t dosTime = 0x00210000; ///< date and time, 1980-01-01 where none is stored
    std::optional<std::int32_t> modified; ///< seconds since 1970, UTC
};

std::vector<std::byte> localHeader(const ZipRecord& record);
/// Appends a record of the central directory.
void appendCentral(std::vector<std::byte>& directory, const ZipRecord& record);
/// The records behind the directory: with the 64-bit ones where a number needs them.
std::vector<std::byte> endRecords(std::uint64_t count, std::uint64_t directoryOffset, std::uint64_t directorySize);
/// Fills in name, mode and times.
ZipRecord recordFor(const SourceItem& item, bool storeTimes, bool useUtc);

}
