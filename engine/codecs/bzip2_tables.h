#pragma once

#include "engine/codecs/bzip2_symbols.h"

namespace vantoro {

/// Two to six Huffman codes and which of them each group of 50 symbols uses.
struct Bzip2Tables {
    static constexpr std::size_t kGroup = 50;
    static constexpr std::size_t kMostCodes = 6;
    using Lengths = std::array<std::uint8_t, Bzip2Symbols::kMost>;
    std::size_t codes = 0;
    std::array<Lengths, kMostCodes> lengths{}; // in bits, 1 to 17
    std::vector<std::uint8_t> choices; // one per group
};

Bzip2Tables chooseBzip2Tables(const Bzip2Symbols& symbols);

}
