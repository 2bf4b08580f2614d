#include "engine/codecs/deflate.h"

#include "engine/codecs/inflater.h"

namespace vantoro {

namespace {

constexpr std::size_t kInput = 128 << 10;

class DeflateDecoder final : public Decoder {
public:
    DeflateDecoder(StreamPtr packed, const CodecParams& params)
        : Decoder(params.cancel)
        , m_in(std::move(packed), kInput)
        , m_inflater(Inflater::Checksum::None)
    {
    }

private:
    Result<void> decode(SpanWriter& out) override
    {
        if (!m_ended)
            m_ended = TRY(m_inflater.inflate(m_in, out));
        return {};
    }
    BufferedInput m_in;
    Inflater m_inflater;
    bool m_ended = false;
};

class ZlibDecoder final : public Decoder {
public:
    ZlibDecoder(StreamPtr packed, const CodecParams& params)
        : Decoder(params.cancel)
        , m_in(std::move(packed), kInput)
        , m_inflater(Inflater::Checksum::Adler32)
    {
    }

private:
    enum class State : std::uint8_t { Header, Blocks, End };

    Result<void> decode(SpanWriter& out) override
    {
        if (m_state == State::Header)
            TRY(readHeader());
        if (m_state == State::Blocks && TRY(m_inflater.inflate(m_in, out))) {
            TRY(checkTrailer());
            markVerified(out);
        }
        return {};
    }

    Result<void> readHeader()
    {
        const auto method = std::to_integer<unsigned>(TRY(m_in.next()));
        const auto flags = std::to_integer<unsigned>(TRY(m_in.next()));
        if ((method & 0x0F) != 8 || (method >> 4) > 7 || (method * 256 + flags) % 31 != 0)
            return Error{ErrorCode::Corrupt, "zlib: header"};
        if ((flags & 0x20) != 0)
            return Error{ErrorCode::UnsupportedFeature, "zlib: preset dictionary"};
        m_state = State::Blocks;
        return {};
    }

    Result<void> checkTrailer()
    {
        std::uint32_t stored = 0;
        for (int i = 0; i < 4; ++i)
            stored = stored << 8 | std::to_integer<std::uint32_t>(TRY(m_in.next()));
        if (stored != m_inflater.checksum())
            return Error{ErrorCode::ChecksumMismatch, "zlib: Adler-32"};
        m_state = State::End;
        return {};
    }

    BufferedInput m_in;
    Inflater m_inflater;
    State m_state = State::Header;
};

}

Result<StreamPtr> openDeflate(StreamPtr packed, const CodecParams& params)
{
    return StreamPtr(std::make_unique<DeflateDecoder>(std::move(packed), params));
}

Result<StreamPtr> openZlib(StreamPtr packed, const CodecParams& params)
{
    return StreamPtr(std::make_unique<ZlibDecoder>(std::move(packed), params));
}

}
