#include "engine/crypto/blake2sp.h"

#include <algorithm>
#include <bit>

namespace vantoro {

namespace {

using State = std::array<std::uint32_t, 8>;

constexpr State kIv{0x6A09E667, 0xBB67AE85, 0x3C6EF372, 0xA54FF53A, 0x510E527F, 0x9B05688C, 0x1F83D9AB, 0x5BE0CD19};
constexpr std::uint8_t kSigma[10][16] = {
    {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}, {14, 10, 4, 8, 9, 15, 13, 6, 1, 12, 0, 2, 11, 7, 5, 3},
    {11, 8, 12, 0, 5, 2, 15, 13, 10, 14, 3, 6, 7, 1, 9, 4}, {7, 9, 3, 1, 13, 12, 11, 14, 2, 6, 5, 10, 4, 0, 15, 8},
    {9, 0, 5, 7, 2, 4, 10, 15, 14, 1, 11, 12, 6, 8, 3, 13}, {2, 12, 6, 10, 0, 11, 8, 3, 4, 13, 7, 5, 15, 14, 1, 9},
    {12, 5, 1, 15, 14, 13, 4, 10, 0, 7, 6, 3, 9, 2, 8, 11}, {13, 11, 7, 14, 12, 1, 3, 9, 5, 0, 15, 4, 8, 6, 2, 10},
    {6, 15, 14, 9, 11, 3, 0, 8, 12, 2, 13, 7, 1, 4, 10, 5}, {10, 2, 8, 4, 7, 6, 1, 5, 15, 11, 9, 14, 3, 12, 13, 0},
};

/// Eight lanes of 32 bits: what one machine instruction does for all leaves where the processor has the width.
using Lanes8 = std::uint32_t __attribute__((vector_size(32)));

/// Where a node stands in the data and whether it is the last: what the compression mixes in besides the message.
template <class Word> struct Marks {
    Word countLow, countHigh, lastBlock, lastNode;
};

/// The compression function; Word is one number, or one of each leaf side by side. Vectors go by reference: by value
/// they would be passed differently from processor to processor.
template <class Word> void compress(Word* state, const Word* message, const Marks<Word>& marks)
{
    Word v[16];
    for (std::size_t i = 0; i < 8; ++i) {
        v[i] = state[i];
        v[i + 8] = Word{} + kIv[i];
    }
    v[12] ^= marks.countLow;
    v[13] ^= marks.countHigh;
    v[14] ^= marks.lastBlock;
    v[15] ^= marks.lastNode;
    const auto turn = [&](std::size_t at, std::size_t with, int bits) {
        v[at] ^= v[with];
        v[at] = v[at] >> bits | v[at] << (32 - bits);
    };
    const auto mix = [&](std::size_t a, std::size_t b, std::size_t c, std::size_t d, const Word& x, const Word& y) {
        v[a] += v[b] + x;
        turn(d, a, 16);
        v[c] += v[d];
        turn(b, c, 12);
        v[a] += v[b] + y;
        turn(d, a, 8);
        v[c] += v[d];
        turn(b, c, 7);
    };
    for (const auto& s : kSigma) {
        mix(0, 4, 8, 12, message[s[0]], message[s[1]]);
        mix(1, 5, 9, 13, message[s[2]], message[s[3]]);
        mix(2, 6, 10, 14, message[s[4]], message[s[5]]);
        mix(3, 7, 11, 15, message[s[6]], message[s[7]]);
        mix(0, 5, 10, 15, message[s[8]], message[s[9]]);
        mix(1, 6, 11, 12, message[s[10]], message[s[11]]);
        mix(2, 7, 8, 13, message[s[12]], message[s[13]]);
        mix(3, 4, 9, 14, message[s[14]], message[s[15]]);
    }
    for (std::size_t i = 0; i < 8; ++i)
        state[i] ^= v[i] ^ v[i + 8];
}

std::uint32_t load(const std::uint8_t* at)
{
    return static_cast<std::uint32_t>(at[0] | at[1] << 8 | at[2] << 16) | static_cast<std::uint32_t>(at[3]) << 24;
}

/// A node's start state: digest of 32 bytes, no key, fan-out 8, depth 2, inner length 32.
State startState(std::uint32_t offset, std::uint32_t depth)
{
    auto state = kIv;
    state[0] ^= 0x02080020;
    state[2] ^= offset;
    state[3] ^= depth << 16 | 32U << 24;
    return state;
}

void compressOne(State& state, const std::uint8_t* block, std::uint64_t count, bool isLast, bool isLastNode)
{
    std::array<std::uint32_t, 16> message;
    for (std::size_t i = 0; i < message.size(); ++i)
        message[i] = load(block + 4 * i);
    const Marks<std::uint32_t> marks{static_cast<std::uint32_t>(count), static_cast<std::uint32_t>(count >> 32),
                                     isLast ? ~0U : 0, isLast && isLastNode ? ~0U : 0};
    compress(state.data(), message.data(), marks);
}

Blake2sp::Digest digestOf(const State& state)
{
    Blake2sp::Digest digest;
    for (std::size_t i = 0; i < digest.size(); ++i)
        digest[i] = static_cast<std::byte>(state[i / 4] >> (8 * (i % 4)));
    return digest;
}

}

Blake2sp::Blake2sp()
{
    for (std::uint32_t i = 0; i < kLeaves; ++i)
        m_leaves[i].state = startState(i, 0);
}

void Blake2sp::compressStripe(const std::uint8_t* stripe)
{
    Lanes8 message[16];
    Lanes8 state[8];
    for (std::size_t leaf = 0; leaf < kLeaves; ++leaf) {
        for (std::size_t i = 0; i < 16; ++i)
            message[i][leaf] = load(stripe + leaf * kBlock + 4 * i);
        for (std::size_t i = 0; i < 8; ++i)
            state[i][leaf] = m_leaves[leaf].state[i];
    }
    const auto count = m_leaves[0].count + kBlock; // stripes are whole: the same for all leaves
    const Marks<Lanes8> marks{Lanes8{} + static_cast<std::uint32_t>(count),
                              Lanes8{} + static_cast<std::uint32_t>(count >> 32), Lanes8{}, Lanes8{}};
    compress(state, message, marks);
    for (std::size_t leaf = 0; leaf < kLeaves; ++leaf) {
        for (std::size_t i = 0; i < 8; ++i)
            m_leaves[leaf].state[i] = state[i][leaf];
        m_leaves[leaf].count = count;
    }
}

void Blake2sp::update(ConstBytes data)
{
    constexpr auto kStripe = kLeaves * kBlock;
    while (!data.empty()) {
        // A stripe is compressed when a whole further one is there: then no leaf's last block is in it.
        if (m_buffered == 0 && data.size() > 2 * kStripe) {
            compressStripe(reinterpret_cast<const std::uint8_t*>(data.data()));
            data = data.subspan(kStripe);
            continue;
        }
        const auto count = std::min(data.size(), m_buffer.size() - m_buffered);
        std::memcpy(m_buffer.data() + m_buffered, data.data(), count);
        m_buffered += count;
        data = data.subspan(count);
        if (m_buffered == m_buffer.size()) {
            compressStripe(m_buffer.data());
            std::memmove(m_buffer.data(), m_buffer.data() + kStripe, kStripe);
            m_buffered = kStripe;
            if (data.size() > kStripe) { // the rest goes without the buffer
                compressStripe(m_buffer.data());
                m_buffered = 0;
            }
        }
    }
}

Blake2sp::Digest Blake2sp::finish()
{
    std::array<std::uint8_t, kLeaves * sizeof(Digest)> digests;
    for (std::size_t leaf = 0; leaf < kLeaves; ++leaf) {
        auto& node = m_leaves[leaf];
        // This leaf's share of what is buffered: a block of each stripe, perhaps none, the last one perhaps short.
        for (std::size_t at = leaf * kBlock;; at += kLeaves * kBlock) {
            const auto next = at + kLeaves * kBlock;
            const auto isLast = next >= m_buffered;
            std::array<std::uint8_t, kBlock> block{};
            const auto size = at < m_buffered ? std::min(kBlock, m_buffered - at) : 0;
            std::memcpy(block.data(), m_buffer.data() + std::min(at, m_buffered), size);
            node.count += size;
            compressOne(node.state, block.data(), node.count, isLast, leaf == kLeaves - 1);
            if (isLast)
                break;
        }
        const auto digest = digestOf(node.state);
        std::memcpy(digests.data() + leaf * sizeof(Digest), digest.data(), sizeof(Digest));
    }
    auto root = startState(0, 1);
    for (std::size_t at = 0; at < digests.size(); at += kBlock)
        compressOne(root, digests.data() + at, at + kBlock, at + kBlock == digests.size(), true);
    return digestOf(root);
}

}
