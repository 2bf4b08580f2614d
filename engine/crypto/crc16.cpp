#include "engine/crypto/crc16.h"

#include <array>

namespace vantoro {

namespace {

constexpr auto kTable = [] {
    std::array<std::uint16_t, 256> table{};
    for (unsigned i = 0; i < table.size(); ++i) {
        unsigned value = i;
        for (int bit = 0; bit < 8; ++bit)
            value = value & 1 ? (value >> 1) ^ 0xA001U : value >> 1;
        table[i] = static_cast<std::uint16_t>(value);
    }
    return table;
}();

}

std::uint16_t crc16Arc(std::uint16_t crc, ConstBytes bytes)
{
    for (const auto byte : bytes)
        crc = static_cast<std::uint16_t>((crc >> 8) ^ kTable[(crc ^ std::to_integer<unsigned>(byte)) & 0xFF]);
    return crc;
}

}
