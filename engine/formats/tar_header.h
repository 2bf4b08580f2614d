#pragma once

#include "engine/io/bytes.h"

#include <optional>
#include <string>
#include <vector>

namespace vantoro {

inline constexpr std::size_t kTarBlock = 512;

/// A number as tar headers store it: octal digits with spaces and NULs around them, or, where the first bit is set,
/// big-endian two's complement. Nothing when it does not fit or holds something else.
std::optional<std::int64_t> parseTarNumber(ConstBytes field);

/// A run of stored bytes of a file with holes.
struct TarExtent {
    std::uint64_t offset = 0; ///< in the file
    std::uint64_t length = 0;
};

/// One header block of any dialect. Views point into the block.
struct TarHeader {
    enum class Dialect : std::uint8_t { V7, Ustar, Gnu, Star };
    Dialect dialect = Dialect::V7;
    char type = '\0';
    std::string_view name, prefix, linkName, owner, group;
    std::optional<std::int64_t> mode, size, modified, accessed;

    /// The name with its prefix.
    std::string path() const;
    /// The block must be a header: see isTarHeader().
    static TarHeader parse(ConstBytes block);
};

/// The checksum holds, as the sum of unsigned or of signed bytes.
bool isTarHeader(ConstBytes block);
/// The same, and the fields look like those of a header: for finding one among data, and for probing.
bool isPlausibleTarHeader(ConstBytes block);
bool isZeroBlock(ConstBytes block);

/// The part of a sparse map that the header of the old GNU form holds.
struct TarSparseHeader {
    std::optional<std::int64_t> realSize;
    bool isExtended = false; ///< blocks with more of the map follow
};
Result<TarSparseHeader> parseOldSparse(ConstBytes header, std::vector<TarExtent>& map);
/// A further block of the map; tells whether another one follows.
Result<bool> parseOldSparseExtension(ConstBytes block, std::vector<TarExtent>& map);

}
