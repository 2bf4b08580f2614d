#pragma once

#include "engine/io/bytes.h"

#include <array>
#include <vector>

namespace vantoro {

/// What is left of a sorted block for the Huffman codes: places in the list of recent bytes, runs of the first place
/// as numbers of their own, and an end. Reusable; keeps its memory.
class Bzip2Symbols {
public:
    static constexpr std::size_t kMost = 258; // two digits of run lengths, places 1 to 255, the end

    void make(ConstBytes sorted);
    std::span<const std::uint16_t> symbols() const { return {m_symbols.data(), m_count}; }
    /// Symbols that may occur; the last one is the end.
    std::size_t alphabetSize() const { return m_alphabetSize; }
    const std::array<bool, 256>& usedBytes() const { return m_used; }
    const std::array<std::uint32_t, kMost>& frequencies() const { return m_frequencies; }

private:
    void putRun(std::size_t length);
    std::vector<std::uint16_t> m_symbols;
    std::size_t m_count = 0;
    std::size_t m_alphabetSize = 0;
    std::array<bool, 256> m_used{};
    std::array<std::uint32_t, kMost> m_frequencies{};
};

}
