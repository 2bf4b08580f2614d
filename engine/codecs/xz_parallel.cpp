#include "engine/codecs/xz_parallel.h"

#include "engine/codecs/liblzma.h"
#include "engine/codecs/parallel_blocks.h"
#include "engine/codecs/xz_block.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::uint64_t kMostMemory = 96 << 20;
constexpr std::uint64_t kMemoryBesideDictionary = 16 << 20;
constexpr Error kMisfit{ErrorCode::Corrupt, "xz: the index does not fit the blocks"};

class XzBlocksDecoder final : public ParallelBlocks {
public:
    XzBlocksDecoder(StreamPtr packed, const CodecParams& params, XzBlocks blocks)
        : ParallelBlocks(params, kMostMemory)
        , m_in(std::move(packed))
        , m_limits(params.limits)
        , m_blocks(std::move(blocks.all))
    {
    }
    ~XzBlocksDecoder() override { stop(); }

private:
    Result<bool> readNext(Job& job) override
    {
        if (m_next == m_blocks.size())
            return false;
        const auto& block = m_blocks[m_next++];
        const auto size = static_cast<std::size_t>(block.packedSize);
        std::vector<std::byte> packed(size + LzmaDecoder::kMargin);
        const auto gap = block.offset - m_position;
        const auto passed = TRY(m_in->skip(gap));
        const auto got = TRY(readFully(*m_in, Bytes(packed).first(size)));
        m_position += gap + size;
        if (passed < gap || got < size)
            return Error{ErrorCode::Truncated, "xz: the input ends too early"};
        job.packed = std::move(packed);
        job.size = block.size;
        job.check = block.check;
        return true;
    }

    /// Indices and the ends of streams were seen when the blocks were found; what reads the input counts them.
    Result<void> finish(SpanWriter&) override
    {
        TRY(m_in->skip(~std::uint64_t{0}));
        return {};
    }

    Result<void> decodeBlock(Job& job) override
    {
        const auto bytes = ConstBytes(job.packed).first(job.packed.size() - LzmaDecoder::kMargin);
        const auto length = bytes.empty() ? 0 : XzBlockHeader::lengthOf(bytes.front());
        if (length == 0 || bytes.front() == std::byte{0} || length > bytes.size())
            return kMisfit;
        const auto header = TRY(XzBlockHeader::parse(bytes.first(length), static_cast<lzma_check>(job.check)));
        if (!header->isPlain())
            return decodeOther(job, *header, bytes.subspan(length));
        TRY(checkLzmaDictionary(header->dictionary(), m_limits));
        job.window.emplace(TRY(LzmaWindow::whole(static_cast<std::size_t>(job.size), header->dictionary())));
        return decodePlain(job, *header, bytes.subspan(length));
    }

    Result<void> decodePlain(Job& job, const XzBlockHeader& header, ConstBytes bytes)
    {
        PackedBlock packed(bytes);
        XzCheck check(static_cast<lzma_check>(job.check));
        TRY(decodeLzma2(job, packed, [&](ConstBytes fresh) { check.add(fresh); }));
        const auto size = packed.taken();
        const auto padding = TRY(packed.take(xzPadding(size)));
        const bool isPadded
            = std::all_of(padding.begin(), padding.end(), [](std::byte value) { return value == std::byte{0}; });
        if (!isPadded || !header.declares(size, job.window->position()) || job.window->room() != 0)
            return Error{ErrorCode::Corrupt, "xz: a block has not its declared size"};
        const auto stored = TRY(packed.take(check.size()));
        if (packed.taken() != bytes.size())
            return kMisfit;
        if (!check.matches(stored))
            return Error{ErrorCode::ChecksumMismatch, "xz: checksum of a block"};
        return {};
    }

    Result<void> decodeOther(Job& job, XzBlockHeader& header, ConstBytes bytes)
    {
        const auto needed = lzma_raw_decoder_memusage(header.block().filters);
        if (needed != UINT64_MAX && needed > m_limits.dictionary + kMemoryBesideDictionary)
            return Error{ErrorCode::LimitExceeded, "lzma: dictionary larger than allowed", 0, needed};
        job.other.resize(static_cast<std::size_t>(job.size));
        std::size_t in = 0, out = 0;
        const auto code = lzma_block_buffer_decode(
            &header.block(), nullptr, reinterpret_cast<const std::uint8_t*>(bytes.data()), &in, bytes.size(),
            reinterpret_cast<std::uint8_t*>(job.other.data()), &out, job.other.size());
        publish(job, ConstBytes(job.other).first(out));
        if (code != LZMA_OK)
            return lzmaError(code);
        return in == bytes.size() && out == job.other.size() ? Result<void>() : kMisfit;
    }

    StreamPtr m_in;
    std::uint64_t m_position = 0; ///< in the input
    Limits m_limits;
    std::vector<XzBlocks::Block> m_blocks;
    std::size_t m_next = 0;
};

}

Result<StreamPtr> openXzBlocks(StreamPtr packed, const CodecParams& params, XzBlocks blocks)
{
    return StreamPtr(std::make_unique<XzBlocksDecoder>(std::move(packed), params, std::move(blocks)));
}

}
