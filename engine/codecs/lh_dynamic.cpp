#include "engine/codecs/lh_dynamic.h"

#include "engine/codecs/lh_bits.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr unsigned kLetters = 286; // literals and lengths in use
constexpr unsigned kLetterSpace = 314; // distance symbols are numbered from here
constexpr unsigned kLongest = kLetters - 1; // eight more bits of the length follow
constexpr unsigned kDistances = 128; // upper parts of a distance; the lower six bits follow as they are
constexpr std::size_t kWindow = 8192;
constexpr unsigned kLowBits = 6;
constexpr std::uint32_t kMostWeight = 0x8000; // then all weights are halved

constexpr int kRoot = 0; // of the letters
constexpr int kDistanceRoot = kLetterSpace * 2; // of the distances, in the same arrays
constexpr int kNodes = kDistanceRoot + kDistances * 2;

/// Both trees in one set of arrays. Nodes are in order of falling weight; nodes of one weight form a block, whose
/// leader (its first node) is the one that moves ahead when it gains weight. A child number below zero is the
/// complement of a symbol; the two children of a node are that number and the one before it.
class Trees {
public:
    Trees()
    {
        for (int i = 0; i < kNodes; ++i)
            m_stock[at(i)] = i;
        startLetters();
        startDistances();
    }

    Result<unsigned> decodeLetter(LhBits& bits)
    {
        const auto symbol = TRY(walk(kRoot, bits));
        if (m_weight[kRoot] == kMostWeight)
            rebuild(kRoot, kLetters * 2 - 1);
        ++m_weight[kRoot];
        for (int node = m_leaf[symbol]; (node = gain(node)) != kRoot;) {}
        return symbol;
    }

    /// The upper part of a distance, when `produced` bytes are out.
    Result<unsigned> decodeDistance(LhBits& bits, std::uint64_t produced)
    {
        while (m_nextGrowth < kWindow && produced > m_nextGrowth) {
            grow(static_cast<unsigned>(m_nextGrowth >> kLowBits));
            m_nextGrowth += 1U << kLowBits;
        }
        const auto symbol = TRY(walk(kDistanceRoot, bits));
        countDistance(symbol);
        return symbol - kLetterSpace;
    }

private:
    static std::size_t at(int index) { return static_cast<std::size_t>(index); }

    Result<unsigned> walk(int root, LhBits& bits) const
    {
        int child = m_child[at(root)];
        while (child >= 0)
            child = m_child[at(child - static_cast<int>(TRY(bits.take(1))))];
        return static_cast<unsigned>(~child);
    }

    void startLetters()
    {
        constexpr int kLast = kLetters * 2 - 2;
        for (unsigned symbol = 0; symbol < kLetters; ++symbol) {
            const int node = kLast - static_cast<int>(symbol);
            m_weight[at(node)] = 1;
            m_child[at(node)] = ~static_cast<int>(symbol);
            m_leaf[symbol] = node;
            m_block[at(node)] = 1;
        }
        m_blocks = 2;
        m_leader[1] = kLetters - 1;
        int pair = kLast;
        for (int node = static_cast<int>(kLetters) - 2; node >= 0; --node, pair -= 2) {
            m_weight[at(node)] = m_weight[at(pair)] + m_weight[at(pair - 1)];
            m_child[at(node)] = pair;
            m_parent[at(pair)] = m_parent[at(pair - 1)] = node;
            m_block[at(node)] = m_weight[at(node)] == m_weight[at(node + 1)] ? m_block[at(node + 1)] : newBlock();
            m_leader[at(m_block[at(node)])] = node;
        }
    }

    void startDistances()
    {
        m_weight[kDistanceRoot] = 1;
        m_child[kDistanceRoot] = ~static_cast<int>(kLetterSpace);
        m_leaf[kLetterSpace] = kDistanceRoot;
        m_block[kDistanceRoot] = newBlock();
        m_leader[at(m_block[kDistanceRoot])] = kDistanceRoot;
    }

    int newBlock() { return m_stock[at(m_blocks++)]; }
    void freeBlock(int block) { m_stock[at(--m_blocks)] = block; }

    /// Adds one to a node's weight and restores the order; returns the parent.
    int gain(int node)
    {
        const int block = m_block[at(node)];
        const int leader = m_leader[at(block)];
        const bool isLeader = leader == node;
        if (!isLeader) {
            swapSubtrees(node, leader);
            node = leader;
        }
        if (!isLeader || block == m_block[at(node + 1)]) {
            ++m_leader[at(block)];
            if (++m_weight[at(node)] == m_weight[at(node - 1)]) {
                m_block[at(node)] = m_block[at(node - 1)];
            } else {
                m_block[at(node)] = newBlock();
                m_leader[at(m_block[at(node)])] = node;
            }
        } else if (++m_weight[at(node)] == m_weight[at(node - 1)]) {
            freeBlock(block);
            m_block[at(node)] = m_block[at(node - 1)];
        }
        return m_parent[at(node)];
    }

    void swapSubtrees(int a, int b)
    {
        std::swap(m_child[at(a)], m_child[at(b)]);
        adopt(a);
        adopt(b);
    }
    /// Tells a node's children where they hang now.
    void adopt(int node)
    {
        const int child = m_child[at(node)];
        if (child >= 0)
            m_parent[at(child)] = m_parent[at(child - 1)] = node;
        else
            m_leaf[at(~child)] = node;
    }

    void countDistance(unsigned symbol)
    {
        if (m_distanceTotal == kMostWeight) {
            rebuild(kDistanceRoot, m_lastDistance + 1);
            m_distanceTotal = m_weight[kDistanceRoot];
            m_weight[kDistanceRoot] = 0xFFFF; // never caught up with by the first child
        }
        for (int node = m_leaf[symbol]; node != kDistanceRoot;)
            node = gain(node);
        ++m_distanceTotal;
    }

    /// Makes the lightest distance leaf a pair: itself and a new symbol.
    void grow(unsigned distance)
    {
        const int moved = m_lastDistance + 1, added = moved + 1;
        m_child[at(moved)] = m_child[at(m_lastDistance)];
        m_leaf[at(~m_child[at(moved)])] = moved;
        m_child[at(added)] = ~static_cast<int>(distance + kLetterSpace);
        m_child[at(m_lastDistance)] = added;
        m_weight[at(moved)] = m_weight[at(m_lastDistance)];
        m_weight[at(added)] = 0;
        m_block[at(moved)] = m_block[at(m_lastDistance)];
        if (m_lastDistance == kDistanceRoot) {
            m_weight[kDistanceRoot] = 0xFFFF;
            ++m_leader[at(m_block[kDistanceRoot])];
        }
        m_parent[at(moved)] = m_parent[at(added)] = m_lastDistance;
        m_block[at(added)] = newBlock();
        m_leader[at(m_block[at(added)])] = added;
        m_leaf[distance + kLetterSpace] = added;
        m_lastDistance = added;
        countDistance(distance + kLetterSpace);
    }

    /// Halves the weights of [start, end) and builds the tree anew.
    void rebuild(int start, int end)
    {
        int leaves = start;
        for (int i = start; i < end; ++i) {
            if (m_child[at(i)] < 0) {
                m_weight[at(leaves)] = (m_weight[at(i)] + 1) / 2;
                m_child[at(leaves)] = m_child[at(i)];
                ++leaves;
            }
            if (m_leader[at(m_block[at(i)])] == i)
                freeBlock(m_block[at(i)]);
        }
        joinLeaves(start, end, leaves);
        renumber(start, end);
    }

    /// From the lightest pair up: leaves lie at the front, their nodes are laid out from the back.
    void joinLeaves(int start, int end, int leaves)
    {
        int from = leaves - 1, to = end - 1;
        const auto move = [&] {
            m_weight[at(to)] = m_weight[at(from)];
            m_child[at(to)] = m_child[at(from)];
            --to, --from;
        };
        for (int pair = end - 2; to >= start; pair -= 2) {
            while (to >= pair)
                move();
            const auto sum = m_weight[at(pair)] + m_weight[at(pair + 1)];
            int place = start;
            while (sum < m_weight[at(place)])
                ++place;
            while (from >= place)
                move();
            m_weight[at(to)] = sum;
            m_child[at(to)] = pair + 1;
            --to;
        }
    }

    void renumber(int start, int end)
    {
        std::uint32_t weight = 0;
        for (int i = start; i < end; ++i) {
            adopt(i);
            if (i > start && m_weight[at(i)] == weight) {
                m_block[at(i)] = m_block[at(i - 1)];
            } else {
                m_block[at(i)] = newBlock();
                m_leader[at(m_block[at(i)])] = i;
                weight = m_weight[at(i)];
            }
        }
    }

    std::array<int, kNodes + 1> m_child{}, m_parent{}, m_block{}, m_leader{}, m_stock{};
    std::array<std::uint32_t, kNodes + 1> m_weight{};
    std::array<int, kLetterSpace + kDistances> m_leaf{};
    int m_blocks = 0; // numbers of the stock in use
    int m_lastDistance = kDistanceRoot; // the lightest node
    std::uint32_t m_distanceTotal = 0;
    std::uint64_t m_nextGrowth = 1U << kLowBits;
};

class LhDynamicDecoder final : public Decoder {
public:
    LhDynamicDecoder(StreamPtr packed, std::uint64_t size) : m_bits(std::move(packed)), m_left(size) {}

private:
    Result<void> decode(SpanWriter& out) override
    {
        while (out.room() > 0 && m_left > 0) {
            if (m_copy == 0) {
                const auto letter = TRY(m_trees.decodeLetter(m_bits));
                if (letter < 256) {
                    put(out, static_cast<std::byte>(letter));
                    continue;
                }
                const auto more = letter == kLongest ? TRY(m_bits.take(8)) : 0;
                m_copy = letter + more - 253;
                const auto upper = TRY(m_trees.decodeDistance(m_bits, m_produced));
                m_distance = ((upper << kLowBits) | TRY(m_bits.take(kLowBits))) + 1;
            }
            --m_copy;
            put(out, m_history.back(m_distance));
        }
        return {};
    }

    void put(SpanWriter& out, std::byte value)
    {
        out.put(value);
        m_history.put(value);
        ++m_produced;
        --m_left;
    }

    LhBits m_bits;
    Trees m_trees;
    LhHistory<kWindow> m_history{std::byte{0x20}};
    std::uint64_t m_left;
    std::uint64_t m_produced = 0;
    unsigned m_copy = 0;
    unsigned m_distance = 0;
};

}

StreamPtr openLhDynamic(StreamPtr packed, std::uint64_t unpackedSize)
{
    return std::make_unique<LhDynamicDecoder>(std::move(packed), unpackedSize);
}

}
