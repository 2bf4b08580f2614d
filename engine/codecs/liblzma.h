#pragma once

#include "engine/codecs/codec.h"

#include <lzma.h>

namespace vantoro {

/// Runs one of liblzma's decoders over a stream. Private to the codecs: its header shows the library.
class LibLzmaDecoder : public Decoder {
public:
    ~LibLzmaDecoder() override { lzma_end(&m_lzma); }

protected:
    LibLzmaDecoder(StreamPtr packed, const CodecParams& params);
    Result<void> decode(SpanWriter& out) override;
    /// Sets `lzma` up for the first or the next member.
    virtual Result<void> begin(lzma_stream& lzma) = 0;
    /// A member has ended, its checks held. True when another one follows.
    virtual Result<bool> finished(BufferedInput& in, SpanWriter& out) = 0;
    /// Output has grown.
    virtual void decoded(const SpanWriter&) {}

    /// What the decoder may allocate for the dictionary that the limits allow.
    std::uint64_t memoryLimit() const { return m_memoryLimit; }

private:
    Result<void> step(SpanWriter& out);

    BufferedInput m_in;
    lzma_stream m_lzma = LZMA_STREAM_INIT;
    std::uint64_t m_memoryLimit;
    enum class State : std::uint8_t { Between, Inside, End };
    State m_state = State::Between;
};

/// Decodes from `packed`, which is empty at the end, to `out`; lzma.avail_in bytes are left over.
lzma_ret runLzma(lzma_stream& lzma, ConstBytes packed, SpanWriter& out);
/// What a return code that is not a success means.
Error lzmaError(lzma_ret code);

}
