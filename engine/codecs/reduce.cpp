#include "engine/codecs/reduce.h"

#include "engine/codecs/lsb_bits.h"
#include "engine/codecs/lz_history.h"

#include <bit>

namespace vantoro {

namespace {

constexpr unsigned kMarker = 144;

/// The bytes that often follow another one.
struct Followers {
    std::array<std::uint8_t, 32> bytes{};
    unsigned count = 0;
    unsigned indexBits() const { return count <= 2 ? 1 : static_cast<unsigned>(std::bit_width(count - 1)); }
};

class ReduceDecoder final : public Decoder {
public:
    ReduceDecoder(StreamPtr packed, unsigned factor, std::uint64_t size, const CodecParams& params)
        : Decoder(params.cancel)
        , m_bits(std::move(packed))
        , m_lengthBits(8 - factor)
        , m_left(size)
    {
    }

private:
    Result<void> decode(SpanWriter& out) override
    {
        if (!m_hasFollowers)
            TRY(readFollowers());
        while (out.room() > 0 && m_left > 0) {
            const auto before = out.used();
            if (m_history.isCopying()) {
                m_history.copy(out);
            } else {
                const auto byte = TRY(nextByte());
                TRY(step(byte, out));
            }
            TRY(m_bits.check());
            m_left -= std::min<std::uint64_t>(m_left, out.used() - before);
        }
        return {};
    }

    Result<void> readFollowers()
    {
        m_hasFollowers = true;
        for (unsigned i = 256; i-- > 0;) {
            auto& set = m_followers[i];
            set.count = TRY(m_bits.read(6));
            if (set.count > set.bytes.size())
                return Error{ErrorCode::Corrupt, "reduce: number of followers"};
            for (unsigned k = 0; k < set.count; ++k)
                set.bytes[k] = static_cast<std::uint8_t>(TRY(m_bits.read(8)));
        }
        return m_bits.check();
    }

    Result<unsigned> nextByte()
    {
        TRY(m_bits.fill());
        const auto& set = m_followers[m_lastByte];
        if (set.count == 0 || m_bits.take(1) != 0) {
            m_lastByte = m_bits.take(8);
        } else {
            const auto index = m_bits.take(set.indexBits());
            if (index >= set.count)
                return Error{ErrorCode::Corrupt, "reduce: follower"};
            m_lastByte = set.bytes[index];
        }
        return m_lastByte;
    }

    enum class State : std::uint8_t { Plain, Code, MoreLength, Distance };

    Result<void> step(unsigned byte, SpanWriter& out)
    {
        const unsigned mask = (1U << m_lengthBits) - 1;
        switch (m_state) {
        case State::Plain:
            if (byte == kMarker)
                m_state = State::Code;
            else
                m_history.put(static_cast<std::byte>(byte), out);
            break;
        case State::Code:
            if (byte == 0) {
                m_history.put(std::byte{kMarker}, out);
                m_state = State::Plain;
                break;
            }
            m_code = byte;
            m_length = byte & mask;
            m_state = m_length == mask ? State::MoreLength : State::Distance;
            break;
        case State::MoreLength:
            m_length += byte;
            m_state = State::Distance;
            break;
        case State::Distance: {
            const auto distance = (m_code >> m_lengthBits) * 256 + byte + 1;
            const auto length = std::min<std::uint64_t>(m_length + 3, m_left);
            m_history.startMatch(distance, static_cast<std::size_t>(length));
            m_state = State::Plain;
            break;
        }
        }
        return {};
    }

    LsbBits m_bits;
    unsigned m_lengthBits;
    std::uint64_t m_left;
    LzHistory<4096> m_history;
    std::array<Followers, 256> m_followers;
    bool m_hasFollowers = false;
    State m_state = State::Plain;
    unsigned m_lastByte = 0, m_code = 0, m_length = 0;
};

}

StreamPtr openReduce(StreamPtr packed, unsigned factor, std::uint64_t size, const CodecParams& params)
{
    return std::make_unique<ReduceDecoder>(std::move(packed), factor, size, params);
}

}
