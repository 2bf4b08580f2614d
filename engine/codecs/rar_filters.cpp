#include "engine/codecs/rar_filters.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace vantoro {

namespace {

std::uint32_t le32At(std::span<const std::uint8_t> block, std::size_t at)
{
    return static_cast<std::uint32_t>(block[at] | block[at + 1] << 8 | block[at + 2] << 16)
        | static_cast<std::uint32_t>(block[at + 3]) << 24;
}

void putLe32(std::span<std::uint8_t> block, std::size_t at, std::uint32_t value)
{
    for (std::size_t i = 0; i < 4; ++i)
        block[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

int asSigned(std::uint8_t value) { return static_cast<std::int8_t>(value); }

}

void rarUndoCalls(std::span<std::uint8_t> block, std::uint64_t offset, bool jumps, RarCallWrap wrap)
{
    constexpr std::uint32_t kSpace = 0x1000000; // targets were made absolute within 16 MiB
    const std::uint32_t mask = wrap == RarCallWrap::At24Bits ? kSpace - 1 : 0xFFFFFFFF;
    const std::uint8_t opcodeMask = jumps ? 0xFE : 0xFF; // E8 and E9 differ in the last bit
    for (std::size_t i = 0; i + 5 <= block.size();) {
        if ((block[i] & opcodeMask) != 0xE8) {
            ++i;
            continue;
        }
        const auto target = le32At(block, i + 1);
        const auto position = static_cast<std::uint32_t>(offset + i + 1) & mask;
        if (static_cast<std::int32_t>(target) < 0) {
            if (static_cast<std::int32_t>(target + position) >= 0)
                putLe32(block, i + 1, target + kSpace);
        } else if (target < kSpace) {
            putLe32(block, i + 1, target - position);
        }
        i += 5;
    }
}

void rarUndoArm(std::span<std::uint8_t> block, std::uint64_t offset)
{
    for (std::size_t i = 0; i + 4 <= block.size(); i += 4) {
        if (block[i + 3] != 0xEB)
            continue;
        const auto target = le32At(block, i) - static_cast<std::uint32_t>((offset + i) / 4);
        putLe32(block, i, (target & 0xFFFFFF) | 0xEB000000);
    }
}

void rarUndoItanium(std::span<std::uint8_t> block, std::uint64_t offset)
{
    // Which of a bundle's three slots hold branches, by template.
    static constexpr std::array<std::uint8_t, 16> kSlots{4, 4, 6, 6, 0, 0, 7, 7, 4, 4, 0, 0, 4, 4, 0, 0};
    auto bundle = static_cast<std::uint32_t>(offset >> 4);
    for (std::size_t at = 0; at + 21 < block.size() + 1 && block.size() >= 22; at += 16, ++bundle) {
        const int kind = (block[at] & 0x1F) - 16;
        if (kind < 0)
            continue;
        for (unsigned slot = 0; slot < 3; ++slot) {
            if ((kSlots[static_cast<std::size_t>(kind)] >> slot & 1) == 0)
                continue;
            const auto bit = slot * 41 + 18;
            const auto byte = at + bit / 8;
            const auto shift = bit % 8;
            const auto opcode = le32At(block, byte + 3) >> shift & 15;
            if (opcode != 5)
                continue;
            const auto word = le32At(block, byte);
            const auto target = ((word >> shift) - bundle) & 0xFFFFF;
            putLe32(block, byte, (word & ~(std::uint32_t{0xFFFFF} << shift)) | target << shift);
        }
    }
}

void rarUndoDelta(std::vector<std::uint8_t>& block, std::size_t channels)
{
    std::vector<std::uint8_t> out(block.size());
    std::size_t from = 0;
    for (std::size_t channel = 0; channel < channels; ++channel) {
        std::uint8_t last = 0;
        for (auto i = channel; i < out.size(); i += channels)
            out[i] = last = static_cast<std::uint8_t>(last - block[from++]);
    }
    block.swap(out);
}

bool rarUndoRgb(std::vector<std::uint8_t>& block, std::uint32_t stridePlus3, std::uint32_t firstColour)
{
    const auto size = block.size();
    const std::size_t stride = std::size_t{stridePlus3} - 3;
    if (stridePlus3 < 6 || stride + 3 > size || firstColour > 2)
        return false;
    std::vector<std::uint8_t> out(size);
    std::size_t from = 0;
    for (std::size_t colour = 0; colour < 3; ++colour) {
        int last = 0;
        for (auto i = colour; i < size; i += 3) {
            int guess = last;
            if (i >= stride + 3) {
                const int up = out[i - stride];
                const int upperLeft = out[i - stride - 3];
                const int plane = last + up - upperLeft;
                const int toLast = std::abs(plane - last);
                const int toUp = std::abs(plane - up);
                const int toUpperLeft = std::abs(plane - upperLeft);
                if (toLast <= toUp && toLast <= toUpperLeft)
                    guess = last;
                else
                    guess = toUp <= toUpperLeft ? up : upperLeft;
            }
            out[i] = static_cast<std::uint8_t>(guess - block[from++]);
            last = out[i];
        }
    }
    for (std::size_t i = firstColour; i + 2 < size; i += 3) {
        out[i] = static_cast<std::uint8_t>(out[i] + out[i + 1]);
        out[i + 2] = static_cast<std::uint8_t>(out[i + 2] + out[i + 1]);
    }
    block.swap(out);
    return true;
}

void rarUndoAudio(std::vector<std::uint8_t>& block, std::size_t channels)
{
    std::vector<std::uint8_t> out(block.size());
    std::size_t from = 0;
    for (std::size_t channel = 0; channel < channels; ++channel) {
        int last = 0;
        int lastDelta = 0;
        std::array<int, 3> delta{};
        std::array<int, 3> weight{};
        std::array<std::uint32_t, 7> errors{};
        std::uint32_t count = 0;
        for (auto i = channel; i < out.size(); i += channels, ++count) {
            delta[2] = delta[1];
            delta[1] = lastDelta - delta[0];
            delta[0] = lastDelta;
            const int guess = (8 * last + weight[0] * delta[0] + weight[1] * delta[1] + weight[2] * delta[2]) >> 3;
            const auto coded = block[from++];
            out[i] = static_cast<std::uint8_t>(guess - coded);
            lastDelta = asSigned(static_cast<std::uint8_t>(out[i] - last));
            last = out[i];

            const int miss = 8 * asSigned(coded);
            errors[0] += static_cast<std::uint32_t>(std::abs(miss));
            for (std::size_t k = 0; k < 3; ++k) {
                errors[2 * k + 1] += static_cast<std::uint32_t>(std::abs(miss - delta[k]));
                errors[2 * k + 2] += static_cast<std::uint32_t>(std::abs(miss + delta[k]));
            }
            if (count % 32 != 0)
                continue;
            const auto best = static_cast<std::size_t>(std::min_element(errors.begin(), errors.end()) - errors.begin());
            errors.fill(0);
            if (best == 0)
                continue;
            auto& adapted = weight[(best - 1) / 2];
            if (best % 2 == 1 && adapted >= -16)
                --adapted;
            else if (best % 2 == 0 && adapted < 16)
                ++adapted;
        }
    }
    block.swap(out);
}

}
