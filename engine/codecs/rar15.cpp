#include "engine/codecs/msb_bit_input.h"
#include "engine/codecs/rar_codec.h"
#include "engine/codecs/rar_output.h"

#include <algorithm>
#include <array>
#include <bit>

namespace vantoro {

namespace {

/// A fixed prefix code over ranks: 16-bit codes below thresholds[i] and not below the one before have
/// start + i bits.
struct RankCode {
    unsigned start;
    std::array<std::uint16_t, 11> thresholds;
    std::array<std::uint8_t, 13> bases; // by length
};
constexpr RankCode kLength1{2,
                            {0x8000, 0xA000, 0xC000, 0xD000, 0xE000, 0xEA00, 0xEE00, 0xF000, 0xF200, 0xF200, 0xFFFF},
                            {0, 0, 0, 2, 3, 5, 7, 11, 16, 20, 24, 32, 32}};
constexpr RankCode kLength2{3,
                            {0xA000, 0xC000, 0xD000, 0xE000, 0xEA00, 0xEE00, 0xF000, 0xF200, 0xF240, 0xFFFF},
                            {0, 0, 0, 0, 5, 7, 9, 13, 18, 22, 26, 34, 36}};
constexpr RankCode kHuffman0{4,
                             {0x8000, 0xC000, 0xE000, 0xF200, 0xF200, 0xF200, 0xF200, 0xF200, 0xFFFF},
                             {0, 0, 0, 0, 0, 8, 16, 24, 33, 33, 33, 33, 33}};
constexpr RankCode kHuffman1{5,
                             {0x2000, 0xC000, 0xE000, 0xF000, 0xF200, 0xF200, 0xF7E0, 0xFFFF},
                             {0, 0, 0, 0, 0, 0, 4, 44, 60, 76, 80, 80, 127}};
constexpr RankCode kHuffman2{
    5, {0x1000, 0x2400, 0x8000, 0xC000, 0xFA00, 0xFFFF, 0xFFFF, 0xFFFF}, {0, 0, 0, 0, 0, 0, 2, 7, 53, 117, 233, 0, 0}};
constexpr RankCode kHuffman3{
    6, {0x0800, 0x2400, 0xEE00, 0xFE80, 0xFFFF, 0xFFFF, 0xFFFF}, {0, 0, 0, 0, 0, 0, 0, 2, 16, 218, 251, 0, 0}};
constexpr RankCode kHuffman4{
    8, {0xFF00, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF}, {0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0}};

/// Values in the order of their use: the more often one was used, the further in front.
class RankedList {
public:
    /// Value i at place i, or the values reversed (all but the first).
    void start(bool reversed, bool grouped)
    {
        for (unsigned i = 0; i < 256; ++i)
            m_entries[i] = {static_cast<std::uint8_t>(reversed ? 256 - i : i), 0};
        m_next.fill(0);
        if (grouped)
            regroup();
    }
    std::uint8_t value(std::size_t place) const { return m_entries[place].value; }
    /// Moves the entry to the front of those used as often and counts the use. `limit` bounds the count.
    std::uint8_t promote(std::size_t place, unsigned limit)
    {
        for (;;) {
            auto& entry = m_entries[place];
            const auto target = m_next[entry.uses]++;
            if (entry.uses < limit) {
                ++entry.uses;
                std::swap(entry, m_entries[target]);
                return m_entries[target].value;
            }
            regroup();
        }
    }

private:
    struct Ranked {
        std::uint8_t value;
        std::uint8_t uses;
    };
    void regroup()
    {
        for (unsigned i = 0; i < 256; ++i)
            m_entries[i].uses = static_cast<std::uint8_t>(7 - i / 32);
        m_next.fill(0);
        for (unsigned uses = 0; uses < 7; ++uses)
            m_next[uses] = static_cast<std::uint8_t>(32 * (7 - uses));
    }
    std::array<Ranked, 256> m_entries;
    std::array<std::uint8_t, 256> m_next; // by uses: where the next entry with one use more goes
};

constexpr std::uint64_t kWindow = 0x10000;
constexpr std::uint32_t kVoid = 0xFFFFFF; // a distance not yet set: larger than any valid one
constexpr unsigned kLiteralLimit = 0xA1;
constexpr unsigned kOtherLimit = 0xFF;

/// Source: the format note of rar 1.4 and 1.5. Averages of what was decoded choose among fixed codes.
class Rar15 final : public RarCodec {
public:
    Result<void> decode(ByteStream& packed, const RarCodecEntry& entry, ByteSink& out) override
    {
        m_in.start(packed);
        auto with64k = entry;
        with64k.window = kWindow;
        TRY(m_out.begin(with64k, out));
        if (!entry.isSolid)
            reset();
        m_flags = 0;
        m_flagBits = 0;
        m_isLiteralRun = false;
        m_repeats = 0;
        m_left = entry.size.value_or(~std::uint64_t{0});
        auto outcome = decodeEntry();
        TRY(m_out.finish());
        return outcome;
    }

private:
    void reset();
    Result<void> decodeEntry();
    Result<void> decodeSymbol();
    unsigned number(const RankCode& code);
    Result<void> readFlags();
    Result<bool> nextFlag();
    Result<void> literal();
    Result<void> shortMatch();
    Result<void> oldMatch(unsigned which);
    Result<void> longMatch();
    void remember(std::uint32_t distance, unsigned length);
    void copy(std::uint32_t distance, unsigned length)
    {
        const auto count = static_cast<unsigned>(std::min<std::uint64_t>(length, m_left));
        m_left -= count;
        m_out.cursor().copy(distance, count);
    }

    MsbBitInput m_in;
    RarOutput m_out;
    std::uint64_t m_left = 0; // bytes of the entry

    RankedList m_literals, m_farBytes, m_flagBytes;
    std::array<std::uint8_t, 256> m_near{};
    unsigned m_averageLiteral = 0, m_averageFar = 0, m_averageShort = 0, m_averageLong = 0, m_averageNear = 0;
    std::uint32_t m_farLimit = 0;
    unsigned m_literalWeight = 0, m_longWeight = 0;
    unsigned m_literalsInRow = 0;
    unsigned m_alternative = 0; // changes two code lengths of short matches
    std::array<std::uint32_t, 4> m_distances{};
    unsigned m_distanceIndex = 0;
    std::uint32_t m_lastDistance = 0;
    unsigned m_lastLength = 0;

    unsigned m_flags = 0;
    unsigned m_flagBits = 0;
    bool m_isLiteralRun = false;
    unsigned m_repeats = 0;
};

void Rar15::reset()
{
    m_literals.start(false, false);
    m_farBytes.start(false, true);
    m_flagBytes.start(true, false);
    for (unsigned i = 0; i < 256; ++i)
        m_near[i] = static_cast<std::uint8_t>(i);
    m_averageLiteral = 0x3500;
    m_averageFar = m_averageShort = m_averageLong = m_averageNear = 0;
    m_farLimit = 0x2001;
    m_literalWeight = m_longWeight = 0x80;
    m_literalsInRow = 0;
    m_alternative = 0;
    m_distances.fill(kVoid);
    m_distanceIndex = 0;
    m_lastDistance = kVoid;
    m_lastLength = 0;
}

Result<void> Rar15::decodeEntry()
{
    if (m_left == 0)
        return {};
    TRY(m_in.ready(32));
    TRY(readFlags());
    m_flagBits = 8;
    while (m_left > 0) {
        auto& out = m_out.cursor();
        if (out.position >= out.stop)
            TRY(m_out.flush());
        const auto sound = out.position;
        TRY(decodeSymbol());
        if (auto ready = m_in.ready(32); !ready) {
            out.position = sound; // the symbol was cut
            return ready;
        }
    }
    return {};
}

Result<void> Rar15::decodeSymbol()
{
    if (m_isLiteralRun)
        return literal();
    const auto prefersLong = m_longWeight > m_literalWeight;
    if (TRY(nextFlag()))
        return prefersLong ? longMatch() : literal();
    if (TRY(nextFlag()))
        return prefersLong ? literal() : longMatch();
    return shortMatch();
}

unsigned Rar15::number(const RankCode& code)
{
    const auto peeked = m_in.peek16() & 0xFFF0;
    std::size_t i = 0;
    while (code.thresholds[i] <= peeked)
        ++i;
    const auto length = code.start + static_cast<unsigned>(i);
    m_in.skip(length);
    return ((peeked - (i > 0 ? code.thresholds[i - 1] : 0)) >> (16 - length)) + code.bases[length];
}

Result<void> Rar15::readFlags()
{
    const auto place = number(kHuffman2);
    if (place > 255)
        return Error{ErrorCode::Corrupt, "rar1: flag byte"};
    m_flags = m_flagBytes.promote(place, kOtherLimit);
    return {};
}

Result<bool> Rar15::nextFlag()
{
    if (m_flagBits == 0) {
        TRY(readFlags());
        m_flagBits = 8;
    }
    --m_flagBits;
    const auto flag = (m_flags & 0x80) != 0;
    m_flags <<= 1;
    return flag;
}

void Rar15::remember(std::uint32_t distance, unsigned length)
{
    m_distances[m_distanceIndex] = distance;
    m_distanceIndex = (m_distanceIndex + 1) & 3;
    m_lastDistance = distance;
    m_lastLength = length;
    copy(distance, length);
}

Result<void> Rar15::literal()
{
    const auto peeked = m_in.peek16();
    const auto& code = m_averageLiteral > 0x75FF ? kHuffman4
        : m_averageLiteral > 0x5DFF              ? kHuffman3
        : m_averageLiteral > 0x35FF              ? kHuffman2
        : m_averageLiteral > 0x0DFF              ? kHuffman1
                                                 : kHuffman0;
    auto place = number(code) & 0xFF;
    if (m_isLiteralRun) {
        // Ranks are one higher in a run; the lowest one ends it or is a match.
        if (place == 0 && peeked > 0x0FFF)
            place = 256;
        if (place == 0) {
            if (m_in.take(1) != 0) {
                m_literalsInRow = 0;
                m_isLiteralRun = false;
                return {};
            }
            const auto length = 3 + m_in.take(1);
            const auto high = number(kHuffman2) << 5;
            copy(high | m_in.take(5), length);
            return {};
        }
        --place;
    } else {
        if (m_literalsInRow >= 16 && m_flagBits == 0)
            m_isLiteralRun = true;
        ++m_literalsInRow;
    }
    m_averageLiteral += place;
    m_averageLiteral -= m_averageLiteral >> 8;
    m_literalWeight += 16;
    if (m_literalWeight > 255) {
        m_literalWeight = 0x90;
        m_longWeight >>= 1;
    }
    m_out.cursor().put(m_literals.promote(place, kLiteralLimit));
    --m_left;
    return {};
}

Result<void> Rar15::shortMatch()
{
    struct Pattern {
        std::uint8_t length, bits; // length 0: 3, or 4 in the alternative
    };
    static constexpr std::array<std::array<Pattern, 15>, 2> kPatterns{{
        {{{1, 0x00},
          {0, 0xA0},
          {4, 0xD0},
          {4, 0xE0},
          {5, 0xF0},
          {6, 0xF8},
          {7, 0xFC},
          {8, 0xFE},
          {8, 0xFF},
          {4, 0xC0},
          {4, 0x80},
          {5, 0x90},
          {6, 0x98},
          {6, 0x9C},
          {4, 0xB0}}},
        {{{2, 0x00},
          {3, 0x40},
          {3, 0x60},
          {0, 0xA0},
          {4, 0xD0},
          {4, 0xE0},
          {5, 0xF0},
          {6, 0xF8},
          {6, 0xFC},
          {4, 0xC0},
          {4, 0x80},
          {5, 0x90},
          {6, 0x98},
          {6, 0x9C},
          {4, 0xB0}}},
    }};
    m_literalsInRow = 0;
    if (m_repeats == 2) {
        if (m_in.take(1) != 0) {
            copy(m_lastDistance, m_lastLength);
            return {};
        }
        m_repeats = 0;
    }
    const auto peeked = m_in.peek16() >> 8;
    const auto& patterns = kPatterns[m_averageShort < 37 ? 0 : 1];
    unsigned kind = 0;
    for (; kind < patterns.size(); ++kind) {
        const auto length = patterns[kind].length == 0 ? 3 + m_alternative : patterns[kind].length;
        if (((peeked ^ patterns[kind].bits) >> (8 - length)) == 0) {
            m_in.skip(length);
            break;
        }
    }
    if (kind == 9) {
        ++m_repeats;
        copy(m_lastDistance, m_lastLength);
        return {};
    }
    if (kind > 14)
        return Error{ErrorCode::Corrupt, "rar1: short match"};
    m_repeats = 0;
    if (kind == 14) {
        m_lastLength = number(kLength2) + 5;
        m_lastDistance = 0x8000 | m_in.take(15);
        copy(m_lastDistance, m_lastLength);
        return {};
    }
    if (kind >= 10)
        return oldMatch(kind - 9);
    m_averageShort += kind;
    m_averageShort -= m_averageShort >> 4;
    const auto place = number(kHuffman2) & 0xFF;
    const auto distance = m_near[place];
    if (place > 0)
        std::swap(m_near[place], m_near[place - 1]);
    remember(distance + 1U, kind + 2);
    return {};
}

/// `which`: 1 is the distance used last.
Result<void> Rar15::oldMatch(unsigned which)
{
    const auto distance = m_distances[(m_distanceIndex - which) & 3];
    auto length = number(kLength1) + 2;
    if (length == 0x101 && which == 1) {
        m_alternative ^= 1;
        return {};
    }
    length += (distance > 256 ? 1U : 0U) + (distance >= m_farLimit ? 1U : 0U);
    remember(distance, length);
    return {};
}

Result<void> Rar15::longMatch()
{
    m_literalsInRow = 0;
    m_longWeight += 16;
    if (m_longWeight > 255) {
        m_longWeight = 0x90;
        m_literalWeight >>= 1;
    }
    const auto oldLong = m_averageLong;
    unsigned length;
    if (m_averageLong >= 122) {
        length = number(kLength2);
    } else if (m_averageLong >= 64) {
        length = number(kLength1);
    } else if (const auto peeked = m_in.peek16(); peeked < 0x100) {
        length = peeked;
        m_in.skip(16);
    } else {
        length = static_cast<unsigned>(std::countl_zero(static_cast<std::uint16_t>(peeked)));
        m_in.skip(length + 1);
    }
    m_averageLong += length;
    m_averageLong -= m_averageLong >> 5;

    const auto place = number(m_averageFar > 0x28FF ? kHuffman2 : m_averageFar > 0x06FF ? kHuffman1 : kHuffman0);
    m_averageFar += place;
    m_averageFar -= m_averageFar >> 8;
    const auto high = m_farBytes.promote(place & 0xFF, kOtherLimit);
    const std::uint32_t distance = (static_cast<std::uint32_t>(high) << 8 | m_in.peek16() >> 8) >> 1;
    m_in.skip(7);

    const auto oldNear = m_averageNear;
    if (length != 1 && length != 4) {
        if (length == 0 && distance <= m_farLimit) {
            ++m_averageNear;
            m_averageNear -= m_averageNear >> 8;
        } else if (m_averageNear > 0) {
            --m_averageNear;
        }
    }
    length += 3;
    length += (distance >= m_farLimit ? 1U : 0U) + (distance <= 256 ? 8U : 0U);
    m_farLimit = oldNear > 0xB0 || (m_averageLiteral >= 0x2A00 && oldLong < 0x40) ? 0x7F00 : 0x2001;
    remember(distance, length);
    return {};
}

}

std::unique_ptr<RarCodec> makeRar15Codec() { return std::make_unique<Rar15>(); }

}
