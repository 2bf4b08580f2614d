#pragma once

#include "engine/codecs/codec.h"

#include <array>

namespace vantoro {

inline constexpr std::uint64_t kBzip2BlockMagic = 0x314159265359;
inline constexpr std::uint64_t kBzip2EndMagic = 0x177245385090;
inline constexpr unsigned kBzip2MagicBits = 48;

/// 48 or fewer bits at a bit position, first bit highest; bits past the end are 0.
std::uint64_t bitsAt(ConstBytes bytes, std::uint64_t bit, unsigned count);

/// One block of bzip2 on its way from packed bits to bytes, without the run lengths that went in before the sorting.
/// Blocks do not depend on each other: each may be decoded on its own thread. Reusable; keeps its memory.
class Bzip2Block {
public:
    /// Reads the block whose magic begins at `bit`: checksum, Huffman codes, move-to-front. Returns the bit behind it.
    /// Truncated when `packed` ends inside the block.
    Result<std::uint64_t> parse(ConstBytes packed, std::uint64_t bit);
    /// Undoes the sorting of a parsed block.
    void unsort();

    /// After unsort(): the block's bytes, run lengths still in them.
    ConstBytes bytes() const { return ConstBytes(m_bytes).first(m_length); }
    std::uint32_t checksum() const { return m_checksum; }

private:
    friend class Bzip2BlockParser;
    void linkUp();
    void removeRandomisation();

    std::vector<std::uint32_t> m_links; // low 8 bits a byte of the last column, above it the next position
    std::vector<std::byte> m_bytes;
    std::array<std::uint32_t, 256> m_counts{};
    std::size_t m_length = 0;
    std::uint32_t m_origin = 0;
    std::uint32_t m_checksum = 0;
    bool m_isRandomised = false;
};

}
