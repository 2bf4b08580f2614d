#include "engine/codecs/implode.h"

#include "engine/codecs/lsb_prefix_code.h"
#include "engine/codecs/lz_history.h"

namespace vantoro {

namespace {

constexpr std::size_t kLiterals = 256, kLengths = 64, kDistances = 64;
constexpr std::uint32_t kInverted = 0xFFFF; // codes are stored with all bits inverted
constexpr unsigned kLongLength = 63;

class ImplodeDecoder final : public Decoder {
public:
    ImplodeDecoder(StreamPtr packed, const ImplodeParams& implode, const CodecParams& params)
        : Decoder(params.cancel)
        , m_bits(std::move(packed))
        , m_params(implode)
        , m_left(implode.size)
    {
    }

private:
    Result<void> decode(SpanWriter& out) override
    {
        const auto result = decodeTokens(out);
        TRY(m_bits.check()); // zeros behind the end may have looked like damage
        return result;
    }

    Result<void> decodeTokens(SpanWriter& out)
    {
        if (!m_hasTrees)
            TRY(readTrees());
        while (out.room() > 0 && m_left > 0) {
            const auto before = out.used();
            if (m_history.isCopying())
                m_history.copy(out);
            else
                TRY(step(out));
            TRY(m_bits.check());
            m_left -= out.used() - before;
        }
        return {};
    }

    Result<void> readTrees()
    {
        m_hasTrees = true;
        if (m_params.hasLiteralTree)
            TRY(readTree(m_literals, kLiterals));
        TRY(readTree(m_lengths, kLengths));
        TRY(readTree(m_distances, kDistances));
        return m_bits.check();
    }

    /// Runs of symbols with one code length: u8 count - 1, then u8s with length - 1 below and count - 1 above.
    Result<void> readTree(LsbPrefixCode& tree, std::size_t symbols)
    {
        std::array<std::byte, kLiterals> lengths{};
        std::size_t at = 0;
        for (auto left = TRY(m_bits.read(8)) + 1; left > 0; --left) {
            const auto run = TRY(m_bits.read(8));
            const auto count = (run >> 4) + 1;
            if (count > symbols - at)
                return Error{ErrorCode::Corrupt, "implode: tree"};
            std::fill_n(lengths.begin() + static_cast<std::ptrdiff_t>(at), count,
                        static_cast<std::byte>((run & 15) + 1));
            at += count;
        }
        if (at != symbols)
            return Error{ErrorCode::Corrupt, "implode: tree"};
        return tree.build(ConstBytes(lengths).first(symbols));
    }

    Result<void> step(SpanWriter& out)
    {
        TRY(m_bits.fill());
        if (m_bits.take(1) != 0) {
            const auto literal
                = m_params.hasLiteralTree ? m_literals.decode(m_bits, kInverted) : static_cast<int>(m_bits.take(8));
            if (literal < 0)
                return Error{ErrorCode::Corrupt, "implode: literal"};
            m_history.put(static_cast<std::byte>(literal), out);
            return {};
        }
        const unsigned lowBits = m_params.hasLargeWindow ? 7 : 6;
        const auto low = m_bits.take(lowBits);
        const auto high = m_distances.decode(m_bits, kInverted);
        TRY(m_bits.fill());
        const auto symbol = m_lengths.decode(m_bits, kInverted);
        if (high < 0 || symbol < 0)
            return Error{ErrorCode::Corrupt, "implode: match"};
        auto length = static_cast<unsigned>(symbol);
        if (length == kLongLength)
            length += m_bits.take(8);
        const auto distance = (static_cast<unsigned>(high) << lowBits) + low + 1;
        m_history.startMatch(distance,
                             static_cast<std::size_t>(std::min<std::uint64_t>(length + m_params.leastMatch, m_left)));
        return {};
    }

    LsbBits m_bits;
    ImplodeParams m_params;
    std::uint64_t m_left;
    LsbPrefixCode m_literals, m_lengths, m_distances;
    LzHistory<8192> m_history;
    bool m_hasTrees = false;
};

}

StreamPtr openImplode(StreamPtr packed, const ImplodeParams& implode, const CodecParams& params)
{
    return std::make_unique<ImplodeDecoder>(std::move(packed), implode, params);
}

}
