#include "engine/codecs/liblzma.h"

namespace vantoro {

namespace {
constexpr std::size_t kInput = 128 << 10;
constexpr std::uint64_t kMemoryBesideDictionary = 16 << 20;
}

LibLzmaDecoder::LibLzmaDecoder(StreamPtr packed, const CodecParams& params)
    : Decoder(params.cancel)
    , m_in(std::move(packed), kInput)
    , m_memoryLimit(params.limits.dictionary + kMemoryBesideDictionary)
{
}

Result<void> LibLzmaDecoder::decode(SpanWriter& out)
{
    while (out.room() > 0 && m_state != State::End) {
        if (m_state == State::Between) {
            TRY(begin(m_lzma));
            m_state = State::Inside;
        }
        TRY(step(out));
    }
    return {};
}

Result<void> LibLzmaDecoder::step(SpanWriter& out)
{
    const auto packed = TRY(m_in.peek());
    const auto code = runLzma(m_lzma, packed, out);
    m_in.consume(packed.size() - m_lzma.avail_in);
    decoded(out);
    if (code == LZMA_STREAM_END) {
        m_state = TRY(finished(m_in, out)) ? State::Between : State::End;
        return {};
    }
    if (code == LZMA_OK)
        return {};
    auto error = lzmaError(code);
    if (code == LZMA_MEMLIMIT_ERROR)
        error.wanted = lzma_memusage(&m_lzma);
    return error;
}

lzma_ret runLzma(lzma_stream& lzma, ConstBytes packed, SpanWriter& out)
{
    const auto room = out.free();
    lzma.next_in = reinterpret_cast<const std::uint8_t*>(packed.data());
    lzma.avail_in = packed.size();
    lzma.next_out = reinterpret_cast<std::uint8_t*>(room.data());
    lzma.avail_out = room.size();
    const auto code = lzma_code(&lzma, packed.empty() ? LZMA_FINISH : LZMA_RUN);
    out.advance(room.size() - lzma.avail_out);
    return code;
}

Error lzmaError(lzma_ret code)
{
    switch (code) {
    case LZMA_BUF_ERROR:
        return {ErrorCode::Truncated, "lzma: the input ends too early"};
    case LZMA_MEM_ERROR:
        return {ErrorCode::OutOfMemory, "lzma: no memory for the dictionary"};
    case LZMA_MEMLIMIT_ERROR:
        return {ErrorCode::LimitExceeded, "lzma: dictionary larger than allowed"};
    case LZMA_OPTIONS_ERROR:
        return {ErrorCode::UnsupportedMethod, "lzma: unknown filter or option"};
    case LZMA_FORMAT_ERROR:
        return {ErrorCode::Corrupt, "lzma: signature or header"};
    case LZMA_DATA_ERROR:
        return {ErrorCode::Corrupt, "lzma: damaged data or wrong checksum"};
    default:
        return {ErrorCode::Internal, "lzma: unexpected state of the library"};
    }
}

}
