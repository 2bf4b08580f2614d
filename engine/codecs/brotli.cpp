#include "engine/codecs/brotli.h"

#include <brotli/decode.h>

namespace vantoro {

namespace {

class BrotliDecoder final : public Decoder {
public:
    BrotliDecoder(StreamPtr packed, const CodecParams& params, BrotliDecoderState* state)
        : Decoder(params.cancel)
        , m_in(std::move(packed))
        , m_state(state)
    {
    }
    ~BrotliDecoder() override { BrotliDecoderDestroyInstance(m_state); }

private:
    Result<void> decode(SpanWriter& out) override
    {
        while (out.room() > 0 && !m_ended) {
            const auto packed = TRY(m_in.peek());
            const auto room = out.free();
            std::size_t inLeft = packed.size();
            std::size_t outLeft = room.size();
            const auto* nextIn = reinterpret_cast<const std::uint8_t*>(packed.data());
            auto* nextOut = reinterpret_cast<std::uint8_t*>(room.data());
            const auto status = BrotliDecoderDecompressStream(m_state, &inLeft, &nextIn, &outLeft, &nextOut, nullptr);
            m_in.consume(packed.size() - inLeft);
            out.advance(room.size() - outLeft);
            if (status == BROTLI_DECODER_RESULT_ERROR)
                return fault();
            if (status == BROTLI_DECODER_RESULT_SUCCESS)
                return end();
            if (packed.empty() && outLeft == room.size())
                return Error{ErrorCode::Truncated, "brotli: the input ends too early"};
        }
        return {};
    }

    Result<void> end()
    {
        m_ended = true;
        if (!TRY(m_in.peek()).empty())
            return Error{ErrorCode::TrailingData, "brotli: bytes after the end"};
        return {};
    }

    Error fault() const
    {
        const auto code = BrotliDecoderGetErrorCode(m_state);
        if (code <= BROTLI_DECODER_ERROR_ALLOC_CONTEXT_MODES && code >= BROTLI_DECODER_ERROR_ALLOC_BLOCK_TYPE_TREES)
            return {ErrorCode::OutOfMemory, "brotli: no memory"};
        return {ErrorCode::Corrupt, "brotli: damaged data"};
    }

    BufferedInput m_in;
    BrotliDecoderState* m_state;
    bool m_ended = false;
};

}

Result<StreamPtr> openBrotli(StreamPtr packed, const CodecParams& params)
{
    auto* state = BrotliDecoderCreateInstance(nullptr, nullptr, nullptr);
    if (!state)
        return Error{ErrorCode::OutOfMemory, "brotli: decoder"};
    return StreamPtr(std::make_unique<BrotliDecoder>(std::move(packed), params, state));
}

}
