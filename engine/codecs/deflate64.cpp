#include "engine/codecs/deflate64.h"

#include "engine/codecs/lsb_prefix_code.h"
#include "engine/codecs/lz_history.h"

namespace vantoro {

namespace {

struct Range {
    std::uint32_t base;
    std::uint8_t extraBits;
};

constexpr unsigned kEndOfBlock = 256, kLiterals = 288, kDistances = 32;

/// Symbols 257 to 285.
constexpr auto kLengths = [] {
    std::array<Range, 29> table{};
    std::uint32_t base = 3;
    for (unsigned i = 0; i + 1 < table.size(); ++i) {
        const auto extra = static_cast<std::uint8_t>(i < 8 ? 0 : (i - 4) / 4);
        table[i] = {base, extra};
        base += 1U << extra;
    }
    table[28] = {3, 16};
    return table;
}();

constexpr auto kDistanceRanges = [] {
    std::array<Range, kDistances> table{};
    std::uint32_t base = 1;
    for (unsigned i = 0; i < table.size(); ++i) {
        const auto extra = static_cast<std::uint8_t>(i < 4 ? 0 : (i - 2) / 2);
        table[i] = {base, extra};
        base += 1U << extra;
    }
    return table;
}();

class Deflate64Decoder final : public Decoder {
public:
    Deflate64Decoder(StreamPtr packed, const CodecParams& params) : Decoder(params.cancel), m_bits(std::move(packed)) {}

private:
    enum class State : std::uint8_t { Header, Stored, Symbols, End };

    Result<void> decode(SpanWriter& out) override
    {
        const auto result = decodeBlocks(out);
        TRY(m_bits.check()); // zeros behind the end may have looked like damage
        return result;
    }

    Result<void> decodeBlocks(SpanWriter& out)
    {
        while (out.room() > 0 && m_state != State::End) {
            if (m_state == State::Header)
                TRY(readHeader());
            else if (m_state == State::Stored)
                TRY(copyStored(out));
            else
                TRY(decodeSymbols(out));
        }
        return {};
    }

    void endBlock() { m_state = m_isLast ? State::End : State::Header; }

    Result<void> readHeader()
    {
        TRY(m_bits.fill());
        TRY(m_bits.check());
        m_isLast = m_bits.take(1) != 0;
        switch (m_bits.take(2)) {
        case 0:
            return readStoredHeader();
        case 1:
            m_state = State::Symbols;
            return buildFixed();
        case 2:
            m_state = State::Symbols;
            return readCodes();
        default:
            return Error{ErrorCode::Corrupt, "deflate64: block type"};
        }
    }

    Result<void> readStoredHeader()
    {
        m_bits.skipToByte();
        m_storedLeft = TRY(m_bits.read(16));
        const auto inverse = TRY(m_bits.read(16));
        if ((m_storedLeft ^ inverse) != 0xFFFF)
            return Error{ErrorCode::Corrupt, "deflate64: stored length"};
        m_state = State::Stored;
        if (m_storedLeft == 0)
            endBlock();
        return {};
    }

    Result<void> copyStored(SpanWriter& out)
    {
        for (; m_storedLeft > 0 && out.room() > 0; --m_storedLeft)
            m_history.put(static_cast<std::byte>(TRY(m_bits.read(8))), out);
        if (m_storedLeft == 0)
            endBlock();
        return {};
    }

    Result<void> buildFixed()
    {
        std::array<std::byte, kLiterals> lengths;
        std::fill(lengths.begin(), lengths.begin() + 144, std::byte{8});
        std::fill(lengths.begin() + 144, lengths.begin() + 256, std::byte{9});
        std::fill(lengths.begin() + 256, lengths.begin() + 280, std::byte{7});
        std::fill(lengths.begin() + 280, lengths.end(), std::byte{8});
        TRY(m_literals.build(lengths));
        std::fill(lengths.begin(), lengths.begin() + kDistances, std::byte{5});
        return m_distances.build(ConstBytes(lengths).first(kDistances));
    }

    /// The lengths of both codes, packed by a third code with run lengths.
    Result<void> readCodes()
    {
        static constexpr std::array<std::uint8_t, 19> kOrder
            = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
        TRY(m_bits.fill());
        const auto literals = m_bits.take(5) + 257, distances = m_bits.take(5) + 1, used = m_bits.take(4) + 4;
        std::array<std::byte, kOrder.size()> packLengths{};
        for (unsigned i = 0; i < used; ++i)
            packLengths[kOrder[i]] = static_cast<std::byte>(TRY(m_bits.read(3)));
        TRY(m_literals.build(packLengths));
        std::array<std::byte, kLiterals + kDistances> lengths{};
        const auto total = literals + distances;
        for (unsigned at = 0; at < total;) {
            TRY(m_bits.fill());
            const auto symbol = m_literals.decode(m_bits);
            if (symbol < 0 || (symbol == 16 && at == 0))
                return Error{ErrorCode::Corrupt, "deflate64: code lengths"};
            unsigned run = 1;
            auto value = static_cast<std::byte>(symbol);
            if (symbol >= 16) {
                run = symbol == 16 ? 3 + m_bits.take(2) : symbol == 17 ? 3 + m_bits.take(3) : 11 + m_bits.take(7);
                value = symbol == 16 ? lengths[at - 1] : std::byte{0};
            }
            if (run > total - at)
                return Error{ErrorCode::Corrupt, "deflate64: code lengths"};
            std::fill_n(lengths.begin() + at, run, value);
            at += run;
        }
        TRY(m_bits.check());
        TRY(m_literals.build(ConstBytes(lengths).first(literals)));
        return m_distances.build(ConstBytes(lengths).subspan(literals, distances));
    }

    Result<void> decodeSymbols(SpanWriter& out)
    {
        while (out.room() > 0) {
            if (m_history.isCopying()) {
                m_history.copy(out);
                continue;
            }
            TRY(m_bits.fill());
            const auto symbol = m_literals.decode(m_bits);
            if (symbol >= 0 && symbol < static_cast<int>(kEndOfBlock)) {
                m_history.put(static_cast<std::byte>(symbol), out);
                continue;
            }
            if (symbol == static_cast<int>(kEndOfBlock)) {
                endBlock();
                return {};
            }
            TRY(startMatch(symbol));
        }
        return {};
    }

    Result<void> startMatch(int symbol)
    {
        const auto index = static_cast<std::size_t>(symbol) - 257;
        if (symbol < 0 || index >= kLengths.size())
            return Error{ErrorCode::Corrupt, "deflate64: length code"};
        const auto length = kLengths[index].base + m_bits.take(kLengths[index].extraBits);
        TRY(m_bits.fill());
        const auto distanceSymbol = m_distances.decode(m_bits);
        if (distanceSymbol < 0)
            return Error{ErrorCode::Corrupt, "deflate64: distance code"};
        const auto& range = kDistanceRanges[static_cast<std::size_t>(distanceSymbol)];
        const auto distance = range.base + m_bits.take(range.extraBits);
        if (distance > m_history.length())
            return Error{ErrorCode::Corrupt, "deflate64: distance before the start"};
        m_history.startMatch(distance, length);
        return {};
    }

    LsbBits m_bits;
    LsbPrefixCode m_literals, m_distances;
    LzHistory<1 << 17> m_history; // distances reach 81920 in theory
    State m_state = State::Header;
    bool m_isLast = false;
    std::uint32_t m_storedLeft = 0;
};

}

StreamPtr openDeflate64(StreamPtr packed, const CodecParams& params)
{
    return std::make_unique<Deflate64Decoder>(std::move(packed), params);
}

}
