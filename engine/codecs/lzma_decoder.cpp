#include "engine/codecs/lzma_decoder.h"

#include <algorithm>
#include <new>

namespace vantoro {

namespace {

constexpr std::uint32_t kTop = 1U << 24;
constexpr unsigned kModelBits = 11;
constexpr unsigned kMoveBits = 5;
constexpr LzmaDecoder::Probability kEven = 1 << (kModelBits - 1);
constexpr std::uint32_t kFirstMatchLength = 2;
constexpr std::size_t kLiteralCoder = 0x300;
constexpr std::size_t kSlack = 32; ///< behind the window: copies are made in pieces of 32

using Probability = LzmaDecoder::Probability;

/// The range coder while it lies in registers.
struct RangeCoder {
    std::uint32_t range;
    std::uint32_t code;
    const std::uint8_t* in;

    [[gnu::always_inline]] void normalize()
    {
        if (range < kTop) {
            range <<= 8;
            code = code << 8 | *in++;
        }
    }

    /// A decision that can be foreseen more often than not.
    [[gnu::always_inline]] bool bit(Probability& probability)
    {
        normalize();
        const std::uint32_t p = probability;
        const auto bound = (range >> kModelBits) * p;
        if (code < bound) {
            range = bound;
            probability = static_cast<Probability>(p + (((1U << kModelBits) - p) >> kMoveBits));
            return false;
        }
        range -= bound;
        code -= bound;
        probability = static_cast<Probability>(p - (p >> kMoveBits));
        return true;
    }

    /// One that cannot: no branch depends on it. All ones for a 0, nothing for a 1. Of what comes after it either way,
    /// `after` holds that of a 1 before and the one that counts when it is known which.
    [[gnu::always_inline]] std::uint32_t zeroMask(std::uint32_t p, Probability& probability, std::uint32_t afterZero,
                                                  std::uint32_t& after)
    {
        normalize();
        const auto bound = (range >> kModelBits) * p;
        std::uint32_t mask = 0;
#if defined(__x86_64__)
        const auto whole = code;
        range -= bound;
        // As the compiler does not see what lies between, it cannot make a branch of it.
        __asm__("subl %[bound], %[code]\n\t"
                "cmovbl %[bound], %[range]\n\t"
                "cmovbl %[whole], %[code]\n\t"
                "cmovbl %[afterZero], %[after]\n\t"
                "sbbl %[mask], %[mask]"
                : [code] "+&r"(code), [range] "+&r"(range), [after] "+&r"(after), [mask] "=r"(mask)
                : [bound] "r"(bound), [whole] "r"(whole), [afterZero] "r"(afterZero)
                : "cc");
#else
        mask = 0U - static_cast<std::uint32_t>(code < bound);
        range = (bound & mask) | ((range - bound) & ~mask);
        code -= bound & ~mask;
        after ^= (after ^ afterZero) & mask;
#endif
        // Towards 2048 - 31 after a 0, towards 0 after a 1, by a 32nd of the way.
        const auto offset = mask & ((1U << kModelBits) - (1U << kMoveBits) + 1);
        const auto move = static_cast<std::int32_t>(p - offset) >> kMoveBits;
        probability = static_cast<Probability>(p - static_cast<std::uint32_t>(move));
        return mask;
    }
    [[gnu::always_inline]] std::uint32_t zeroMask(Probability& probability)
    {
        std::uint32_t nothing = 0;
        return zeroMask(probability, probability, 0, nothing);
    }
    /// The probabilities behind both bits are read before it is known which one counts.
    [[gnu::always_inline]] std::uint32_t zeroMask(Probability* nodes, std::uint32_t node, std::uint32_t& p)
    {
        const auto* const children = nodes + std::size_t{2} * node;
        const std::uint32_t afterZero = children[0];
        std::uint32_t after = children[1];
        const auto mask = zeroMask(p, nodes[node], afterZero, after);
        p = after;
        return mask;
    }

    template <unsigned depth> [[gnu::always_inline]] std::uint32_t tree(Probability* nodes)
    {
        std::uint32_t node = 1;
        std::uint32_t p = nodes[1];
#pragma GCC unroll 8
        for (unsigned i = 0; i + 1 < depth; ++i) {
            const auto mask = zeroMask(nodes, node, p);
            node = 2 * node + 1 + mask;
        }
        const auto mask = zeroMask(nodes[node]);
        return 2 * node + 1 + mask - (1U << depth);
    }

    /// Lowest bit first.
    [[gnu::always_inline]] std::uint32_t reverseTree(Probability* nodes, unsigned depth)
    {
        std::uint32_t node = 1, value = 0;
        std::uint32_t p = nodes[1];
        for (unsigned i = 0; i + 1 < depth; ++i) {
            const auto mask = zeroMask(nodes, node, p);
            node = 2 * node + 1 + mask;
            value += (1 + mask) << i;
        }
        return value + ((1 + zeroMask(nodes[node])) << (depth - 1));
    }

    /// Bits without a model.
    [[gnu::always_inline]] std::uint32_t direct(unsigned count, std::uint32_t value)
    {
        do {
            normalize();
            range >>= 1;
#if defined(__x86_64__)
            auto rest = code;
            value += value;
            __asm__("subl %[range], %[rest]\n\t"
                    "cmovael %[rest], %[code]\n\t"
                    "sbbl $-1, %[value]"
                    : [rest] "+&r"(rest), [code] "+&r"(code), [value] "+&r"(value)
                    : [range] "r"(range)
                    : "cc");
#else
            code -= range;
            const auto mask = 0U - (code >> 31);
            code += range & mask;
            value = 2 * value + 1 + mask;
#endif
        } while (--count > 0);
        return value;
    }

    [[gnu::always_inline]] std::uint32_t length(LzmaDecoder::Lengths& lengths, std::uint32_t place)
    {
        if (!bit(lengths.choice))
            return kFirstMatchLength + tree<3>(lengths.low[place].data());
        if (!bit(lengths.choice2))
            return kFirstMatchLength + 8 + tree<3>(lengths.mid[place].data());
        return kFirstMatchLength + 16 + tree<8>(lengths.high.data());
    }
};

/// `to` lies at `from` + `distance`, where what was copied already may serve again. May write up to 15 bytes more.
[[gnu::always_inline]] inline void copyMatch(std::byte* to, std::size_t distance, std::size_t length)
{
    const auto* from = to - distance;
    const auto* const end = to + length;
    if (distance >= 32) {
        do {
            std::memcpy(to, from, 32);
            to += 32;
            from += 32;
        } while (to < end);
    } else if (distance >= 16) {
        do {
            std::memcpy(to, from, 16);
            to += 16;
            from += 16;
        } while (to < end);
    } else if (distance == 1) {
        std::memset(to, std::to_integer<int>(*from), length);
    } else {
        do {
            *to++ = *from++;
        } while (to < end);
    }
}

template <class T> void fillEven(T& table)
{
    if constexpr (std::is_integral_v<T>)
        table = kEven;
    else
        for (auto& part : table)
            fillEven(part);
}

void fillEven(LzmaDecoder::Lengths& lengths)
{
    lengths.choice = lengths.choice2 = kEven;
    fillEven(lengths.low);
    fillEven(lengths.mid);
    fillEven(lengths.high);
}

}

LzmaWindow::LzmaWindow(std::unique_ptr<std::byte[]> memory, std::size_t capacity, std::size_t reach, bool isRing)
    : m_memory(std::move(memory))
    , m_capacity(capacity)
    , m_reach(reach)
    , m_isRing(isRing)
{
}

Result<LzmaWindow> LzmaWindow::ring(std::uint64_t dictionary)
{
    constexpr std::uint64_t kLeast = 64 << 10;
    // What a copy runs over must not be history that is still within reach.
    const auto capacity = std::max(dictionary, kLeast) + kSlack;
    std::unique_ptr<std::byte[]> memory(new (std::nothrow) std::byte[capacity + kSlack]);
    if (!memory)
        return Error{ErrorCode::OutOfMemory, "lzma: no memory for the dictionary"};
    return LzmaWindow(std::move(memory), capacity, dictionary, true);
}

Result<LzmaWindow> LzmaWindow::whole(std::size_t size, std::uint64_t dictionary)
{
    std::unique_ptr<std::byte[]> memory(new (std::nothrow) std::byte[size + kSlack]);
    if (!memory)
        return Error{ErrorCode::OutOfMemory, "lzma: no memory for a block"};
    return LzmaWindow(std::move(memory), size, dictionary, false);
}

void LzmaWindow::wrap()
{
    if (m_isRing && m_position == m_capacity)
        m_position = 0;
}

void LzmaWindow::append(ConstBytes bytes)
{
    std::memcpy(m_memory.get() + m_position, bytes.data(), bytes.size());
    advanceTo(m_position + bytes.size());
}

std::optional<LzmaDecoder::Properties> LzmaDecoder::Properties::parse(std::uint8_t value)
{
    if (value >= 9 * 5 * 5)
        return std::nullopt;
    return Properties{value % 9U, value / 9U % 5, value / 45U};
}

void LzmaDecoder::setProperties(const Properties& properties)
{
    m_properties = properties;
    m_literals.resize(kLiteralCoder << (properties.literalContext + properties.literalPosition));
}

void LzmaDecoder::reset()
{
    fillEven(m_model.isMatch);
    fillEven(m_model.isLongRep0);
    for (auto* const table : {&m_model.isRep, &m_model.isRep0, &m_model.isRep1, &m_model.isRep2})
        fillEven(*table);
    fillEven(m_model.slot);
    fillEven(m_model.special);
    fillEven(m_model.align);
    fillEven(m_model.match);
    fillEven(m_model.rep);
    std::fill(m_literals.begin(), m_literals.end(), kEven);
    m_state = 0;
    m_rep = {};
    m_pending = 0;
}

bool LzmaDecoder::begin(ConstBytes first)
{
    ByteReader in(first);
    const bool isRight = in.u8() == 0;
    m_code = in.be32();
    m_range = 0xFFFFFFFF;
    return isRight && in.ok();
}

bool LzmaDecoder::endsEven(ConstBytes packed, std::size_t& consumed)
{
    RangeCoder coder{m_range, m_code, reinterpret_cast<const std::uint8_t*>(packed.data())};
    coder.normalize();
    consumed = static_cast<std::size_t>(coder.in - reinterpret_cast<const std::uint8_t*>(packed.data()));
    m_range = coder.range;
    m_code = coder.code;
    return m_code == 0;
}

/// One long function on purpose: whatever it calls is inlined, and the state of coder and model stays in registers.
LzmaDecoder::Progress LzmaDecoder::decode(ConstBytes packed, LzmaWindow& window, std::size_t most)
{
    const auto* const start = reinterpret_cast<const std::uint8_t*>(packed.data());
    const auto* const inEnd = start + packed.size();
    RangeCoder coder{m_range, m_code, start};
    auto* const memory = window.m_memory.get();
    auto at = window.m_position;
    const auto end = at + most;
    const auto known = window.m_known - at; // + at: bytes of history, modulo 2^64
    const auto reach = window.m_reach;
    const auto capacity = window.m_capacity;
    const auto positionMask = (1U << m_properties.position) - 1;
    const auto literalMask = (1U << m_properties.literalPosition) - 1;
    const auto literalContext = m_properties.literalContext;
    auto* const literals = m_literals.data();
    auto state = m_state;
    auto [rep0, rep1, rep2, rep3] = m_rep;
    auto length = m_pending;
    auto stop = Stop::Full;
    std::uint32_t before = 0;
    if (window.m_known > 0)
        before = std::to_integer<std::uint32_t>(memory[at > 0 ? at - 1 : capacity - 1]);

    const auto byteAt = [&](std::size_t distance) {
        return std::to_integer<std::uint32_t>(memory[at >= distance ? at - distance : at + capacity - distance]);
    };

    for (;;) {
        if (length > 0) {
            const auto distance = std::size_t{rep0} + 1;
            const auto now = std::min<std::size_t>(length, end - at);
            if (at >= distance) [[likely]] {
                copyMatch(memory + at, distance, now);
                at += now;
            } else {
                for (const auto last = at + now; at < last; ++at)
                    memory[at] = memory[at >= distance ? at - distance : at + capacity - distance];
            }
            before = std::to_integer<std::uint32_t>(memory[at - 1]);
            length -= static_cast<std::uint32_t>(now);
        }
        if (at == end)
            break;
        if (coder.in > inEnd) {
            stop = Stop::InputEnds;
            break;
        }

        const auto place = static_cast<std::uint32_t>(known + at) & positionMask;
        if (!coder.bit(m_model.isMatch[state][place])) {
            const auto context = ((static_cast<std::uint32_t>(known + at) & literalMask) << literalContext)
                + (before >> (8 - literalContext));
            auto* const tree = literals + kLiteralCoder * context;
            std::uint32_t symbol = 1;
            if (state < 7) {
                symbol = coder.tree<8>(tree);
                state = state < 4 ? 0 : state - 3;
            } else {
                // As long as the bits are those of the byte that the last match would have gone on with, that byte
                // chooses among more probabilities.
                auto matched = byteAt(std::size_t{rep0} + 1);
                std::uint32_t offset = 0x100;
#pragma GCC unroll 8
                for (int i = 0; i < 8; ++i) {
                    matched <<= 1;
                    const auto matchBit = matched & offset;
                    const auto mask = coder.zeroMask(tree[offset + matchBit + symbol]);
                    symbol = 2 * symbol + 1 + mask;
                    offset &= matchBit ^ mask;
                }
                state = state < 10 ? state - 3 : state - 6;
            }
            before = symbol & 0xFF;
            memory[at++] = static_cast<std::byte>(before);
            continue;
        }

        if (!coder.bit(m_model.isRep[state])) {
            rep3 = rep2;
            rep2 = rep1;
            rep1 = rep0;
            state = state < 7 ? 7 : 10;
            length = coder.length(m_model.match, place);
            const auto slot = coder.tree<6>(m_model.slot[std::min(length - kFirstMatchLength, 3U)].data());
            if (slot < 4) {
                rep0 = slot;
            } else {
                const auto low = (slot >> 1) - 1;
                rep0 = 2 | (slot & 1);
                if (slot < 14) {
                    rep0 <<= low;
                    rep0 += coder.reverseTree(m_model.special.data() + rep0 - slot, low);
                } else {
                    rep0 = coder.direct(low - 4, rep0) << 4;
                    rep0 += coder.reverseTree(m_model.align.data(), 4);
                    if (rep0 == 0xFFFFFFFF) {
                        length = 0;
                        stop = Stop::EndMark;
                        break;
                    }
                }
            }
        } else {
            if (!coder.bit(m_model.isRep0[state])) {
                if (!coder.bit(m_model.isLongRep0[state][place])) {
                    state = state < 7 ? 9 : 11;
                    length = 1;
                }
            } else {
                std::uint32_t chosen = rep1;
                if (coder.bit(m_model.isRep1[state])) {
                    chosen = rep2;
                    if (coder.bit(m_model.isRep2[state])) {
                        chosen = rep3;
                        rep3 = rep2;
                    }
                    rep2 = rep1;
                }
                rep1 = rep0;
                rep0 = chosen;
            }
            if (length == 0) {
                state = state < 7 ? 8 : 11;
                length = coder.length(m_model.rep, place);
            }
        }
        if (rep0 >= known + at || rep0 >= reach) {
            length = 0;
            stop = Stop::Corrupt;
            break;
        }
    }

    m_range = coder.range;
    m_code = coder.code;
    m_state = state;
    m_rep = {rep0, rep1, rep2, rep3};
    m_pending = length;
    window.advanceTo(at);
    return {stop, static_cast<std::size_t>(coder.in - start)};
}

}
