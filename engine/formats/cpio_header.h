#pragma once

#include "engine/formats/archive.h"

namespace vantoro {

/// One header of a cpio archive. Source of the format: libarchive's cpio(5).
struct CpioHeader {
    enum class Kind : std::uint8_t {
        Newc, ///< SVR4, hexadecimal
        Crc, ///< the same with a sum over the data
        Odc, ///< POSIX.1, octal
        LittleEndian, ///< the old binary header
        BigEndian,
    };
    Kind kind = Kind::Newc;
    std::uint64_t device = 0, inode = 0;
    std::uint32_t mode = 0;
    std::uint32_t links = 1;
    std::uint32_t modified = 0;
    std::uint32_t sum = 0; ///< of all data bytes, of Crc only
    std::size_t nameSize = 0; ///< with the zero byte at its end
    std::uint64_t size = 0;

    /// Bytes of the longest header.
    static constexpr std::size_t kLongest = 110;
    /// From the first bytes of a header; Corrupt when they are none, Truncated when there are too few.
    static Result<CpioHeader> parse(ConstBytes bytes);
    /// Bytes before the name.
    std::size_t length() const;
    /// How many filling bytes follow when `size` bytes from the start of the header or of the data are taken.
    std::size_t padding(std::uint64_t size) const;
    /// Whether hard-linked names come without data but for the last one.
    bool storesDataOnce() const { return kind == Kind::Newc || kind == Kind::Crc; }
};

}
