#include "engine/codecs/lzip.h"

#include "engine/codecs/liblzma.h"

namespace vantoro {

namespace {

class LzipDecoder final : public LibLzmaDecoder {
public:
    LzipDecoder(StreamPtr packed, const CodecParams& params) : LibLzmaDecoder(std::move(packed), params) {}

private:
    Result<void> begin(lzma_stream& lzma) override
    {
        if (const auto code = lzma_lzip_decoder(&lzma, memoryLimit(), 0); code != LZMA_OK)
            return lzmaError(code);
        return {};
    }
    Result<bool> finished(BufferedInput& in, SpanWriter& out) override
    {
        markVerified(out);
        const auto rest = TRY(in.peek());
        if (rest.empty())
            return false;
        if (rest.front() != std::byte{'L'})
            return Error{ErrorCode::TrailingData, "lzip: no member after the end"};
        return true;
    }
};

}

Result<StreamPtr> openLzip(StreamPtr packed, const CodecParams& params)
{
    return StreamPtr(std::make_unique<LzipDecoder>(std::move(packed), params));
}

}
