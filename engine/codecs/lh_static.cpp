#include "engine/codecs/lh_static.h"

#include "engine/codecs/lh_bits.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::size_t kWindow = 64 << 10;
constexpr unsigned kLongestCode = 16;
constexpr unsigned kLengthSymbols = 19; // of the code that the other code's lengths are written in
constexpr unsigned kLiteralSymbols = 510;

/// A canonical prefix code, or a single symbol that takes no bits.
class LhCode {
public:
    void setSingle(unsigned symbol)
    {
        m_single = symbol;
        m_isSingle = true;
    }

    /// Corrupt unless the lengths use up all codes.
    Result<void> build(std::span<const std::uint8_t> lengths)
    {
        m_isSingle = false;
        std::array<std::uint32_t, kLongestCode + 1> counts{};
        for (const auto length : lengths)
            ++counts[length];
        counts[0] = 0;
        std::uint32_t code = 0;
        std::uint32_t index = 0;
        std::array<std::uint32_t, kLongestCode + 1> next{};
        for (unsigned length = 1; length <= kLongestCode; ++length) {
            next[length] = index;
            m_offsets[length] = index - (code >> (kLongestCode - length));
            index += counts[length];
            code += counts[length] << (kLongestCode - length);
            m_limits[length] = code;
        }
        const bool isComplete = code == std::uint32_t{1} << kLongestCode;
        if (!isComplete && index != 1)
            return Error{ErrorCode::Corrupt, "lh: code lengths that make no code"};
        for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
            if (lengths[symbol] > 0)
                m_symbols[next[lengths[symbol]]++] = static_cast<std::uint16_t>(symbol);
        }
        if (isComplete) {
            fillFast();
        } else { // one symbol, which takes its bits whatever they are
            const auto symbol = m_symbols[0];
            m_fast.fill({symbol, lengths[symbol]});
        }
        return {};
    }

    Result<unsigned> decode(LhBits& bits) const
    {
        if (m_isSingle)
            return m_single;
        const auto ahead = TRY(bits.peek(kLongestCode));
        if (const auto entry = m_fast[ahead >> (kLongestCode - kFastBits)]; entry.length > 0) {
            bits.skip(entry.length);
            return unsigned{entry.symbol};
        }
        unsigned length = kFastBits + 1;
        while (ahead >= m_limits[length]) // the last limit is above every code
            ++length;
        bits.skip(length);
        return unsigned{m_symbols[m_offsets[length] + (ahead >> (kLongestCode - length))]};
    }

private:
    static constexpr unsigned kFastBits = 10;
    struct Fast {
        std::uint16_t symbol = 0;
        std::uint8_t length = 0; // 0: longer than the table
    };

    void fillFast()
    {
        m_fast.fill({});
        std::uint32_t code = 0;
        for (unsigned length = 1; length <= kFastBits; ++length) {
            for (; code < m_limits[length]; code += 1U << (kLongestCode - length)) {
                const Fast entry{m_symbols[m_offsets[length] + (code >> (kLongestCode - length))],
                                 static_cast<std::uint8_t>(length)};
                const auto first = code >> (kLongestCode - kFastBits);
                std::fill_n(m_fast.begin() + first, 1U << (kFastBits - length), entry);
            }
        }
    }

    unsigned m_single = 0;
    bool m_isSingle = true;
    std::array<std::uint32_t, kLongestCode + 1> m_limits{}; // 16-bit codes below it have at most this length
    std::array<std::uint32_t, kLongestCode + 1> m_offsets{}; // wraps
    std::array<std::uint16_t, kLiteralSymbols> m_symbols{};
    std::array<Fast, 1 << kFastBits> m_fast{};
};

class LhStaticDecoder final : public Decoder {
public:
    LhStaticDecoder(StreamPtr packed, const LhStaticParams& params, std::uint64_t size)
        : m_bits(std::move(packed))
        , m_params(params)
        , m_left(size)
        , m_history(params.fill)
    {
    }

private:
    Result<void> decode(SpanWriter& out) override
    {
        while (out.room() > 0 && m_left > 0) {
            if (m_copy > 0) {
                --m_copy;
                emit(out, m_history.back(m_distance));
                continue;
            }
            if (m_codes == 0 && !TRY(startBlock()))
                break;
            --m_codes;
            const auto symbol = TRY(m_literals.decode(m_bits));
            if (symbol < 256) {
                emit(out, static_cast<std::byte>(symbol));
            } else {
                m_copy = symbol - 253;
                m_distance = TRY(readDistance());
            }
        }
        return {};
    }

    void emit(SpanWriter& out, std::byte value)
    {
        out.put(value);
        m_history.put(value);
        --m_left;
    }

    Result<std::size_t> readDistance()
    {
        const auto symbol = TRY(m_distances.decode(m_bits));
        if (symbol == 0)
            return std::size_t{1};
        const auto low = TRY(m_bits.take(symbol - 1));
        const std::size_t distance = 1 + (std::size_t{1} << (symbol - 1)) + low;
        if (distance > kWindow)
            return Error{ErrorCode::Corrupt, "lh: distance past the window"};
        return distance;
    }

    /// False at the end of the data.
    Result<bool> startBlock()
    {
        m_codes = TRY(m_bits.take(16));
        if (m_codes == 0) {
            if (m_params.emptyBlockEnds)
                return false;
            m_codes = 0x10000;
        }
        TRY(readSmallCode(m_lengths, kLengthSymbols, 5, 3));
        TRY(readLiteralCode());
        TRY(readSmallCode(m_distances, m_params.distanceSymbols, m_params.distanceCountBits, 0));
        return true;
    }

    /// Lengths of 3 bits, or more in unary; after `gapAfter` of them comes a count of zeros.
    Result<void> readSmallCode(LhCode& code, unsigned symbols, unsigned countBits, unsigned gapAfter)
    {
        const auto count = TRY(m_bits.take(countBits));
        if (count == 0) {
            const auto single = TRY(m_bits.take(countBits));
            if (single >= symbols)
                return Error{ErrorCode::Corrupt, "lh: symbol out of range"};
            code.setSingle(single);
            return {};
        }
        if (count > symbols)
            return Error{ErrorCode::Corrupt, "lh: too many symbols"};
        std::array<std::uint8_t, 32> lengths{};
        for (std::size_t i = 0; i < count;) {
            auto length = TRY(m_bits.take(3));
            while (length >= 7 && TRY(m_bits.take(1)) == 1) {
                if (++length > kLongestCode)
                    return Error{ErrorCode::Corrupt, "lh: code too long"};
            }
            lengths[i++] = static_cast<std::uint8_t>(length);
            if (i == gapAfter)
                i += TRY(m_bits.take(2));
        }
        return code.build(std::span(lengths).first(symbols));
    }

    Result<void> readLiteralCode()
    {
        const auto count = TRY(m_bits.take(9));
        if (count == 0) {
            const auto single = TRY(m_bits.take(9));
            if (single >= kLiteralSymbols)
                return Error{ErrorCode::Corrupt, "lh: symbol out of range"};
            m_literals.setSingle(single);
            return {};
        }
        if (count > kLiteralSymbols)
            return Error{ErrorCode::Corrupt, "lh: too many symbols"};
        std::array<std::uint8_t, kLiteralSymbols> lengths{};
        for (std::size_t i = 0; i < count;) {
            const auto symbol = TRY(m_lengths.decode(m_bits));
            if (symbol > 2)
                lengths[i++] = static_cast<std::uint8_t>(symbol - 2);
            else if (symbol == 0)
                i += 1;
            else if (symbol == 1)
                i += TRY(m_bits.take(4)) + 3;
            else
                i += TRY(m_bits.take(9)) + 20;
        }
        return m_literals.build(lengths);
    }

    LhBits m_bits;
    LhStaticParams m_params;
    std::uint64_t m_left; // bytes still to come
    LhHistory<kWindow> m_history;
    LhCode m_lengths, m_literals, m_distances;
    std::uint32_t m_codes = 0; // left in the block
    unsigned m_copy = 0; // bytes of a copy still to come
    std::size_t m_distance = 1;
};

}

StreamPtr openLhStatic(StreamPtr packed, const LhStaticParams& params, std::uint64_t unpackedSize)
{
    return std::make_unique<LhStaticDecoder>(std::move(packed), params, unpackedSize);
}

}
