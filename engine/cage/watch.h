#pragma once

#include "engine/cage/worker_process.h"

#include <algorithm>

namespace vantoro::cage {

/// Notices a worker that died or that uses processor time without getting on.
class Watch {
public:
    Watch(WorkerProcess& worker, std::uint64_t sourceSize)
        : m_worker(worker)
        , m_readLimit(sourceSize * 4 + (1 << 20))
        , m_cpuAtProgress(worker.cpuSeconds())
    {
    }

    /// Reading over and over is no progress: counted up to four times the archive's size.
    std::uint64_t packedBytesRead() const
    {
        const auto claimed = m_worker.area().header().packedBytesRead.load(std::memory_order_relaxed);
        return std::min(claimed, m_readLimit);
    }

    /// `taken`: bytes that came out of the rings so far.
    Result<void> check(std::uint64_t taken)
    {
        if (!m_worker.isAlive())
            return Error{ErrorCode::DecoderStopped, "cage: the worker died"};
        const auto progress = taken + packedBytesRead();
        const auto cpu = m_worker.cpuSeconds();
        if (progress != m_lastProgress) {
            m_lastProgress = progress;
            m_cpuAtProgress = cpu;
        }
        if (cpu - m_cpuAtProgress > kPatience)
            return Error{ErrorCode::Stalled, "cage: the worker does not get on"};
        return {};
    }
    /// After a question: the time that the answer took is not the worker's.
    void restart() { m_cpuAtProgress = m_worker.cpuSeconds(); }

private:
    static constexpr double kPatience = 10; // seconds of the worker's own processor time
    WorkerProcess& m_worker;
    std::uint64_t m_readLimit;
    std::uint64_t m_lastProgress = 0;
    double m_cpuAtProgress;
};

}
