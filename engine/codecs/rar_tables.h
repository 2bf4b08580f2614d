#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace vantoro {

/// A symbol that stands for `base` plus a number of `bits` bits.
struct RarSlot {
    std::uint32_t base = 0;
    std::uint8_t bits = 0;
};

namespace detail {
template <std::size_t size, std::size_t known>
constexpr std::array<RarSlot, size> rarSlots(const std::uint8_t (&bits)[known])
{
    static_assert(size == known);
    std::array<RarSlot, size> slots{};
    std::uint32_t base = 0;
    for (std::size_t i = 0; i < size; ++i) {
        slots[i] = {base, bits[i]};
        base += 1U << bits[i];
    }
    return slots;
}
}

// Shared by rar 2.0 and rar 2.9. Each base is the one before plus the count of numbers that one covers.
inline constexpr auto kRarLengths
    = detail::rarSlots<28>({0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5});
/// Rar 2.0 uses the first 48.
inline constexpr auto kRarDistances
    = detail::rarSlots<60>({0,  0,  0,  0,  1,  1,  2,  2,  3,  3,  4,  4,  5,  5,  6,  6,  7,  7,  8,  8,
                            9,  9,  10, 10, 11, 11, 12, 12, 13, 13, 14, 14, 15, 15, 16, 16, 16, 16, 16, 16,
                            16, 16, 16, 16, 16, 16, 16, 16, 18, 18, 18, 18, 18, 18, 18, 18, 18, 18, 18, 18});
inline constexpr auto kRarShortDistances = detail::rarSlots<8>({2, 2, 3, 4, 5, 6, 6, 6});

}
