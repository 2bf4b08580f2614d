#include "engine/codecs/arj_fastest.h"

#include "engine/codecs/lh_bits.h"

namespace vantoro {

namespace {

constexpr std::size_t kWindow = 32 << 10;

class ArjFastestDecoder final : public Decoder {
public:
    ArjFastestDecoder(StreamPtr packed, std::uint64_t size) : m_bits(std::move(packed)), m_left(size) {}

private:
    Result<void> decode(SpanWriter& out) override
    {
        while (out.room() > 0 && m_left > 0) {
            if (m_copy > 0) {
                --m_copy;
                emit(out, m_history.back(m_distance));
                continue;
            }
            const auto length = TRY(readClassed(0, 7));
            if (length == 0) {
                emit(out, static_cast<std::byte>(TRY(m_bits.take(8))));
                continue;
            }
            m_copy = length + 2;
            m_distance = std::size_t{TRY(readClassed(9, 13))} + 1;
            if (m_distance > m_written)
                return Error{ErrorCode::Corrupt, "arj: distance before the start"};
        }
        return {};
    }

    /// Each 1 bit, up to `last` - `first` of them, moves on to a class twice as wide; then the place within the class.
    Result<std::uint32_t> readClassed(unsigned first, unsigned last)
    {
        std::uint32_t value = 0;
        unsigned width = first;
        while (width < last && TRY(m_bits.take(1)) == 1)
            value += 1U << width++;
        return value + TRY(m_bits.take(width));
    }

    void emit(SpanWriter& out, std::byte value)
    {
        out.put(value);
        m_history.put(value);
        --m_left;
        ++m_written;
    }

    LhBits m_bits;
    std::uint64_t m_left; // bytes still to come
    std::uint64_t m_written = 0;
    LhHistory<kWindow> m_history{std::byte{0}};
    std::uint32_t m_copy = 0; // bytes of a copy still to come
    std::size_t m_distance = 1;
};

}

StreamPtr openArjFastest(StreamPtr packed, std::uint64_t unpackedSize)
{
    return std::make_unique<ArjFastestDecoder>(std::move(packed), unpackedSize);
}

}
