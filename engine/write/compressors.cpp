#include "engine/write/compressors.h"

#include "engine/write/bzip2_sink.h"
#include "engine/write/ordered_jobs.h"

#include <algorithm>
#include <array>
#include <deque>

#include <libdeflate.h>
#include <lz4frame.h>
#include <lzma.h>
#include <zstd.h>

namespace vantoro {

namespace {

using Block = std::vector<std::byte>;
constexpr unsigned kUsualXzLevel = 6;
constexpr unsigned kUsualXzDepth = 24; // half of the library's: a sixth less time, a quarter of a percent larger
constexpr Error kFailed{ErrorCode::Internal, "a compressor failed"};

/// Cuts what comes into pieces that are compressed side by side, each into a stream of its own; joined they are one
/// valid file (gzip members).
class PieceSink final : public ByteSink {
public:
    using Compress = std::function<Result<Block>(ConstBytes)>;
    PieceSink(ByteSink& out, std::size_t pieceSize, unsigned threads, Compress compress)
        : m_out(out)
        , m_pieceSize(pieceSize)
        , m_compress(std::move(compress))
        , m_jobs(threads, [this](Result<Block> packed) -> Result<void> {
            if (!packed)
                return packed.error();
            return m_out.write(*packed);
        })
    {
        m_piece.reserve(m_pieceSize);
    }

    Result<void> write(ConstBytes block) override
    {
        while (!block.empty()) {
            const auto count = std::min(block.size(), m_pieceSize - m_piece.size());
            m_piece.insert(m_piece.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(count));
            block = block.subspan(count);
            if (m_piece.size() == m_pieceSize)
                TRY(pack());
        }
        return {};
    }
    Result<void> finish() override
    {
        if (!m_piece.empty() || !m_hasPacked)
            TRY(pack()); // an empty input still makes a valid file
        return m_jobs.finish();
    }

private:
    Result<void> pack()
    {
        m_hasPacked = true;
        auto piece = std::make_shared<Block>(std::move(m_piece));
        m_piece = {};
        m_piece.reserve(m_pieceSize);
        return m_jobs.add([this, piece]() -> Result<Block> { return m_compress(*piece); });
    }
    ByteSink& m_out;
    std::size_t m_pieceSize;
    Compress m_compress;
    Block m_piece;
    bool m_hasPacked = false;
    OrderedJobs<Result<Block>> m_jobs;
};

struct FreeDeflater {
    void operator()(libdeflate_compressor* c) const { libdeflate_free_compressor(c); }
};

Result<Block> gzipPiece(ConstBytes piece, int level)
{
    const std::unique_ptr<libdeflate_compressor, FreeDeflater> compressor(libdeflate_alloc_compressor(level));
    if (!compressor)
        return Error{ErrorCode::OutOfMemory, "gzip compressor"};
    Block packed(libdeflate_gzip_compress_bound(compressor.get(), piece.size()));
    packed.resize(libdeflate_gzip_compress(compressor.get(), piece.data(), piece.size(), packed.data(), packed.size()));
    return packed.empty() ? Result<Block>(kFailed) : packed;
}

class XzSink final : public ByteSink {
public:
    static Result<std::unique_ptr<ByteSink>> make(ByteSink& out, unsigned level, unsigned threads,
                                                  std::uint64_t expectedSize, CancelToken cancel)
    {
        auto sink = std::unique_ptr<XzSink>(new XzSink(out, std::move(cancel)));
        lzma_options_lzma preset{};
        if (lzma_lzma_preset(&preset, level))
            return kFailed;
        if (level == kUsualXzLevel)
            preset.depth = kUsualXzDepth;
        const std::array filters{lzma_filter{LZMA_FILTER_LZMA2, &preset}, lzma_filter{LZMA_VLI_UNKNOWN, nullptr}};
        lzma_mt options{};
        options.threads = threads;
        options.filters = filters.data();
        options.check = LZMA_CHECK_CRC64;
        options.timeout = 100; // milliseconds, so that a stop is seen while the threads work
        options.block_size = blockSize(preset.dict_size, threads, expectedSize);
        sink->planLastRound(preset.dict_size, options.block_size, threads, expectedSize);
        if (lzma_stream_encoder_mt(&sink->m_stream, &options) != LZMA_OK)
            return Error{ErrorCode::OutOfMemory, "xz encoder"};
        return std::unique_ptr<ByteSink>(std::move(sink));
    }
    ~XzSink() override { lzma_end(&m_stream); }
    XzSink(const XzSink&) = delete;
    XzSink& operator=(const XzSink&) = delete;

    Result<void> write(ConstBytes block) override
    {
        while (!m_cuts.empty() && m_cuts.front() - m_stream.total_in <= block.size()) {
            const auto upTo = static_cast<std::size_t>(m_cuts.front() - m_stream.total_in);
            TRY(run(block.first(upTo), LZMA_RUN));
            TRY(run({}, LZMA_FULL_BARRIER));
            block = block.subspan(upTo);
            m_cuts.pop_front();
        }
        return run(block, LZMA_RUN);
    }
    Result<void> finish() override { return run({}, LZMA_FINISH); }

private:
    XzSink(ByteSink& out, CancelToken cancel) : m_out(out), m_cancel(std::move(cancel)), m_packed(256 << 10) {}

    /// Three dictionaries is the library's rule; with few blocks some threads would have nothing to do, so the data
    /// are shared out evenly, into blocks no smaller than a dictionary.
    static std::uint64_t blockSize(std::uint64_t dictionary, unsigned threads, std::uint64_t expectedSize)
    {
        const auto usual = std::max<std::uint64_t>(dictionary * 3, 1 << 20);
        if (expectedSize == 0 || threads < 2)
            return usual;
        const auto rounds = (expectedSize + usual * threads - 1) / (usual * threads);
        const auto even = expectedSize / (rounds * threads) + 4096;
        return std::clamp<std::uint64_t>(even, std::min(dictionary, usual), usual);
    }

    /// Blocks of one size take threads very different times. So the last round's are cut once more, that threads which
    /// are through early find something left to do.
    void planLastRound(std::uint64_t dictionary, std::uint64_t block, unsigned threads, std::uint64_t expectedSize)
    {
        const auto round = block * threads;
        if (threads < 2 || round == 0 || expectedSize < round || block < dictionary)
            return;
        auto cut = expectedSize - expectedSize % round;
        if (expectedSize - cut < block)
            cut -= round;
        for (unsigned i = 0; i < 2 * threads; ++i)
            m_cuts.push_back(cut += i < threads ? block - block / 4 : block / 4);
    }

    Result<void> run(ConstBytes block, lzma_action action)
    {
        m_stream.next_in = reinterpret_cast<const std::uint8_t*>(block.data());
        m_stream.avail_in = block.size();
        while (true) {
            TRY(m_cancel.check());
            m_stream.next_out = reinterpret_cast<std::uint8_t*>(m_packed.data());
            m_stream.avail_out = m_packed.size();
            const auto result = lzma_code(&m_stream, action);
            TRY(m_out.write(ConstBytes(m_packed).first(m_packed.size() - m_stream.avail_out)));
            if (result == LZMA_STREAM_END || (action == LZMA_RUN && m_stream.avail_in == 0 && result == LZMA_OK))
                return {};
            if (result != LZMA_OK)
                return result == LZMA_MEM_ERROR ? Error{ErrorCode::OutOfMemory, "xz encoder"} : kFailed;
        }
    }
    ByteSink& m_out;
    CancelToken m_cancel;
    lzma_stream m_stream = LZMA_STREAM_INIT;
    std::deque<std::uint64_t> m_cuts; // bytes after which a block ends early
    Block m_packed;
};

struct FreeZstd {
    void operator()(ZSTD_CCtx* context) const { ZSTD_freeCCtx(context); }
};

class ZstdSink final : public ByteSink {
public:
    ZstdSink(ByteSink& out, int level, unsigned threads, std::uint64_t expectedSize)
        : m_out(out)
        , m_context(ZSTD_createCCtx())
        , m_packed(ZSTD_CStreamOutSize())
    {
        ZSTD_CCtx_setParameter(m_context.get(), ZSTD_c_compressionLevel, level);
        ZSTD_CCtx_setParameter(m_context.get(), ZSTD_c_checksumFlag, 1);
        ZSTD_CCtx_setParameter(m_context.get(), ZSTD_c_nbWorkers, static_cast<int>(threads));
        // Small jobs let the second worker start early; half a window of what came before keeps them from costing size.
        constexpr std::uint64_t kJob = 2 << 20;
        constexpr int kHalfWindow = 8;
        if (threads > 1 && (expectedSize == 0 || expectedSize > kJob)) {
            ZSTD_CCtx_setParameter(m_context.get(), ZSTD_c_jobSize, static_cast<int>(kJob));
            ZSTD_CCtx_setParameter(m_context.get(), ZSTD_c_overlapLog, kHalfWindow);
        }
    }
    Result<void> write(ConstBytes block) override { return run(block, ZSTD_e_continue); }
    Result<void> finish() override { return run({}, ZSTD_e_end); }

private:
    Result<void> run(ConstBytes block, ZSTD_EndDirective directive)
    {
        ZSTD_inBuffer in{block.data(), block.size(), 0};
        while (true) {
            ZSTD_outBuffer packed{m_packed.data(), m_packed.size(), 0};
            const auto left = ZSTD_compressStream2(m_context.get(), &packed, &in, directive);
            if (ZSTD_isError(left))
                return kFailed;
            TRY(m_out.write(ConstBytes(m_packed).first(packed.pos)));
            if (directive == ZSTD_e_end ? left == 0 : in.pos == in.size)
                return {};
        }
    }
    ByteSink& m_out;
    std::unique_ptr<ZSTD_CCtx, FreeZstd> m_context;
    Block m_packed;
};

class Lz4Sink final : public ByteSink {
public:
    Lz4Sink(ByteSink& out, int level) : m_out(out)
    {
        m_preferences.compressionLevel = level;
        m_preferences.frameInfo.contentChecksumFlag = LZ4F_contentChecksumEnabled;
        m_preferences.frameInfo.blockSizeID = LZ4F_max4MB;
        LZ4F_createCompressionContext(&m_context, LZ4F_VERSION);
    }
    ~Lz4Sink() override { LZ4F_freeCompressionContext(m_context); }
    Lz4Sink(const Lz4Sink&) = delete;
    Lz4Sink& operator=(const Lz4Sink&) = delete;

    Result<void> write(ConstBytes block) override
    {
        TRY(begin());
        constexpr std::size_t kMost = 4 << 20;
        while (!block.empty()) {
            const auto part = block.first(std::min(block.size(), kMost));
            block = block.subspan(part.size());
            TRY(put(
                LZ4F_compressUpdate(m_context, m_packed.data(), m_packed.size(), part.data(), part.size(), nullptr)));
        }
        return {};
    }
    Result<void> finish() override
    {
        TRY(begin());
        return put(LZ4F_compressEnd(m_context, m_packed.data(), m_packed.size(), nullptr));
    }

private:
    Result<void> begin()
    {
        if (!m_packed.empty())
            return {};
        m_packed.resize(LZ4F_compressBound(4 << 20, &m_preferences) + LZ4F_HEADER_SIZE_MAX);
        return put(LZ4F_compressBegin(m_context, m_packed.data(), m_packed.size(), &m_preferences));
    }
    Result<void> put(std::size_t length)
    {
        if (LZ4F_isError(length))
            return kFailed;
        return m_out.write(ConstBytes(m_packed).first(length));
    }
    ByteSink& m_out;
    LZ4F_cctx* m_context = nullptr;
    LZ4F_preferences_t m_preferences = LZ4F_INIT_PREFERENCES;
    Block m_packed;
};

/// Our 0 to 9 on a method's own scale.
int scaled(std::optional<unsigned> level, int usual, const std::array<int, 10>& scale)
{
    return level ? scale[std::min(*level, 9U)] : usual;
}

}

Result<std::unique_ptr<ByteSink>> makeCompressor(std::string_view method, ByteSink& out, std::optional<unsigned> level,
                                                 unsigned threads, std::uint64_t expectedSize,
                                                 const CancelToken& cancel)
{
    if (method == "gz") {
        const int own = scaled(level, 6, {0, 1, 2, 3, 4, 5, 6, 8, 9, 12});
        return std::unique_ptr<ByteSink>(std::make_unique<PieceSink>(
            out, std::size_t{1} << 20, threads, [own](ConstBytes piece) { return gzipPiece(piece, own); }));
    }
    if (method == "bz2")
        return makeBzip2Sink(out, static_cast<unsigned>(scaled(level, 9, {1, 1, 2, 3, 4, 5, 6, 7, 8, 9})), threads);
    if (method == "xz")
        return XzSink::make(out, level.value_or(kUsualXzLevel), threads, expectedSize, cancel);
    if (method == "zst")
        return std::unique_ptr<ByteSink>(std::make_unique<ZstdSink>(
            out, scaled(level, 3, {1, 1, 2, 3, 5, 7, 9, 12, 15, 19}), threads, expectedSize));
    if (method == "lz4")
        return std::unique_ptr<ByteSink>(
            std::make_unique<Lz4Sink>(out, scaled(level, 0, {0, 0, 0, 3, 4, 5, 6, 8, 9, 12})));
    return Error{ErrorCode::UnsupportedKindOfArchive, "no such compressor"};
}

}
