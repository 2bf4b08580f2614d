#include "engine/codecs/xz.h"

#include "engine/codecs/liblzma.h"
#include "engine/codecs/xz_block.h"
#include "engine/codecs/xz_parallel.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace vantoro {

namespace {

constexpr std::uint64_t kMemoryForIndex = 64 << 20;
constexpr std::uint64_t kLargestSharedBlock = 64 << 20;
constexpr std::uint64_t kMemoryBesideDictionary = 16 << 20;
constexpr Error kTruncated{ErrorCode::Truncated, "xz: the input ends too early"};

/// Block by block as they come; for a stream, or blocks too large to hold.
class XzDecoder final : public Decoder {
public:
    XzDecoder(StreamPtr packed, const CodecParams& params)
        : Decoder(params.cancel)
        , m_in(std::move(packed))
        , m_limits(params.limits)
    {
    }
    ~XzDecoder() override
    {
        lzma_end(&m_library);
        lzma_index_hash_end(m_index, nullptr);
    }

private:
    enum class State : std::uint8_t { Between, InStream, InPlainBlock, InOtherBlock, End };

    Result<void> decode(SpanWriter& out) override
    {
        while (out.room() > 0 && m_state != State::End) {
            switch (m_state) {
            case State::Between:
                TRY(beginStream());
                break;
            case State::InStream:
                TRY(nextBlock());
                break;
            case State::InPlainBlock:
                TRY(decodePlain(out));
                break;
            case State::InOtherBlock:
                TRY(decodeOther(out));
                break;
            case State::End:
                break;
            }
        }
        return {};
    }

    Result<void> beginStream()
    {
        const auto header = TRY(m_in.take(LZMA_STREAM_HEADER_SIZE));
        const auto code = lzma_stream_header_decode(&m_flags, reinterpret_cast<const std::uint8_t*>(header.data()));
        if (code != LZMA_OK)
            return lzmaError(code);
        m_index = lzma_index_hash_init(m_index, nullptr);
        if (!m_index)
            return lzmaError(LZMA_MEM_ERROR);
        m_state = State::InStream;
        return {};
    }

    Result<void> nextBlock()
    {
        const auto next = TRY(m_in.peek());
        if (next.empty())
            return kTruncated;
        if (next.front() == std::byte{0})
            return endStream();
        const auto header = TRY(m_in.take(XzBlockHeader::lengthOf(next.front())));
        m_header = TRY(XzBlockHeader::parse(header, m_flags.check));
        m_blockStart = m_in.taken();
        m_blockSize = 0;
        if (!m_header->isPlain())
            return beginOther();
        TRY(checkLzmaDictionary(m_header->dictionary(), m_limits));
        if (!m_window || m_windowSize != m_header->dictionary()) {
            m_window.reset();
            m_window.emplace(TRY(LzmaWindow::ring(m_header->dictionary())));
            m_windowSize = m_header->dictionary();
        }
        m_lzma2.emplace(m_in, *m_window);
        m_check = XzCheck(m_flags.check);
        m_state = State::InPlainBlock;
        return {};
    }

    Result<void> decodePlain(SpanWriter& out)
    {
        const auto more = m_lzma2->step(out.room());
        const auto fresh = m_lzma2->fresh();
        m_check.add(fresh);
        m_blockSize += fresh.size();
        out.put(fresh);
        if (TRY(more))
            return {};
        const auto packed = m_in.taken() - m_blockStart;
        if (!m_header->declares(packed, m_blockSize))
            return Error{ErrorCode::Corrupt, "xz: a block has not its declared size"};
        const auto padding = TRY(m_in.take(xzPadding(packed)));
        if (std::any_of(padding.begin(), padding.end(), [](std::byte value) { return value != std::byte{0}; }))
            return Error{ErrorCode::Corrupt, "xz: padding of a block"};
        const auto stored = TRY(m_in.take(m_check.size()));
        if (!m_check.matches(stored))
            return Error{ErrorCode::ChecksumMismatch, "xz: checksum of a block"};
        return endBlock(m_header->block().header_size + packed + m_check.size(), m_blockSize, out);
    }

    Result<void> beginOther()
    {
        const auto needed = lzma_raw_decoder_memusage(m_header->block().filters);
        const auto allowed = m_limits.dictionary + kMemoryBesideDictionary;
        if (needed != UINT64_MAX && needed > allowed)
            return Error{ErrorCode::LimitExceeded, "lzma: dictionary larger than allowed", 0, needed};
        const auto code = lzma_block_decoder(&m_library, &m_header->block());
        if (code != LZMA_OK)
            return lzmaError(code);
        m_state = State::InOtherBlock;
        return {};
    }

    Result<void> decodeOther(SpanWriter& out)
    {
        const auto packed = TRY(m_in.peek());
        const auto code = runLzma(m_library, packed, out);
        m_in.consume(packed.size() - m_library.avail_in);
        if (code == LZMA_OK)
            return {};
        if (code != LZMA_STREAM_END)
            return lzmaError(code);
        auto& block = m_header->block();
        return endBlock(lzma_block_unpadded_size(&block), block.uncompressed_size, out);
    }

    Result<void> endBlock(std::uint64_t unpadded, std::uint64_t size, const SpanWriter& out)
    {
        if (lzma_index_hash_append(m_index, unpadded, size) != LZMA_OK)
            return Error{ErrorCode::Corrupt, "xz: sizes of the blocks"};
        markVerified(out);
        m_state = State::InStream;
        return {};
    }

    /// The index must tell what was found, and the end must agree with the beginning.
    Result<void> endStream()
    {
        for (auto code = LZMA_OK; code != LZMA_STREAM_END;) {
            const auto packed = TRY(m_in.peek());
            if (packed.empty())
                return kTruncated;
            std::size_t used = 0;
            code = lzma_index_hash_decode(m_index, reinterpret_cast<const std::uint8_t*>(packed.data()), &used,
                                          packed.size());
            m_in.consume(used);
            if (code != LZMA_OK && code != LZMA_STREAM_END)
                return lzmaError(code);
        }
        lzma_stream_flags footer{};
        const auto bytes = TRY(m_in.take(LZMA_STREAM_HEADER_SIZE));
        auto code = lzma_stream_footer_decode(&footer, reinterpret_cast<const std::uint8_t*>(bytes.data()));
        if (code == LZMA_FORMAT_ERROR || footer.backward_size != lzma_index_hash_size(m_index))
            code = LZMA_DATA_ERROR;
        if (code == LZMA_OK)
            code = lzma_stream_flags_compare(&m_flags, &footer);
        if (code != LZMA_OK)
            return lzmaError(code);
        return endOrNext();
    }

    Result<void> endOrNext()
    {
        auto rest = TRY(m_in.peek());
        std::uint64_t padding = 0;
        while (!rest.empty() && rest.front() == std::byte{0}) {
            ++padding;
            m_in.consume(1);
            rest = TRY(m_in.peek());
        }
        if (padding % 4 != 0 || (!rest.empty() && rest.front() != std::byte{0xFD}))
            return Error{ErrorCode::TrailingData, "xz: neither padding nor a stream after the end"};
        m_state = rest.empty() ? State::End : State::Between;
        return {};
    }

    PackedStream m_in;
    Limits m_limits;
    State m_state = State::Between;
    lzma_stream_flags m_flags{};
    lzma_index_hash* m_index = nullptr;
    std::unique_ptr<XzBlockHeader> m_header;
    std::uint64_t m_blockStart = 0; ///< of its data in the input
    std::uint64_t m_blockSize = 0; ///< decoded so far
    std::optional<LzmaWindow> m_window;
    std::uint64_t m_windowSize = 0;
    std::optional<Lzma2Decoder> m_lzma2;
    XzCheck m_check{LZMA_CHECK_NONE};
    lzma_stream m_library = LZMA_STREAM_INIT;
};

/// liblzma's reader of indices, which asks for positions of the file.
class IndexReader {
public:
    IndexReader(const ByteSource& source, const Limits& limits) : m_source(source), m_limits(limits) {}
    IndexReader(const IndexReader&) = delete;
    IndexReader& operator=(const IndexReader&) = delete;
    ~IndexReader()
    {
        lzma_end(&m_lzma);
        lzma_index_end(m_index, nullptr);
    }

    /// Null when the index cannot be read.
    const lzma_index* read()
    {
        const auto memory = std::min(kMemoryForIndex, m_limits.headerBlock);
        if (lzma_file_info_decoder(&m_lzma, &m_index, memory, m_source.size()) != LZMA_OK)
            return nullptr;
        std::array<std::byte, 8192> block;
        std::uint64_t position = 0;
        for (;;) {
            if (m_lzma.avail_in == 0) {
                const auto got = m_source.readAt(position, block);
                if (!got || *got == 0)
                    return nullptr;
                m_lzma.next_in = reinterpret_cast<const std::uint8_t*>(block.data());
                m_lzma.avail_in = *got;
                position += *got;
            }
            const auto code = lzma_code(&m_lzma, LZMA_RUN);
            if (code == LZMA_STREAM_END)
                return m_index;
            if (code == LZMA_SEEK_NEEDED) {
                position = m_lzma.seek_pos;
                m_lzma.avail_in = 0;
            } else if (code != LZMA_OK) {
                return nullptr;
            }
        }
    }

private:
    const ByteSource& m_source;
    const Limits& m_limits;
    lzma_stream m_lzma = LZMA_STREAM_INIT;
    lzma_index* m_index = nullptr;
};

}

std::uint64_t XzBlocks::size() const
{
    return std::accumulate(all.begin(), all.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const Block& block) { return sum + block.size; });
}

XzBlocks readXzBlocks(const ByteSource& source, const Limits& limits)
{
    XzBlocks blocks;
    IndexReader reader(source, limits);
    const auto* index = reader.read();
    if (!index)
        return blocks;
    lzma_index_iter each;
    lzma_index_iter_init(&each, index);
    blocks.areSmall = true;
    while (!lzma_index_iter_next(&each, LZMA_INDEX_ITER_NONEMPTY_BLOCK)) {
        const auto& block = each.block;
        blocks.all.push_back({block.compressed_file_offset, block.total_size, block.uncompressed_size,
                              static_cast<unsigned>(each.stream.flags->check)});
        blocks.areSmall = blocks.areSmall && std::max(block.uncompressed_size, block.total_size) <= kLargestSharedBlock;
    }
    return blocks;
}

Result<StreamPtr> openXz(StreamPtr packed, const CodecParams& params, XzBlocks blocks)
{
    if (params.threads > 1 && blocks.areSmall && blocks.all.size() > 1)
        return openXzBlocks(std::move(packed), params, std::move(blocks));
    return StreamPtr(std::make_unique<XzDecoder>(std::move(packed), params));
}

}
