#pragma once

#include "engine/crypto/crc32.h"

#include <vector>

namespace vantoro {

/// A 7z whose checksums hold, so that its headers are read: length of the packed data in two bytes, these, the headers.
inline std::vector<std::byte> framed(ConstBytes input)
{
    ByteReader in(input);
    const std::size_t wished = in.le16();
    const auto packed = in.take(std::min(wished, in.remaining()));
    const auto header = in.rest();
    std::vector<std::byte> archive;
    const auto append = [&](std::uint64_t value, unsigned bytes) {
        for (unsigned i = 0; i < bytes; ++i)
            archive.push_back(static_cast<std::byte>(value >> 8 * i));
    };
    append(packed.size(), 8);
    append(header.size(), 8);
    append(crc32(0, header), 4);
    const auto startCrc = crc32(0, archive);
    const auto start = std::move(archive);
    archive = {};
    for (const char c : std::string_view("7z\xBC\xAF\x27\x1C\0\4", 8))
        archive.push_back(static_cast<std::byte>(c));
    append(startCrc, 4);
    for (const auto part : {ConstBytes(start), packed, header})
        archive.insert(archive.end(), part.begin(), part.end());
    return archive;
}

}
