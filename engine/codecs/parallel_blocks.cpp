#include "engine/codecs/parallel_blocks.h"

#include <algorithm>

namespace vantoro {

ParallelBlocks::ParallelBlocks(const CodecParams& params, std::uint64_t mostMemory)
    : Decoder(params.cancel)
    , m_threads(params.threads)
    , m_mostMemory(mostMemory)
{
}

ParallelBlocks::~ParallelBlocks() { stop(); }

void ParallelBlocks::stop()
{
    m_isStopping.store(true);
    m_pool.reset();
}

Result<void> ParallelBlocks::decode(SpanWriter& out)
{
    while (out.room() > 0) {
        TRY(beginJobs());
        if (m_jobs.empty())
            return finish(out);
        auto& job = *m_jobs.front();
        const bool isDone = waitForMore(job);
        const auto part = m_decoded.subspan(m_handedOut);
        const auto count = std::min(part.size(), out.room());
        if (count > 0)
            out.put(part.first(count));
        m_handedOut += count;
        if (!isDone || count < part.size())
            continue;
        if (!job.outcome)
            return job.outcome.error().code == ErrorCode::Truncated && !m_inputFault ? m_inputFault : job.outcome;
        markVerified(out);
        m_used -= job.memory();
        m_jobs.pop_front();
        m_handedOut = 0;
    }
    return {};
}

/// As many as the threads can work on, and one more that waits for them.
Result<void> ParallelBlocks::beginJobs()
{
    while (m_hasMore && m_jobs.size() <= m_threads && (m_jobs.empty() || m_used < m_mostMemory)) {
        auto job = std::make_unique<Job>();
        const auto more = readNext(*job);
        m_hasMore = more && *more;
        if (!more)
            m_inputFault = more.error();
        if (!m_hasMore && (more || job->packed.empty()))
            break;
        m_used += job->memory();
        if (!m_pool)
            m_pool = std::make_unique<WorkerPool>(m_threads);
        m_pool->add([this, raw = job.get()] { run(*raw); });
        m_jobs.push_back(std::move(job));
    }
    return m_jobs.empty() ? m_inputFault : Result<void>();
}

/// Until there is more than was handed out, or no more will come; then true.
bool ParallelBlocks::waitForMore(Job& job)
{
    while (m_pool->threads() == 0 && m_pool->helpOut()) {}
    std::unique_lock lock(m_mutex);
    m_waitsFor = &job;
    m_grown.wait(lock, [&] { return job.isDone || job.decoded.size() > m_handedOut; });
    m_waitsFor = nullptr;
    m_decoded = job.decoded;
    return job.isDone;
}

Result<void> ParallelBlocks::stillWanted() const
{
    if (m_isStopping.load(std::memory_order_relaxed))
        return Error{ErrorCode::Cancelled, "stopped"};
    return cancelToken().check();
}

void ParallelBlocks::run(Job& job)
{
    const auto outcome = guarded([&] { return decodeBlock(job); });
    const std::lock_guard lock(m_mutex);
    job.isDone = true;
    job.outcome = outcome;
    if (m_waitsFor == &job)
        m_grown.notify_one();
}

void ParallelBlocks::publish(Job& job, ConstBytes decoded)
{
    const std::lock_guard lock(m_mutex);
    job.decoded = decoded;
    if (m_waitsFor == &job)
        m_grown.notify_one();
}

}
