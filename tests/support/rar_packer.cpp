#include "tests/support/rar_packer.h"

#include "engine/codecs/rar_tables.h"
#include "tests/support/rar_builder.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <queue>

namespace vantoro::test {

namespace {

constexpr std::size_t kTokensPerBlock = 60'000;
constexpr std::size_t kReach = 4 << 20;
constexpr std::size_t kShortest = 6;

struct Token {
    std::uint32_t length = 0; // 0: a literal
    std::uint32_t distance = 0; // or the literal
};

std::vector<Token> findMatches(std::string_view data, std::size_t longest)
{
    std::vector<Token> tokens;
    std::vector<std::uint32_t> last(1 << 16, ~0U);
    for (std::size_t at = 0; at < data.size();) {
        std::size_t length = 0;
        std::size_t distance = 0;
        if (at + kShortest <= data.size()) {
            std::uint32_t word;
            std::memcpy(&word, data.data() + at, 4);
            auto& candidate = last[(word * 2654435761U) >> 16];
            if (candidate != ~0U && at - candidate < kReach) {
                const auto most = std::min(longest, data.size() - at);
                while (length < most && data[candidate + length] == data[at + length])
                    ++length;
                distance = at - candidate;
            }
            candidate = static_cast<std::uint32_t>(at);
        }
        if (length >= kShortest) {
            tokens.push_back({static_cast<std::uint32_t>(length), static_cast<std::uint32_t>(distance)});
            at += length;
        } else {
            tokens.push_back({0, static_cast<std::uint8_t>(data[at++])});
        }
    }
    return tokens;
}

/// Bits, a word at a time.
class FastBits {
public:
    void put(std::uint64_t value, unsigned bits)
    {
        for (; bits > 32; bits -= 8)
            put(value >> (bits - 8) & 0xFF, 8);
        m_window = m_window << bits | (value & ((std::uint64_t{1} << bits) - 1));
        for (m_count += bits; m_count >= 8; m_count -= 8)
            m_bytes.push_back(static_cast<char>(m_window >> (m_count - 8)));
    }
    void align() { put(0, (8 - m_count) % 8); }
    std::size_t bits() const { return m_bytes.size() * 8 + m_count; }
    std::string& bytes() { return m_bytes; }

private:
    std::string m_bytes;
    std::uint64_t m_window = 0;
    unsigned m_count = 0;
};

/// A prefix code for symbols with these counts, none longer than `longest`.
class HuffmanCode {
public:
    explicit HuffmanCode(std::size_t symbols) : counts(symbols), lengths(symbols), m_codes(symbols) {}
    void build(unsigned longest)
    {
        for (auto weights = counts; !assignLengths(weights, longest);) {
            for (auto& weight : weights)
                weight = weight == 0 ? 0 : weight / 2 + 1;
        }
        unsigned next = 0;
        for (unsigned length = 1; length <= longest; ++length, next <<= 1) {
            for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
                if (lengths[symbol] == length)
                    m_codes[symbol] = next++;
            }
        }
    }
    void put(FastBits& out, std::size_t symbol) const { out.put(m_codes[symbol], lengths[symbol]); }

    std::vector<std::uint64_t> counts;
    std::vector<unsigned> lengths;

private:
    bool assignLengths(const std::vector<std::uint64_t>& weights, unsigned longest)
    {
        using Node = std::pair<std::uint64_t, std::size_t>;
        std::priority_queue<Node, std::vector<Node>, std::greater<>> queue;
        std::vector<std::size_t> parent(2 * weights.size(), 0);
        for (std::size_t i = 0; i < weights.size(); ++i) {
            lengths[i] = 0;
            if (weights[i] > 0)
                queue.push({weights[i], i});
        }
        if (queue.size() == 1)
            lengths[queue.top().second] = 1;
        if (queue.size() < 2)
            return true;
        auto next = weights.size();
        while (queue.size() > 1) {
            const auto a = queue.top();
            queue.pop();
            const auto b = queue.top();
            queue.pop();
            parent[a.second] = parent[b.second] = next;
            queue.push({a.first + b.first, next++});
        }
        const auto root = next - 1;
        for (std::size_t i = 0; i < weights.size(); ++i) {
            for (auto node = i; weights[i] > 0 && node != root; node = parent[node])
                ++lengths[i];
            if (lengths[i] > longest)
                return false;
        }
        return true;
    }
    std::vector<unsigned> m_codes;
};

/// Code lengths through a level code: single values, and runs of zeros as symbols 18 and 19.
void putLengths(FastBits& out, const std::vector<const HuffmanCode*>& codes)
{
    struct Step {
        unsigned symbol, extra, bits;
    };
    std::vector<unsigned> all;
    for (const auto* code : codes)
        all.insert(all.end(), code->lengths.begin(), code->lengths.end());
    std::vector<Step> steps;
    for (std::size_t i = 0; i < all.size();) {
        std::size_t zeros = 0;
        while (i + zeros < all.size() && all[i + zeros] == 0 && zeros < 138)
            ++zeros;
        if (zeros >= 11)
            steps.push_back({19, static_cast<unsigned>(zeros - 11), 7});
        else if (zeros >= 3)
            steps.push_back({18, static_cast<unsigned>(zeros - 3), 3});
        else
            steps.push_back({all[i], 0, 0});
        i += zeros >= 3 ? zeros : 1;
    }
    HuffmanCode level(20);
    for (const auto& step : steps)
        ++level.counts[step.symbol];
    level.build(14); // 15 has a meaning of its own here
    for (const auto length : level.lengths)
        out.put(length, 4);
    for (const auto& step : steps) {
        level.put(out, step.symbol);
        out.put(step.extra, step.bits);
    }
}

struct Slot {
    unsigned number, extra, bits;
};

Slot lengthSlot50(unsigned length)
{
    const auto value = length - 2;
    if (value < 8)
        return {value, 0, 0};
    const auto bits = static_cast<unsigned>(std::bit_width(value)) - 3;
    return {4 * (bits + 1) + (value >> bits & 3), value & ((1U << bits) - 1), bits};
}

Slot distanceSlot50(unsigned distance)
{
    const auto value = distance - 1;
    if (value < 4)
        return {value, 0, 0};
    const auto bits = static_cast<unsigned>(std::bit_width(value)) - 2;
    return {2 * (bits + 1) + (value >> bits & 1), value & ((1U << bits) - 1), bits};
}

unsigned bonus50(unsigned distance)
{
    return distance > 0x40000 ? 3 : distance > 0x2000 ? 2 : distance > 0x100 ? 1 : 0;
}
unsigned bonus29(unsigned distance) { return distance >= 0x40000 ? 2 : distance >= 0x2000 ? 1 : 0; }

template <std::size_t size> Slot slotOf(const std::array<RarSlot, size>& slots, unsigned value)
{
    unsigned number = 0;
    while (number + 1 < size && slots[number + 1].base <= value)
        ++number;
    return {number, value - slots[number].base, slots[number].bits};
}

struct Codes50 {
    HuffmanCode main{306}, distance{64}, align{16}, length{44};
};

/// Calls `put(code, symbol)` and `extra(value, bits)` in the order of the stream.
template <class Codes, class Put, class Extra>
void walk50(std::span<const Token> tokens, Codes& codes, Put put, Extra extra)
{
    for (const auto& token : tokens) {
        if (token.length == 0) {
            put(codes.main, token.distance);
            continue;
        }
        const auto length = lengthSlot50(token.length - bonus50(token.distance));
        put(codes.main, 262 + length.number);
        extra(length.extra, length.bits);
        const auto distance = distanceSlot50(token.distance);
        put(codes.distance, distance.number);
        if (distance.bits < 4) {
            extra(distance.extra, distance.bits);
        } else {
            extra(distance.extra >> 4, distance.bits - 4);
            put(codes.align, distance.extra & 15);
        }
    }
}

struct Codes29 {
    HuffmanCode main{299}, distance{60}, low{17}, repeat{28};
};

template <class Codes, class Put, class Extra>
void walk29(std::span<const Token> tokens, Codes& codes, Put put, Extra extra)
{
    for (const auto& token : tokens) {
        if (token.length == 0) {
            put(codes.main, token.distance);
            continue;
        }
        const auto length = slotOf(kRarLengths, token.length - bonus29(token.distance) - 3);
        put(codes.main, 271 + length.number);
        extra(length.extra, length.bits);
        const auto distance = slotOf(kRarDistances, token.distance - 1);
        put(codes.distance, distance.number);
        if (distance.bits < 4) {
            extra(distance.extra, distance.bits);
        } else {
            extra(distance.extra >> 4, distance.bits - 4);
            put(codes.low, distance.extra & 15);
        }
    }
    put(codes.main, 256);
}

const auto kCount = [](HuffmanCode& code, std::size_t symbol) { ++code.counts[symbol]; };
const auto kNoExtra = [](unsigned, unsigned) {};

}

std::string packRar50(std::string_view data)
{
    std::string out;
    const auto all = findMatches(data, 4000);
    for (std::size_t at = 0; at < std::max<std::size_t>(all.size(), 1); at += kTokensPerBlock) {
        const auto tokens = std::span(all).subspan(at, std::min(kTokensPerBlock, all.size() - at));
        Codes50 codes;
        walk50(tokens, codes, kCount, kNoExtra);
        for (auto* code : {&codes.main, &codes.distance, &codes.align, &codes.length})
            code->build(15);
        FastBits bits;
        putLengths(bits, {&codes.main, &codes.distance, &codes.align, &codes.length});
        walk50(
            tokens, codes, [&](const HuffmanCode& code, std::size_t symbol) { code.put(bits, symbol); },
            [&](unsigned value, unsigned count) { bits.put(value, count); });
        const auto lastBits = static_cast<unsigned>((bits.bits() + 7) % 8);
        bits.align();
        const auto size = bits.bytes().size();
        const auto isLast = at + kTokensPerBlock >= all.size();
        const auto flags = lastBits | 2U << 3 | (isLast ? 0x40U : 0) | 0x80U;
        const auto check = 0x5AU ^ flags ^ (size & 0xFF) ^ (size >> 8 & 0xFF) ^ (size >> 16);
        out += le(flags, 1) + le(check, 1) + le(size, 3) + bits.bytes();
    }
    return out;
}

std::string packRar29(std::string_view data)
{
    FastBits bits;
    const auto all = findMatches(data, 255);
    for (std::size_t at = 0; at < std::max<std::size_t>(all.size(), 1); at += kTokensPerBlock) {
        const auto tokens = std::span(all).subspan(at, std::min(kTokensPerBlock, all.size() - at));
        Codes29 codes;
        walk29(tokens, codes, kCount, kNoExtra);
        for (auto* code : {&codes.main, &codes.distance, &codes.low, &codes.repeat})
            code->build(15);
        bits.align();
        bits.put(0, 2);
        putLengths(bits, {&codes.main, &codes.distance, &codes.low, &codes.repeat});
        walk29(
            tokens, codes, [&](const HuffmanCode& code, std::size_t symbol) { code.put(bits, symbol); },
            [&](unsigned value, unsigned count) { bits.put(value, count); });
        const auto isLast = at + kTokensPerBlock >= all.size();
        isLast ? bits.put(0, 2) : bits.put(1, 1);
    }
    bits.align();
    return bits.bytes();
}

}
