#include "engine/codecs/xz_parallel.h"

#include "engine/codecs/liblzma.h"
#include "engine/codecs/worker_pool.h"
#include "engine/codecs/xz_block.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace vantoro {

namespace {

constexpr std::uint64_t kMostMemory = 160 << 20; ///< of the blocks under way
constexpr std::size_t kStep = 128 << 10; ///< decoded before anybody is told

/// A block under way.
struct Job {
    XzBlocks::Block block;
    std::vector<std::byte> packed; ///< and the decoder's margin
    std::optional<LzmaWindow> window; ///< whole
    std::vector<std::byte> other; ///< decoded by the library, instead
    // Guarded by the decoder's mutex:
    ConstBytes decoded;
    bool isDone = false;
    Result<void> outcome;

    std::uint64_t memory() const { return block.packedSize + block.size; }
};

class XzBlocksDecoder final : public Decoder {
public:
    XzBlocksDecoder(StreamPtr packed, const CodecParams& params, XzBlocks blocks)
        : Decoder(params.cancel)
        , m_in(std::move(packed))
        , m_threads(params.threads)
        , m_limits(params.limits)
        , m_blocks(std::move(blocks.all))
        , m_pool(std::make_unique<WorkerPool>(params.threads))
    {
    }
    ~XzBlocksDecoder() override
    {
        m_isStopping.store(true);
        m_pool.reset();
    }

private:
    Result<void> decode(SpanWriter& out) override
    {
        while (out.room() > 0) {
            TRY(beginJobs());
            if (m_jobs.empty())
                return readRest();
            auto& job = *m_jobs.front();
            const bool isDone = waitForMore(job);
            const auto part = m_decoded.subspan(m_handedOut);
            const auto count = std::min(part.size(), out.room());
            if (count > 0)
                out.put(part.first(count));
            m_handedOut += count;
            if (!isDone || count < part.size())
                continue;
            TRY(job.outcome);
            markVerified(out);
            m_used -= job.memory();
            m_jobs.pop_front();
            m_handedOut = 0;
        }
        return {};
    }

    /// As many as the threads can work on, and one more that waits for them.
    Result<void> beginJobs()
    {
        while (m_inputFault && m_next < m_blocks.size() && m_jobs.size() <= m_threads) {
            const auto& block = m_blocks[m_next];
            if (!m_jobs.empty() && m_used + block.packedSize + block.size > kMostMemory)
                break;
            auto job = std::make_unique<Job>();
            job->block = block;
            m_inputFault = readBlock(*job);
            if (!m_inputFault)
                break;
            ++m_next;
            m_used += job->memory();
            m_pool->add([this, raw = job.get()] { run(*raw); });
            m_jobs.push_back(std::move(job));
        }
        return m_jobs.empty() ? m_inputFault : Result<void>();
    }

    Result<void> readBlock(Job& job)
    {
        const auto size = static_cast<std::size_t>(job.block.packedSize);
        job.packed.resize(size + LzmaDecoder::kMargin);
        const auto gap = job.block.offset - m_position;
        const auto passed = TRY(m_in->skip(gap));
        const auto got = TRY(readFully(*m_in, Bytes(job.packed).first(size)));
        m_position += gap + size;
        if (passed < gap || got < size)
            return Error{ErrorCode::Truncated, "xz: the input ends too early"};
        return {};
    }

    /// Indices and the ends of streams were seen when the blocks were found; what reads the input counts them.
    Result<void> readRest()
    {
        TRY(m_in->skip(~std::uint64_t{0}));
        return {};
    }

    /// Until there is more than was handed out, or no more will come; then true.
    bool waitForMore(Job& job)
    {
        while (m_pool->threads() == 0 && m_pool->helpOut()) {}
        std::unique_lock lock(m_mutex);
        m_waitsFor = &job;
        m_grown.wait(lock, [&] { return job.isDone || job.decoded.size() > m_handedOut; });
        m_waitsFor = nullptr;
        m_decoded = job.decoded;
        return job.isDone;
    }

    // On the pool's threads from here.

    void run(Job& job)
    {
        const auto outcome = guarded([&] { return decodeBlock(job); });
        publish(job, job.decoded, true, outcome);
    }

    void publish(Job& job, ConstBytes decoded, bool isDone, const Result<void>& outcome)
    {
        const std::lock_guard lock(m_mutex);
        job.decoded = decoded;
        job.isDone = isDone;
        job.outcome = outcome;
        if (m_waitsFor == &job)
            m_grown.notify_one();
    }

    Result<void> decodeBlock(Job& job)
    {
        const auto bytes = ConstBytes(job.packed).first(static_cast<std::size_t>(job.block.packedSize));
        const auto length = XzBlockHeader::lengthOf(bytes.front());
        if (bytes.front() == std::byte{0} || length > bytes.size())
            return Error{ErrorCode::Corrupt, "xz: the index does not fit the blocks"};
        const auto header = TRY(XzBlockHeader::parse(bytes.first(length), static_cast<lzma_check>(job.block.check)));
        if (!header->isPlain())
            return decodeOther(job, *header, bytes.subspan(length));
        TRY(checkLzmaDictionary(header->dictionary(), m_limits));
        job.window.emplace(TRY(LzmaWindow::whole(static_cast<std::size_t>(job.block.size), header->dictionary())));
        return decodePlain(job, *header, bytes.subspan(length));
    }

    Result<void> decodePlain(Job& job, const XzBlockHeader& header, ConstBytes bytes)
    {
        PackedBlock packed(bytes);
        Lzma2Decoder lzma2(packed, *job.window);
        XzCheck check(static_cast<lzma_check>(job.block.check));
        for (bool more = true; more;) {
            if (m_isStopping.load(std::memory_order_relaxed) || cancelToken().isCancelled())
                return Error{ErrorCode::Cancelled, "stopped"};
            const auto stepped = lzma2.step(kStep);
            check.add(lzma2.fresh());
            publish(job, job.window->bytes(0, job.window->position()), false, {});
            more = TRY(stepped);
        }
        const auto size = packed.taken();
        const auto padding = TRY(packed.take(xzPadding(size)));
        const bool isPadded
            = std::all_of(padding.begin(), padding.end(), [](std::byte value) { return value == std::byte{0}; });
        if (!isPadded || !header.declares(size, job.window->position()) || job.window->room() != 0)
            return Error{ErrorCode::Corrupt, "xz: a block has not its declared size"};
        const auto stored = TRY(packed.take(check.size()));
        if (packed.taken() != bytes.size())
            return Error{ErrorCode::Corrupt, "xz: the index does not fit the blocks"};
        if (!check.matches(stored))
            return Error{ErrorCode::ChecksumMismatch, "xz: checksum of a block"};
        return {};
    }

    Result<void> decodeOther(Job& job, XzBlockHeader& header, ConstBytes bytes)
    {
        const auto needed = lzma_raw_decoder_memusage(header.block().filters);
        if (needed != UINT64_MAX)
            TRY(checkLzmaDictionary(needed > kMostMemory ? needed - kMostMemory : 0, m_limits));
        job.other.resize(static_cast<std::size_t>(job.block.size));
        std::size_t in = 0, out = 0;
        const auto code = lzma_block_buffer_decode(
            &header.block(), nullptr, reinterpret_cast<const std::uint8_t*>(bytes.data()), &in, bytes.size(),
            reinterpret_cast<std::uint8_t*>(job.other.data()), &out, job.other.size());
        publish(job, ConstBytes(job.other).first(out), false, {});
        if (code != LZMA_OK)
            return lzmaError(code);
        if (in != bytes.size() || out != job.other.size())
            return Error{ErrorCode::Corrupt, "xz: the index does not fit the blocks"};
        return {};
    }

    StreamPtr m_in;
    std::uint64_t m_position = 0; ///< in the input
    Result<void> m_inputFault; ///< kept until the blocks before it are out
    unsigned m_threads;
    Limits m_limits;
    std::vector<XzBlocks::Block> m_blocks;
    std::size_t m_next = 0;
    std::deque<std::unique_ptr<Job>> m_jobs;
    std::uint64_t m_used = 0; ///< memory
    ConstBytes m_decoded; ///< of the first job, as far as it was looked at
    std::size_t m_handedOut = 0; ///< of that
    std::mutex m_mutex;
    std::condition_variable m_grown;
    const Job* m_waitsFor = nullptr;
    std::atomic<bool> m_isStopping{false};
    std::unique_ptr<WorkerPool> m_pool; // goes first: its threads use the rest
};

}

Result<StreamPtr> openXzBlocks(StreamPtr packed, const CodecParams& params, XzBlocks blocks)
{
    return StreamPtr(std::make_unique<XzBlocksDecoder>(std::move(packed), params, std::move(blocks)));
}

}
