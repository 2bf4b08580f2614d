#include "engine/codecs/lzma_streams.h"

#include "engine/codecs/lzma2_decoder.h"
#include "engine/codecs/lzma2_parallel.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::size_t kInput = 64 << 10;
constexpr Error kTruncated{ErrorCode::Truncated, "lzma: the input ends too early"};
constexpr Error kCorrupt{ErrorCode::Corrupt, "lzma: damaged data"};

/// The input of LZMA: bytes in one piece, zeros behind the last.
class LzmaInput {
public:
    explicit LzmaInput(StreamPtr stream) : m_stream(std::move(stream)), m_buffer(kInput + LzmaDecoder::kMargin) {}

    /// Sees to it that a whole symbol is there, unless the input ends.
    Result<void> fill()
    {
        if (m_hasEnded || m_end - m_begin >= LzmaDecoder::kMargin)
            return {};
        std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
        m_end -= m_begin;
        m_begin = 0;
        m_end += TRY(readFully(*m_stream, Bytes(m_buffer).subspan(m_end, kInput - m_end)));
        m_hasEnded = m_end < kInput;
        std::fill(m_buffer.begin() + static_cast<std::ptrdiff_t>(m_end), m_buffer.end(), std::byte{0});
        return {};
    }
    /// Where a symbol may begin: all of it is there. At the end of the input one symbol at a time is tried.
    ConstBytes starts() const
    {
        const auto there = m_end - m_begin;
        return ConstBytes(m_buffer).subspan(m_begin, there - std::min(there, LzmaDecoder::kMargin));
    }
    ConstBytes rest() const { return ConstBytes(m_buffer).subspan(m_begin, m_end - m_begin); }
    /// False when they are not there.
    bool consume(std::size_t count)
    {
        const bool isThere = count <= m_end - m_begin;
        m_begin += std::min(count, m_end - m_begin);
        return isThere;
    }

private:
    StreamPtr m_stream;
    std::vector<std::byte> m_buffer;
    std::size_t m_begin = 0, m_end = 0;
    bool m_hasEnded = false;
};

class Lzma1Stream final : public Decoder {
public:
    Lzma1Stream(StreamPtr packed, const LzmaDecoder::Properties& properties, LzmaWindow window,
                std::optional<std::uint64_t> size, const CodecParams& params)
        : Decoder(params.cancel)
        , m_in(std::move(packed))
        , m_window(std::move(window))
        , m_left(size)
    {
        m_lzma.setProperties(properties);
        m_lzma.reset();
    }

private:
    Result<void> decode(SpanWriter& out) override
    {
        if (!m_hasBegun)
            TRY(begin());
        while (out.room() > 0 && !m_hasEnded) {
            TRY(m_in.fill());
            m_window.wrap();
            if (m_left == std::uint64_t{0})
                TRY(end());
            else
                TRY(decodeSome(out));
        }
        return {};
    }

    Result<void> begin()
    {
        TRY(m_in.fill());
        const auto rest = m_in.rest();
        if (rest.size() < LzmaDecoder::kFirstBytes)
            return kTruncated;
        if (!m_lzma.begin(rest.first(LzmaDecoder::kFirstBytes)))
            return kCorrupt;
        m_in.consume(LzmaDecoder::kFirstBytes);
        m_hasBegun = true;
        return {};
    }

    Result<void> decodeSome(SpanWriter& out)
    {
        auto most = std::min(out.room(), m_window.room());
        most = static_cast<std::size_t>(std::min<std::uint64_t>(most, m_left.value_or(most)));
        const auto from = m_window.position();
        const auto progress = m_lzma.decode(m_in.starts(), m_window, most);
        if (!m_in.consume(progress.consumed))
            return kTruncated; // the last symbol was cut: what it gave is not handed out
        const auto fresh = m_window.bytes(from, m_window.position());
        out.put(fresh);
        if (m_left)
            *m_left -= fresh.size();
        if (progress.stop == LzmaDecoder::Stop::Corrupt || (progress.stop == LzmaDecoder::Stop::EndMark && m_left))
            return kCorrupt;
        return progress.stop == LzmaDecoder::Stop::EndMark ? endEven() : Result<void>();
    }

    /// All data are out; an end mark may follow.
    Result<void> end()
    {
        if (m_lzma.isInMatch())
            return kCorrupt;
        std::size_t last = 0;
        const bool isEven = m_lzma.endsEven(m_in.rest(), last);
        if (!m_in.consume(last))
            return kTruncated;
        if (!isEven) {
            TRY(m_in.fill());
            const auto progress = m_lzma.decode({m_in.rest().data(), 0}, m_window, 1);
            if (!m_in.consume(progress.consumed))
                return kTruncated;
            if (progress.stop != LzmaDecoder::Stop::EndMark)
                return kCorrupt;
            return endEven();
        }
        m_hasEnded = true;
        return {};
    }

    Result<void> endEven()
    {
        TRY(m_in.fill());
        std::size_t last = 0;
        const bool isEven = m_lzma.endsEven(m_in.rest(), last);
        if (!m_in.consume(last))
            return kTruncated;
        m_hasEnded = true;
        return isEven ? Result<void>() : kCorrupt;
    }

    LzmaInput m_in;
    LzmaDecoder m_lzma;
    LzmaWindow m_window;
    std::optional<std::uint64_t> m_left; ///< of the data
    bool m_hasBegun = false, m_hasEnded = false;
};

class Lzma2Stream final : public Decoder {
public:
    Lzma2Stream(StreamPtr packed, LzmaWindow window, const CodecParams& params)
        : Decoder(params.cancel)
        , m_in(std::move(packed))
        , m_window(std::move(window))
    {
    }

private:
    Result<void> decode(SpanWriter& out) override
    {
        while (out.room() > 0 && !m_hasEnded) {
            const auto more = m_lzma2.step(out.room());
            out.put(m_lzma2.fresh());
            m_hasEnded = !TRY(more);
        }
        return {};
    }

    PackedStream m_in;
    LzmaWindow m_window;
    Lzma2Decoder m_lzma2{m_in, m_window};
    bool m_hasEnded = false;
};

}

Result<void> checkLzmaDictionary(std::uint64_t dictionary, const Limits& limits)
{
    if (dictionary > limits.dictionary)
        return Error{ErrorCode::LimitExceeded, "lzma: dictionary larger than allowed", 0, dictionary};
    return {};
}

Result<StreamPtr> openLzma1(StreamPtr packed, ConstBytes properties, std::optional<std::uint64_t> size,
                            const CodecParams& params)
{
    ByteReader in(properties);
    const auto model = LzmaDecoder::Properties::parse(in.u8());
    const auto dictionary = in.le32();
    if (!in.ok() || !model)
        return Error{ErrorCode::Corrupt, "lzma: properties"};
    TRY(checkLzmaDictionary(dictionary, params.limits));
    // No match reaches farther back than to the first byte.
    auto window = TRY(LzmaWindow::ring(std::min<std::uint64_t>(dictionary, size.value_or(dictionary))));
    return StreamPtr(std::make_unique<Lzma1Stream>(std::move(packed), *model, std::move(window), size, params));
}

Result<StreamPtr> openLzma2(StreamPtr packed, ConstBytes properties, const CodecParams& params)
{
    const auto dictionary
        = properties.size() == 1 ? lzma2Dictionary(std::to_integer<std::uint8_t>(properties[0])) : std::nullopt;
    if (!dictionary)
        return Error{ErrorCode::UnsupportedMethod, "lzma2: properties"};
    TRY(checkLzmaDictionary(*dictionary, params.limits));
    return openLzma2Parts(std::move(packed), *dictionary, params);
}

Result<StreamPtr> openLzma2Serial(StreamPtr packed, std::uint64_t dictionary, const CodecParams& params)
{
    auto window = TRY(LzmaWindow::ring(dictionary));
    return StreamPtr(std::make_unique<Lzma2Stream>(std::move(packed), std::move(window), params));
}

}
