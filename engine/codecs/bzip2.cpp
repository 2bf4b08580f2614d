#include "engine/codecs/bzip2.h"

#include "engine/codecs/bzip2_block.h"
#include "engine/codecs/bzip2_runs.h"
#include "engine/codecs/worker_pool.h"

#include <optional>

namespace vantoro {

namespace {

constexpr std::size_t kReadAtOnce = 256 << 10;
constexpr std::size_t kMostPacked = 5 << 19; // bytes of a packed block: 900,000 symbols of 20 bits, and the tables
constexpr std::size_t kBlockUnit = 100'000;

/// Finds the blocks' magic at any bit. Two whole bytes of it are known for each of the eight shifts: a byte that is
/// in the right place for some shift sets that shift's bit.
class MagicFinder {
public:
    MagicFinder()
    {
        for (unsigned shift = 0; shift < 8; ++shift) {
            const auto wide = kBzip2BlockMagic << (8 - shift); // 56 bits, the first byte not whole
            m_second[wide >> 40 & 0xFF] |= static_cast<std::uint8_t>(1U << shift);
            m_third[wide >> 32 & 0xFF] |= static_cast<std::uint8_t>(1U << shift);
        }
    }
    /// Calls `found(bit)` for each magic that begins in bytes [from, to) of `bytes`.
    template <class F> void find(ConstBytes bytes, std::size_t from, std::size_t to, F&& found) const
    {
        for (auto i = from; i < to && i + 2 < bytes.size(); ++i) {
            auto shifts = static_cast<unsigned>(m_second[std::to_integer<std::size_t>(bytes[i + 1])]
                                                & m_third[std::to_integer<std::size_t>(bytes[i + 2])]);
            for (unsigned shift = 0; shifts != 0; shifts >>= 1, ++shift) {
                if ((shifts & 1) != 0
                    && bitsAt(bytes, std::uint64_t{i} * 8 + shift, kBzip2MagicBits) == kBzip2BlockMagic)
                    found(std::uint64_t{i} * 8 + shift);
            }
        }
    }

private:
    std::array<std::uint8_t, 256> m_second{}, m_third{};
};

/// Packed bytes read so far and still needed; positions are those of the whole input.
class PackedWindow {
public:
    explicit PackedWindow(StreamPtr in) : m_in(std::move(in)) {}
    ConstBytes bytes() const { return m_bytes; }
    std::uint64_t start() const { return m_start; } // in bytes
    std::uint64_t end() const { return m_start + m_bytes.size(); }
    bool inputEnded() const { return m_ended; }

    /// Why the input ended before its end, if it did: a fault behind blocks that are whole must not hide them.
    const std::optional<Error>& fault() const { return m_fault; }

    void readMore()
    {
        const auto before = m_bytes.size();
        m_bytes.resize(before + kReadAtOnce);
        auto filled = before;
        while (filled < m_bytes.size() && !m_ended) {
            const auto got = m_in->read(Bytes(m_bytes).subspan(filled));
            if (!got)
                m_fault = got.error();
            m_ended = !got || *got == 0;
            filled += got.value_or(0);
        }
        m_bytes.resize(filled);
    }
    /// Makes `count` bytes from byte `position` on available, fewer at the end.
    void reach(std::uint64_t position, std::size_t count)
    {
        while (!m_ended && end() < position + count)
            readMore();
    }
    ConstBytes from(std::uint64_t position) const
    {
        return position < end() ? bytes().subspan(static_cast<std::size_t>(position - m_start)) : ConstBytes();
    }
    void dropBefore(std::uint64_t position)
    {
        const auto count = static_cast<std::size_t>(std::min(position, end()) - m_start);
        if (count < kReadAtOnce || count < m_bytes.size() / 2)
            return;
        m_bytes.erase(m_bytes.begin(), m_bytes.begin() + static_cast<std::ptrdiff_t>(count));
        m_start += count;
    }

private:
    StreamPtr m_in;
    std::vector<std::byte> m_bytes;
    std::uint64_t m_start = 0;
    bool m_ended = false;
    std::optional<Error> m_fault;
};

/// A block decoded on its own: what a magic and the bytes behind it gave.
struct Job {
    std::uint64_t start = 0; // bit of the input
    std::vector<std::byte> packed; // from the byte that holds `start`
    Result<std::uint64_t> length = std::uint64_t{0}; // in bits, or why there is no block
    Bzip2Block block;
    bool begun = false, done = false; // guarded by the decoder's mutex
};
using JobPtr = std::shared_ptr<Job>;

class Bzip2Decoder final : public Decoder {
public:
    Bzip2Decoder(StreamPtr packed, const CodecParams& params)
        : Decoder(params.cancel)
        , m_threads(params.threads)
        , m_packed(std::move(packed))
    {
    }

private:
    Result<void> decode(SpanWriter& out) override
    {
        auto outcome = decodeBlocks(out);
        if (!outcome && outcome.error().code == ErrorCode::Truncated && m_packed.fault())
            return *m_packed.fault();
        return outcome;
    }

    Result<void> decodeBlocks(SpanWriter& out)
    {
        while (out.room() > 0 && !m_ended) {
            if (m_current) {
                m_runs.expand(out);
                if (m_runs.isDone())
                    TRY(endBlock(out));
            } else if (m_level == 0) {
                TRY(beginStream());
            } else {
                TRY(nextBlock());
            }
        }
        return {};
    }

    Result<void> beginStream()
    {
        const auto position = m_bit / 8;
        m_packed.reach(position, 4);
        const auto head = asText(m_packed.from(position));
        if (m_streams > 0 && head.empty()) {
            m_ended = true;
            return {};
        }
        if (m_streams > 0 && head.front() != 'B')
            return Error{ErrorCode::TrailingData, "bzip2: no stream after the end"};
        if (head.size() < 4)
            return Error{ErrorCode::Truncated, "bzip2: header"};
        if (head.substr(0, 3) != "BZh" || head[3] < '1' || head[3] > '9')
            return Error{ErrorCode::Corrupt, "bzip2: header"};
        m_level = static_cast<unsigned>(head[3] - '0');
        m_bit += 32;
        m_checksum = 0;
        ++m_streams;
        return {};
    }

    Result<void> nextBlock()
    {
        m_packed.reach(m_bit / 8, 12);
        const auto rest = m_packed.from(m_bit / 8);
        const auto magic = bitsAt(rest, m_bit % 8, kBzip2MagicBits);
        if (magic == kBzip2EndMagic && rest.size() * 8 >= m_bit % 8 + kBzip2MagicBits + 32)
            return endStream(rest);
        if (rest.size() * 8 < m_bit % 8 + kBzip2MagicBits + 32)
            return Error{ErrorCode::Truncated, "bzip2: the input ends between blocks"};
        if (magic != kBzip2BlockMagic)
            return Error{ErrorCode::Corrupt, "bzip2: neither a block nor the end"};
        m_packed.dropBefore(m_bit / 8);
        auto job = TRY(takeJob());
        const auto length = TRY(job->length);
        if (job->block.bytes().size() > m_level * kBlockUnit)
            return Error{ErrorCode::Corrupt, "bzip2: block larger than declared"};
        m_bit += length;
        m_runs.begin(job->block.bytes());
        m_current = std::move(job);
        return {};
    }

    Result<void> endBlock(SpanWriter& out)
    {
        const auto stored = m_current->block.checksum();
        m_free.push_back(std::move(m_current));
        m_current = nullptr;
        if (stored != m_runs.checksum())
            return Error{ErrorCode::ChecksumMismatch, "bzip2: checksum of a block"};
        m_checksum = (m_checksum << 1 | m_checksum >> 31) ^ stored;
        markVerified(out);
        return {};
    }

    Result<void> endStream(ConstBytes rest)
    {
        const auto stored = bitsAt(rest, m_bit % 8 + kBzip2MagicBits, 32);
        if (stored != m_checksum)
            return Error{ErrorCode::ChecksumMismatch, "bzip2: checksum of the stream"};
        m_bit += kBzip2MagicBits + 32;
        m_bit = (m_bit + 7) / 8 * 8;
        m_level = 0;
        return {};
    }

    // Ahead of the block at hand, every magic is taken for the start of a block and decoded by a worker. A result
    // counts only when the block before it ends where it begins; what is missing is decoded here.

    Result<JobPtr> takeJob()
    {
        if (m_threads > 1)
            workAhead();
        while (!m_jobs.empty() && m_jobs.front()->start < m_bit)
            m_jobs.pop_front(); // no block after all
        if (!m_jobs.empty() && m_jobs.front()->start == m_bit) {
            auto job = std::move(m_jobs.front());
            m_jobs.pop_front();
            waitFor(*job);
            // The worker saw bytes up to the next magic only, which may have been data.
            if (job->length || job->length.error().code != ErrorCode::Truncated)
                return job;
        }
        m_packed.reach(m_bit / 8, kMostPacked);
        auto job = freshJob(m_bit);
        decodeJob(*job, m_packed.from(m_bit / 8), m_bit % 8);
        return job;
    }

    void workAhead()
    {
        const std::size_t most = std::size_t{m_threads} * 2 + 2;
        while (m_jobs.size() < most && findMore()) {
            while (m_jobs.size() < most && m_starts.size() > 1)
                dispatch();
        }
    }

    /// Sees to it that at least two known starts wait: a block and the next one, where its bytes end for sure.
    /// False when there is no more.
    bool findMore()
    {
        while (!m_starts.empty() && m_starts.front() < m_bit)
            m_starts.pop_front();
        m_scanned = std::max(m_scanned, m_packed.start());
        while (m_starts.size() < 2 && !m_allFound) {
            if (!m_starts.empty() && m_scanned - m_starts.front() / 8 > 2 * kMostPacked)
                break; // no block is that long: it is decoded where it is met
            if (m_packed.inputEnded()) {
                m_allFound = true;
            } else {
                m_packed.readMore();
            }
            scan();
        }
        return m_starts.size() > 1;
    }

    void scan()
    {
        const auto bytes = m_packed.bytes();
        const auto from = static_cast<std::size_t>(m_scanned - m_packed.start());
        const auto to = m_allFound || bytes.size() < 7 ? bytes.size() : bytes.size() - 7; // a magic and its shift
        if (to <= from)
            return;
        m_finder.find(bytes, from, to, [&](std::uint64_t bit) { m_starts.push_back(m_packed.start() * 8 + bit); });
        m_scanned = m_packed.start() + to;
        if (m_allFound)
            m_starts.push_back(m_packed.end() * 8); // where the last block ends at the latest
    }

    void dispatch()
    {
        auto job = freshJob(m_starts[0]);
        const auto first = m_starts[0] / 8;
        const auto length = std::min<std::uint64_t>(m_starts[1] / 8 + 8 - first, kMostPacked);
        const auto bytes = m_packed.from(first);
        const auto part = bytes.first(static_cast<std::size_t>(std::min<std::uint64_t>(length, bytes.size())));
        job->packed.assign(part.begin(), part.end());
        m_starts.pop_front();
        m_jobs.push_back(job);
        if (!m_pool)
            m_pool = std::make_unique<WorkerPool>(m_threads);
        m_pool->add([this, job = std::move(job)] { run(*job); });
    }

    void run(Job& job)
    {
        {
            const std::lock_guard lock(m_mutex);
            job.begun = true;
        }
        decodeJob(job, job.packed, job.start % 8);
        {
            const std::lock_guard lock(m_mutex);
            job.done = true;
        }
        m_finished.notify_all();
    }

    static void decodeJob(Job& job, ConstBytes packed, std::uint64_t bit)
    {
        job.length = guarded([&]() -> Result<std::uint64_t> {
            const auto end = TRY(job.block.parse(packed, bit));
            job.block.unsort();
            return end - bit;
        });
    }

    void waitFor(Job& job)
    {
        std::unique_lock lock(m_mutex);
        while (!job.done) {
            if (!job.begun) {
                lock.unlock();
                m_pool->helpOut();
                lock.lock();
                if (!job.begun)
                    continue;
            }
            m_finished.wait(lock, [&] { return job.done; });
        }
    }

    JobPtr freshJob(std::uint64_t start)
    {
        JobPtr job;
        if (m_free.empty()) {
            job = std::make_shared<Job>();
        } else {
            job = std::move(m_free.back());
            m_free.pop_back();
        }
        job->start = start;
        job->begun = false;
        job->done = false;
        return job;
    }

    const unsigned m_threads;
    PackedWindow m_packed;
    bool m_ended = false;
    std::uint64_t m_bit = 0; // where the next stream or block begins
    std::uint64_t m_streams = 0;
    unsigned m_level = 0; // of the stream at hand, 0 between streams
    std::uint32_t m_checksum = 0; // of the stream's blocks so far
    JobPtr m_current; // whose bytes are being handed out
    Bzip2Runs m_runs;

    MagicFinder m_finder;
    std::uint64_t m_scanned = 0; // byte up to which magics have been looked for
    bool m_allFound = false;
    std::deque<std::uint64_t> m_starts; // bits at which a magic was seen and no job has begun
    std::deque<JobPtr> m_jobs; // in the order of their starts
    std::vector<JobPtr> m_free;
    std::mutex m_mutex;
    std::condition_variable m_finished;
    std::unique_ptr<WorkerPool> m_pool; // last: its threads stop before the rest goes
};

}

Result<StreamPtr> openBzip2(StreamPtr packed, const CodecParams& params)
{
    return StreamPtr(std::make_unique<Bzip2Decoder>(std::move(packed), params));
}

}
