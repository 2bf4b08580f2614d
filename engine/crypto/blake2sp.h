#pragma once

#include "engine/io/bytes.h"

#include <array>

namespace vantoro {

/// BLAKE2sp: eight BLAKE2s over the blocks of 64 bytes in turn, and one over their digests. Source: RFC 7693 and the
/// BLAKE2 paper, section "Tree hashing".
class Blake2sp {
public:
    using Digest = std::array<std::byte, 32>;

    Blake2sp();
    void update(ConstBytes data);
    /// The digest of what came so far; no update() after it.
    Digest finish();

private:
    static constexpr std::size_t kLeaves = 8;
    static constexpr std::size_t kBlock = 64;
    struct Leaf {
        std::array<std::uint32_t, 8> state;
        std::uint64_t count = 0; // bytes compressed
    };
    void compressStripe(const std::uint8_t* stripe);

    std::array<Leaf, kLeaves> m_leaves;
    // The last block of a leaf is compressed differently, so up to two blocks a leaf wait for what follows.
    std::array<std::uint8_t, 2 * kLeaves * kBlock> m_buffer;
    std::size_t m_buffered = 0;
};

}
