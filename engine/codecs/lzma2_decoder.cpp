#include "engine/codecs/lzma2_decoder.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr Error kTruncated{ErrorCode::Truncated, "lzma2: the input ends too early"};
constexpr Error kCorrupt{ErrorCode::Corrupt, "lzma2: damaged data"};

// Control bytes.
constexpr std::uint8_t kEnd = 0x00;
constexpr std::uint8_t kStoredNewDictionary = 0x01;
constexpr std::uint8_t kStored = 0x02;
constexpr std::uint8_t kLzma = 0x80; ///< and more: how much is forgotten; the lowest five bits belong to the size
constexpr std::uint8_t kLzmaNewState = 0xA0;
constexpr std::uint8_t kLzmaNewProperties = 0xC0;
constexpr std::uint8_t kLzmaNewDictionary = 0xE0;
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

Result<bool> Lzma2Decoder::nextChunk()
{
    const auto control = std::to_integer<std::uint8_t>(TRY(m_packed.take(1)).front());
    if (control == kEnd)
        return false;
    if (control == kStoredNewDictionary || control >= kLzmaNewDictionary) {
        m_window.forget();
        m_needsDictionary = false;
        m_needsProperties = true;
    } else if (m_needsDictionary) {
        return kCorrupt;
    }
    m_isStored = control < kLzma;
    if (control >= kLzma) {
        TRY(beginLzma(control));
    } else if (control <= kStored) {
        m_left = std::size_t{ByteReader(TRY(m_packed.take(2))).be16()} + 1;
    } else {
        return kCorrupt;
    }
    return true;
}

Result<void> Lzma2Decoder::beginLzma(std::uint8_t control)
{
    ByteReader sizes(TRY(m_packed.take(4)));
    const auto size = (std::size_t{control & 0x1FU} << 16) + sizes.be16() + 1;
    const auto packedSize = std::size_t{sizes.be16()} + 1;
    if (control >= kLzmaNewProperties) {
        const auto value = std::to_integer<std::uint8_t>(TRY(m_packed.take(1)).front());
        const auto properties = LzmaDecoder::Properties::parse(value);
        if (!properties || properties->literalContext + properties->literalPosition > kMostContextBits)
            return kCorrupt;
        m_lzma.setProperties(*properties);
        m_needsProperties = false;
    }
    if (m_needsProperties)
        return kCorrupt;
    if (control >= kLzmaNewState)
        m_lzma.reset();
    if (packedSize < LzmaDecoder::kFirstBytes)
        return kCorrupt;
    const auto chunk = TRY(m_packed.take(packedSize));
    if (!m_lzma.begin(chunk.first(LzmaDecoder::kFirstBytes)))
        return kCorrupt;
    m_chunk = chunk.subspan(LzmaDecoder::kFirstBytes);
    m_left = size;
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
