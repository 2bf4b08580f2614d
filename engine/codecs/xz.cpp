#include "engine/codecs/xz.h"

#include "engine/codecs/liblzma.h"

#include <algorithm>
#include <array>

namespace vantoro {

namespace {

constexpr std::uint64_t kMemoryForIndex = 64 << 20;
constexpr std::uint64_t kMemoryForThreads = 160 << 20;
constexpr std::uint64_t kLargestSharedBlock = 64 << 20;

class XzDecoder final : public LibLzmaDecoder {
public:
    XzDecoder(StreamPtr packed, const CodecParams& params, XzBlocks blocks)
        : LibLzmaDecoder(std::move(packed), params)
        , m_threads(params.threads)
        , m_blocks(std::move(blocks))
    {
    }

private:
    Result<void> begin(lzma_stream& lzma) override
    {
        const auto code = m_threads > 1 && m_blocks.areSmall && m_blocks.ends.size() > 1
            ? beginThreaded(lzma)
            : lzma_stream_decoder(&lzma, memoryLimit(), 0);
        if (code != LZMA_OK)
            return lzmaError(code);
        return {};
    }

    lzma_ret beginThreaded(lzma_stream& lzma)
    {
        lzma_mt options{};
        options.threads = m_threads;
        options.memlimit_threading = kMemoryForThreads;
        options.memlimit_stop = memoryLimit();
        return lzma_stream_decoder_mt(&lzma, &options);
    }

    void decoded(const SpanWriter& out) override
    {
        // A byte of the next block is out: so the check of the one before held.
        const auto reached = position() + out.used();
        while (m_nextBlock < m_blocks.ends.size() && m_blocks.ends[m_nextBlock] < reached)
            ++m_nextBlock;
        if (m_nextBlock > 0)
            markVerifiedUpTo(m_blocks.ends[m_nextBlock - 1]);
    }

    Result<bool> finished(BufferedInput& in, SpanWriter& out) override
    {
        markVerified(out);
        auto rest = TRY(in.peek());
        std::uint64_t padding = 0;
        while (!rest.empty() && rest.front() == std::byte{0}) {
            ++padding;
            in.consume(1);
            rest = TRY(in.peek());
        }
        if (rest.empty() && padding % 4 == 0)
            return false;
        if (padding % 4 != 0 || rest.front() != std::byte{0xFD})
            return Error{ErrorCode::TrailingData, "xz: neither padding nor a stream after the end"};
        return true;
    }

    unsigned m_threads;
    XzBlocks m_blocks;
    std::size_t m_nextBlock = 0;
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
        blocks.ends.push_back(each.block.uncompressed_file_offset + each.block.uncompressed_size);
        blocks.areSmall = blocks.areSmall && each.block.uncompressed_size <= kLargestSharedBlock;
    }
    return blocks;
}

Result<StreamPtr> openXz(StreamPtr packed, const CodecParams& params, XzBlocks blocks)
{
    return StreamPtr(std::make_unique<XzDecoder>(std::move(packed), params, std::move(blocks)));
}

}
