#include "engine/codecs/bzip2_block.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::size_t kMostArcs = 128;
constexpr std::size_t kLeastPerArc = 2048; // blocks too short for two arcs of this length are walked plainly
constexpr std::size_t kChunk = 2048;
constexpr std::size_t kChains = 8;
constexpr std::uint32_t kStart = 1U << 31; // no link is that large

/// The sorting is undone by a walk in which each step says where the next one is: a wait for memory per byte. But the
/// way is one circle, and it may be entered anywhere: from several starts, spread over it, several walks go at once,
/// each as far as the next start. The arcs are then joined in the order in which they met.
class ArcWalk {
public:
    /// `links` has one element more than `length`.
    ArcWalk(std::uint32_t* links, std::size_t length, std::uint32_t first, std::size_t arcs)
        : m_links(links)
        , m_length(length)
    {
        m_arcs.push_back({first});
        for (std::size_t i = 1; i < arcs; ++i) {
            const auto start = static_cast<std::uint32_t>(i * length / arcs);
            if (start != first)
                m_arcs.push_back({start});
        }
        for (std::uint32_t i = 0; i < m_arcs.size(); ++i) {
            m_byStart.emplace_back(m_arcs[i].start, i);
            m_links[m_arcs[i].start] |= kStart;
        }
        std::sort(m_byStart.begin(), m_byStart.end());
        m_links[length] = static_cast<std::uint32_t>(length) << 8; // where chains without an arc turn in place
    }

    void run()
    {
        m_chunks.resize((m_length / kChunk + 2 * m_arcs.size() + kChains + 1) * kChunk);
        m_next.resize(m_chunks.size() / kChunk);
        for (std::size_t chain = 0; chain < kChains; ++chain)
            step(chain, beginArc(chain));
        while (m_active > 0) {
            auto steps = kChunk;
            for (std::size_t chain = 0; chain < kChains; ++chain) {
                if (m_out[chain] == m_chunkEnd[chain])
                    goOnInNewChunk(chain);
                steps = std::min(steps, static_cast<std::size_t>(m_chunkEnd[chain] - m_out[chain]));
            }
            walk(steps);
        }
    }

    void join(std::byte* to) const
    {
        auto left = m_length;
        // Where the text repeats itself the circle is shorter than the text and is gone round several times.
        for (std::size_t index = 0; left > 0; index = m_arcs[index].metArc) {
            auto inArc = std::min(m_arcs[index].length, left);
            left -= inArc;
            for (auto chunk = m_arcs[index].firstChunk; inArc > 0; chunk = m_next[chunk]) {
                const auto part = std::min(inArc, kChunk);
                std::memcpy(to, m_chunks.data() + chunk * kChunk, part);
                to += part;
                inArc -= part;
            }
        }
    }

private:
    struct Arc {
        std::uint32_t start;
        std::uint32_t metArc = 0;
        std::size_t length = 0;
        std::size_t firstChunk = 0;
    };

    void step(std::size_t chain, std::uint32_t link)
    {
        *m_out[chain]++ = static_cast<std::byte>(link & 0xFF);
        m_at[chain] = link >> 8;
    }

    void walk(std::size_t steps)
    {
        auto at = m_at; // locals, which the stores of bytes cannot change
        auto out = m_out;
        const auto* const links = m_links;
        for (std::size_t i = 0; i < steps; ++i) {
            for (std::size_t chain = 0; chain < kChains; ++chain) {
                auto link = links[at[chain]];
                if ((link & kStart) != 0) [[unlikely]] {
                    m_out[chain] = out[chain];
                    m_at[chain] = at[chain];
                    endArc(chain);
                    link = beginArc(chain);
                    out[chain] = m_out[chain];
                }
                *out[chain]++ = static_cast<std::byte>(link & 0xFF);
                at[chain] = link >> 8;
            }
        }
        m_at = at;
        m_out = out;
    }

    /// The first link of the next arc; for want of one the chain turns in place.
    std::uint32_t beginArc(std::size_t chain)
    {
        const auto chunk = takeChunk(chain);
        m_chunksBefore[chain] = 0;
        if (m_begun == m_arcs.size()) {
            m_arcOf[chain] = kNoArc;
            return m_links[m_length];
        }
        m_arcOf[chain] = m_begun;
        ++m_active;
        auto& arc = m_arcs[m_begun++];
        arc.firstChunk = chunk;
        return m_links[arc.start] & ~kStart;
    }

    void endArc(std::size_t chain)
    {
        auto& arc = m_arcs[m_arcOf[chain]];
        arc.length
            = m_chunksBefore[chain] * kChunk + kChunk - static_cast<std::size_t>(m_chunkEnd[chain] - m_out[chain]);
        const auto met = std::lower_bound(m_byStart.begin(), m_byStart.end(), std::pair(m_at[chain], std::uint32_t{0}));
        arc.metArc = met->second;
        --m_active;
    }

    void goOnInNewChunk(std::size_t chain)
    {
        if (m_arcOf[chain] == kNoArc) {
            m_out[chain] = m_chunkEnd[chain] - kChunk;
            return;
        }
        const auto before = m_chunkOf[chain];
        m_next[before] = takeChunk(chain);
        ++m_chunksBefore[chain];
    }

    std::size_t takeChunk(std::size_t chain)
    {
        m_chunkOf[chain] = m_usedChunks++;
        m_out[chain] = m_chunks.data() + m_chunkOf[chain] * kChunk;
        m_chunkEnd[chain] = m_out[chain] + kChunk;
        return m_chunkOf[chain];
    }

    static constexpr std::size_t kNoArc = ~std::size_t{0};
    std::uint32_t* m_links;
    std::size_t m_length;
    std::vector<Arc> m_arcs;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> m_byStart;
    std::size_t m_begun = 0; // arcs
    std::size_t m_active = 0;
    std::vector<std::byte> m_chunks;
    std::vector<std::size_t> m_next; // chunk behind each chunk
    std::size_t m_usedChunks = 0;
    std::array<std::uint32_t, kChains> m_at{};
    std::array<std::byte*, kChains> m_out{}, m_chunkEnd{};
    std::array<std::size_t, kChains> m_arcOf{}, m_chunkOf{}, m_chunksBefore{};
};

}

void Bzip2Block::linkUp()
{
    std::array<std::uint32_t, 256> next{};
    std::uint32_t sum = 0;
    for (unsigned byte = 0; byte < 256; ++byte) {
        next[byte] = sum;
        sum += m_counts[byte];
    }
    auto* const links = m_links.data();
    for (std::uint32_t i = 0; i < m_length; ++i)
        links[next[links[i] & 0xFF]++] |= i << 8;
}

void Bzip2Block::unsort()
{
    if (m_length == 0)
        return;
    linkUp();
    auto* const links = m_links.data();
    auto at = links[m_origin] >> 8;
    const auto arcs = std::min(kMostArcs, m_length / kLeastPerArc);
    if (arcs > 1) {
        ArcWalk walk(links, m_length, at, arcs);
        walk.run();
        walk.join(m_bytes.data());
    } else {
        for (std::size_t i = 0; i < m_length; ++i) {
            const auto link = links[at];
            m_bytes[i] = static_cast<std::byte>(link & 0xFF);
            at = link >> 8;
        }
    }
    removeRandomisation();
}

namespace {

/// Distances of the bits that bzip2 before 0.9.5 flipped in blocks that were hard to sort.
constexpr std::array<std::uint16_t, 512> kRandomDistances{
    619, 720, 127, 481, 931, 816, 813, 233, 566, 247, 985, 724, 205, 454, 863, 491, 741, 242, 949, 214, 733, 859, 335,
    708, 621, 574, 73,  654, 730, 472, 419, 436, 278, 496, 867, 210, 399, 680, 480, 51,  878, 465, 811, 169, 869, 675,
    611, 697, 867, 561, 862, 687, 507, 283, 482, 129, 807, 591, 733, 623, 150, 238, 59,  379, 684, 877, 625, 169, 643,
    105, 170, 607, 520, 932, 727, 476, 693, 425, 174, 647, 73,  122, 335, 530, 442, 853, 695, 249, 445, 515, 909, 545,
    703, 919, 874, 474, 882, 500, 594, 612, 641, 801, 220, 162, 819, 984, 589, 513, 495, 799, 161, 604, 958, 533, 221,
    400, 386, 867, 600, 782, 382, 596, 414, 171, 516, 375, 682, 485, 911, 276, 98,  553, 163, 354, 666, 933, 424, 341,
    533, 870, 227, 730, 475, 186, 263, 647, 537, 686, 600, 224, 469, 68,  770, 919, 190, 373, 294, 822, 808, 206, 184,
    943, 795, 384, 383, 461, 404, 758, 839, 887, 715, 67,  618, 276, 204, 918, 873, 777, 604, 560, 951, 160, 578, 722,
    79,  804, 96,  409, 713, 940, 652, 934, 970, 447, 318, 353, 859, 672, 112, 785, 645, 863, 803, 350, 139, 93,  354,
    99,  820, 908, 609, 772, 154, 274, 580, 184, 79,  626, 630, 742, 653, 282, 762, 623, 680, 81,  927, 626, 789, 125,
    411, 521, 938, 300, 821, 78,  343, 175, 128, 250, 170, 774, 972, 275, 999, 639, 495, 78,  352, 126, 857, 956, 358,
    619, 580, 124, 737, 594, 701, 612, 669, 112, 134, 694, 363, 992, 809, 743, 168, 974, 944, 375, 748, 52,  600, 747,
    642, 182, 862, 81,  344, 805, 988, 739, 511, 655, 814, 334, 249, 515, 897, 955, 664, 981, 649, 113, 974, 459, 893,
    228, 433, 837, 553, 268, 926, 240, 102, 654, 459, 51,  686, 754, 806, 760, 493, 403, 415, 394, 687, 700, 946, 670,
    656, 610, 738, 392, 760, 799, 887, 653, 978, 321, 576, 617, 626, 502, 894, 679, 243, 440, 680, 879, 194, 572, 640,
    724, 926, 56,  204, 700, 707, 151, 457, 449, 797, 195, 791, 558, 945, 679, 297, 59,  87,  824, 713, 663, 412, 693,
    342, 606, 134, 108, 571, 364, 631, 212, 174, 643, 304, 329, 343, 97,  430, 751, 497, 314, 983, 374, 822, 928, 140,
    206, 73,  263, 980, 736, 876, 478, 430, 305, 170, 514, 364, 692, 829, 82,  855, 953, 676, 246, 369, 970, 294, 750,
    807, 827, 150, 790, 288, 923, 804, 378, 215, 828, 592, 281, 565, 555, 710, 82,  896, 831, 547, 261, 524, 462, 293,
    465, 502, 56,  661, 821, 976, 991, 658, 869, 905, 758, 745, 193, 768, 550, 608, 933, 378, 286, 215, 979, 792, 961,
    61,  688, 793, 644, 986, 403, 106, 366, 905, 644, 372, 567, 466, 434, 645, 210, 389, 550, 919, 135, 780, 773, 635,
    389, 707, 100, 626, 958, 165, 504, 920, 176, 193, 713, 857, 265, 203, 50,  668, 108, 645, 990, 626, 197, 510, 357,
    358, 850, 858, 364, 936, 638,
};

}

void Bzip2Block::removeRandomisation()
{
    if (!m_isRandomised)
        return;
    std::size_t index = 0;
    for (std::size_t at = kRandomDistances[0] - 2U; at < m_length; at += kRandomDistances[index]) {
        m_bytes[at] ^= std::byte{1};
        index = (index + 1) % kRandomDistances.size();
    }
}

}
