#include "engine/codecs/zstd.h"

#include <zstd.h>
#include <zstd_errors.h>

#include <bit>

namespace vantoro {

namespace {

constexpr std::size_t kInput = 256 << 10;
constexpr int kSmallestWindowLog = 10; // the library's bounds
constexpr int kLargestWindowLog = 31;

Error errorFor(std::size_t status, bool afterFrames)
{
    switch (ZSTD_getErrorCode(status)) {
    case ZSTD_error_memory_allocation:
        return {ErrorCode::OutOfMemory, "zstd: no memory for the window"};
    case ZSTD_error_frameParameter_windowTooLarge:
        return {ErrorCode::LimitExceeded, "zstd: window larger than allowed"};
    case ZSTD_error_checksum_wrong:
        return {ErrorCode::ChecksumMismatch, "zstd: checksum of the content"};
    case ZSTD_error_dictionary_wrong:
        return {ErrorCode::UnsupportedFeature, "zstd: made with a dictionary"};
    case ZSTD_error_version_unsupported:
    case ZSTD_error_frameParameter_unsupported:
        return {ErrorCode::UnsupportedMethod, "zstd: version"};
    case ZSTD_error_prefix_unknown:
        if (afterFrames)
            return {ErrorCode::TrailingData, "zstd: no frame after the end"};
        break;
    default:
        break;
    }
    return {ErrorCode::Corrupt, "zstd: damaged frame"};
}

class ZstdDecoder final : public Decoder {
public:
    ZstdDecoder(StreamPtr packed, const CodecParams& params, ZSTD_DCtx* context)
        : Decoder(params.cancel)
        , m_in(std::move(packed), kInput)
        , m_context(context)
    {
    }
    ~ZstdDecoder() override { ZSTD_freeDCtx(m_context); }

private:
    Result<void> decode(SpanWriter& out) override
    {
        while (out.room() > 0) {
            const auto packed = TRY(m_in.peek());
            if (packed.empty() && m_betweenFrames && m_frames > 0)
                break;
            const auto room = out.free();
            ZSTD_inBuffer from{packed.data(), packed.size(), 0};
            ZSTD_outBuffer to{room.data(), room.size(), 0};
            const auto status = ZSTD_decompressStream(m_context, &to, &from);
            m_in.consume(from.pos);
            out.advance(to.pos);
            if (ZSTD_isError(status))
                return errorFor(status, m_betweenFrames && m_frames > 0);
            if (packed.empty() && to.pos == 0)
                return Error{ErrorCode::Truncated, "zstd: the input ends inside a frame"};
            m_betweenFrames = status == 0;
            if (m_betweenFrames) {
                ++m_frames;
                markVerified(out);
            }
        }
        return {};
    }

    BufferedInput m_in;
    ZSTD_DCtx* m_context;
    std::uint64_t m_frames = 0;
    bool m_betweenFrames = true;
};

}

Result<StreamPtr> openZstd(StreamPtr packed, const CodecParams& params)
{
    auto* context = ZSTD_createDCtx();
    if (!context)
        return Error{ErrorCode::OutOfMemory, "zstd: decoder"};
    const auto windowLog = static_cast<int>(std::bit_width(params.limits.dictionary)) - 1;
    ZSTD_DCtx_setParameter(context, ZSTD_d_windowLogMax, std::clamp(windowLog, kSmallestWindowLog, kLargestWindowLog));
    return StreamPtr(std::make_unique<ZstdDecoder>(std::move(packed), params, context));
}

}
