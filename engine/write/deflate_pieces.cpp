#include "engine/write/deflate_pieces.h"

#include <algorithm>
#include <array>

namespace vantoro {

namespace {

constexpr Error kBad{ErrorCode::Internal, "deflate: the library's stream cannot be followed"};
constexpr unsigned kLongestCode = 15;
constexpr unsigned kEndOfBlock = 256;

/// Bits from the least significant one on.
class Bits {
public:
    explicit Bits(ConstBytes bytes) : m_bytes(bytes) {}
    std::size_t position() const { return m_position; }
    bool isPastEnd() const { return m_position > m_bytes.size() * 8; }
    /// The next 32 bits or more, zeros behind the end.
    std::uint64_t peek() const
    {
        const auto byte = m_position / 8;
        std::uint64_t value = 0;
        if (byte + 8 <= m_bytes.size())
            std::memcpy(&value, m_bytes.data() + byte, 8); // little-endian hosts: see the static_assert below
        else if (byte < m_bytes.size())
            std::memcpy(&value, m_bytes.data() + byte, m_bytes.size() - byte);
        return value >> (m_position % 8);
    }
    void skip(std::size_t count) { m_position += count; }
    unsigned take(unsigned count)
    {
        const auto value = static_cast<unsigned>(peek() & ((std::uint64_t{1} << count) - 1));
        skip(count);
        return value;
    }
    void toByte() { m_position = (m_position + 7) / 8 * 8; }

private:
    ConstBytes m_bytes;
    std::size_t m_position = 0;
};
static_assert(std::endian::native == std::endian::little);

/// A prefix code that knows of each symbol only how many bits it takes with its extra bits, and whether it matters.
class LengthTable {
public:
    struct Step {
        std::uint8_t codeLength = 0;
        std::uint8_t extraBits = 0;
        std::uint16_t symbol = 0;
    };
    template <class ExtraBits> bool build(std::span<const std::uint8_t> lengths, ExtraBits extraBits)
    {
        std::array<unsigned, kLongestCode + 2> count{};
        for (const auto length : lengths)
            ++count[length];
        count[0] = 0;
        m_bits = kLongestCode;
        while (m_bits > 1 && count[m_bits] == 0)
            --m_bits;
        std::array<unsigned, kLongestCode + 2> next{};
        for (unsigned length = 1; length <= kLongestCode; ++length)
            next[length + 1] = (next[length] + count[length]) << 1;
        m_steps.assign(std::size_t{1} << m_bits, {});
        for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
            const unsigned length = lengths[symbol];
            if (length == 0)
                continue;
            const unsigned code = next[length]++;
            if (code >> length != 0)
                return false;
            const Step step{static_cast<std::uint8_t>(length),
                            static_cast<std::uint8_t>(extraBits(static_cast<unsigned>(symbol))),
                            static_cast<std::uint16_t>(symbol)};
            for (std::size_t at = reversed(code, length); at < m_steps.size(); at += std::size_t{1} << length)
                m_steps[at] = step;
        }
        return true;
    }
    const Step& step(std::uint64_t bits) const { return m_steps[bits & (m_steps.size() - 1)]; }

private:
    static unsigned reversed(unsigned code, unsigned length)
    {
        unsigned result = 0;
        for (unsigned i = 0; i < length; ++i)
            result |= (code >> i & 1) << (length - 1 - i);
        return result;
    }
    unsigned m_bits = 0;
    std::vector<Step> m_steps;
};

unsigned literalExtraBits(unsigned symbol)
{
    if (symbol < 265 || symbol == 285)
        return 0;
    return (symbol - 261) / 4;
}
unsigned distanceExtraBits(unsigned symbol) { return symbol < 4 ? 0 : symbol / 2 - 1; }

/// Walks the blocks of a stream without decoding it.
class Walker {
public:
    explicit Walker(ConstBytes stream) : m_in(stream), m_size(stream.size()) {}

    /// Position in bits of the last block's header, and of what follows the stream.
    Result<std::pair<std::size_t, std::size_t>> findLastBlock()
    {
        while (true) {
            const auto header = m_in.position();
            const bool isLast = m_in.take(1) != 0;
            TRY(skipBlock(m_in.take(2)));
            if (m_in.isPastEnd())
                return kBad;
            if (isLast)
                return std::pair(header, m_in.position());
        }
    }

private:
    Result<void> skipBlock(unsigned type)
    {
        switch (type) {
        case 0:
            return skipStored();
        case 1:
            TRY(useFixedCodes());
            break;
        case 2:
            TRY(readCodes());
            break;
        default:
            return kBad;
        }
        return skipSymbols();
    }

    Result<void> skipStored()
    {
        m_in.toByte();
        const auto length = m_in.take(16);
        m_in.skip(16 + std::size_t{length} * 8);
        return {};
    }

    Result<void> useFixedCodes()
    {
        std::array<std::uint8_t, 288> literals;
        for (std::size_t i = 0; i < literals.size(); ++i)
            literals[i] = i < 144 ? 8 : i < 256 ? 9 : i < 280 ? 7 : 8;
        std::array<std::uint8_t, 30> distances;
        distances.fill(5);
        return m_literals.build(literals, literalExtraBits) && m_distances.build(distances, distanceExtraBits)
            ? Result<void>()
            : kBad;
    }

    Result<void> readCodes()
    {
        constexpr std::array<std::uint8_t, 19> kOrder
            = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
        const auto literals = 257 + m_in.take(5);
        const auto distances = 1 + m_in.take(5);
        const auto count = 4 + m_in.take(4);
        std::array<std::uint8_t, 19> own{};
        for (unsigned i = 0; i < count; ++i)
            own[kOrder[i]] = static_cast<std::uint8_t>(m_in.take(3));
        LengthTable code;
        if (!code.build(own, [](unsigned) { return 0; }))
            return kBad;
        std::vector<std::uint8_t> lengths;
        while (lengths.size() < literals + distances) {
            const auto& step = code.step(m_in.peek());
            if (step.codeLength == 0)
                return kBad;
            m_in.skip(step.codeLength);
            TRY(repeat(lengths, step.symbol));
        }
        lengths.resize(literals + distances);
        const std::span<const std::uint8_t> all(lengths);
        return m_literals.build(all.first(literals), literalExtraBits)
                && m_distances.build(all.subspan(literals), distanceExtraBits)
            ? Result<void>()
            : kBad;
    }

    Result<void> repeat(std::vector<std::uint8_t>& lengths, unsigned symbol)
    {
        if (symbol < 16)
            lengths.push_back(static_cast<std::uint8_t>(symbol));
        else if (symbol == 16 && lengths.empty())
            return kBad;
        else if (symbol == 16)
            lengths.insert(lengths.end(), 3 + m_in.take(2), lengths.back());
        else
            lengths.insert(lengths.end(), symbol == 17 ? 3 + m_in.take(3) : 11 + m_in.take(7), 0);
        return {};
    }

    Result<void> skipSymbols()
    {
        while (m_in.position() < m_size * 8) {
            const auto& step = m_literals.step(m_in.peek());
            if (step.codeLength == 0)
                return kBad;
            m_in.skip(std::size_t{step.codeLength} + step.extraBits);
            if (step.symbol < kEndOfBlock)
                continue;
            if (step.symbol == kEndOfBlock)
                return {};
            const auto& distance = m_distances.step(m_in.peek());
            if (distance.codeLength == 0)
                return kBad;
            m_in.skip(std::size_t{distance.codeLength} + distance.extraBits);
        }
        return kBad;
    }

    Bits m_in;
    std::size_t m_size;
    LengthTable m_literals, m_distances;
};

}

Result<void> makeFrontPiece(std::vector<std::byte>& stream)
{
    const auto [header, end] = TRY(Walker(stream).findLastBlock());
    stream[header / 8] &= ~(std::byte{1} << (header % 8));
    // Behind the end: three zero bits (not last, stored), zeros to the byte border, length 0 and its complement.
    stream.resize((end + 7) / 8);
    if (end % 8 == 0 || end % 8 > 5)
        stream.push_back(std::byte{0});
    for (const auto value : {0x00, 0x00, 0xFF, 0xFF})
        stream.push_back(static_cast<std::byte>(value));
    return {};
}

}
