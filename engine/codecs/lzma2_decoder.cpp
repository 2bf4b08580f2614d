#include "engine/codecs/lzma2_decoder.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr Error kTruncated{ErrorCode::Truncated, "lzma2: the input ends too early"};
constexpr Error kCorrupt{ErrorCode::Corrupt, "lzma2: damaged data"};

constexpr unsigned kMostContextBits = 4; ///< lc + lp

}

Result<ConstBytes> PackedBlock::take(std::size_t count)
{
    if (m_bytes.size() - m_taken < count)
        return kTruncated;
    m_taken += count;
    return m_bytes.subspan(m_taken - count, count);
}

PackedStream::PackedStream(StreamPtr stream)
    : m_in(std::move(stream), 2 * kMostTaken)
    , m_piece(kMostTaken + LzmaDecoder::kMargin)
{
}

Result<ConstBytes> PackedStream::take(std::size_t count)
{
    for (std::size_t done = 0; done < count;) {
        const auto some = TRY(m_in.peek());
        if (some.empty())
            return kTruncated;
        const auto part = std::min(some.size(), count - done);
        std::memcpy(m_piece.data() + done, some.data(), part);
        done += part;
        consume(part);
    }
    return ConstBytes(m_piece).first(count);
}

void PackedStream::consume(std::size_t count)
{
    m_in.consume(count);
    m_taken += count;
}

Result<bool> Lzma2Decoder::step(std::size_t most)
{
    m_window.wrap();
    m_from = m_window.position();
    while (m_left == 0) {
        if (!TRY(nextChunk()))
            return false;
    }
    const auto count = std::min({most, m_left, m_window.room()});
    if (count == 0)
        return Error{ErrorCode::Corrupt, "lzma2: more data than declared"};
    TRY(decode(count));
    m_left -= count;
    if (m_left > 0 || m_isStored)
        return true;
    std::size_t last = 0;
    const bool isEven = m_lzma.endsEven(m_chunk, last);
    if (!isEven || m_chunk.size() != last || m_lzma.isInMatch())
        return kCorrupt;
    return true;
}

Result<void> Lzma2Decoder::decode(std::size_t count)
{
    if (m_isStored) {
        for (std::size_t done = 0; done < count;) {
            const auto piece = TRY(m_packed.take(std::min(count - done, PackedBytes::kMostTaken)));
            m_window.append(piece);
            done += piece.size();
        }
        return {};
    }
    const auto progress = m_lzma.decode(m_chunk, m_window, count);
    if (progress.stop != LzmaDecoder::Stop::Full || progress.consumed > m_chunk.size())
        return kCorrupt;
    m_chunk = m_chunk.subspan(progress.consumed);
    return {};
}

Lzma2Control::Sizes Lzma2Control::sizes(ConstBytes header) const
{
    ByteReader in(header);
    const std::size_t first = in.be16();
    if (!isLzma())
        return {first + 1, first + 1};
    const std::size_t packed = in.be16();
    return {(std::size_t{value & 0x1FU} << 16) + first + 1, packed + 1};
}

Result<bool> Lzma2Decoder::nextChunk()
{
    const Lzma2Control control(TRY(m_packed.take(1)).front());
    if (control.isEnd())
        return false;
    if (control.beginsDictionary()) {
        m_window.forget();
        m_needsDictionary = false;
        m_needsProperties = true;
    }
    if (m_needsDictionary || !control.isValid())
        return kCorrupt;
    const auto header = TRY(m_packed.take(control.headerSize()));
    const auto sizes = control.sizes(header);
    m_isStored = !control.isLzma();
    if (control.isLzma())
        TRY(beginLzma(control, header, sizes.packed));
    m_left = sizes.decoded;
    return true;
}

Result<void> Lzma2Decoder::beginLzma(const Lzma2Control& control, ConstBytes header, std::size_t packedSize)
{
    if (control.hasProperties()) {
        const auto properties = LzmaDecoder::Properties::parse(std::to_integer<std::uint8_t>(header.back()));
        if (!properties || properties->literalContext + properties->literalPosition > kMostContextBits)
            return kCorrupt;
        m_lzma.setProperties(*properties);
        m_needsProperties = false;
    }
    if (m_needsProperties || packedSize < LzmaDecoder::kFirstBytes)
        return kCorrupt;
    if (control.forgetsModel())
        m_lzma.reset();
    const auto chunk = TRY(m_packed.take(packedSize));
    if (!m_lzma.begin(chunk.first(LzmaDecoder::kFirstBytes)))
        return kCorrupt;
    m_chunk = chunk.subspan(LzmaDecoder::kFirstBytes);
    return {};
}

std::optional<std::uint64_t> lzma2Dictionary(std::uint8_t property)
{
    if (property > 40)
        return std::nullopt;
    if (property == 40)
        return 0xFFFFFFFF;
    return std::uint64_t{2U | (property & 1U)} << (property / 2 + 11);
}

}
