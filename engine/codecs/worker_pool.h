#pragma once

#include "engine/io/result.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace vantoro {

/// A few threads that work off jobs in the order in which they were given. Jobs must not throw.
class WorkerPool {
public:
    /// Where threads cannot be had there are fewer, or none: then jobs wait until somebody calls helpOut().
    explicit WorkerPool(unsigned threads);
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;
    /// Drops the jobs that have not begun and waits for the others.
    ~WorkerPool();

    unsigned threads() const { return static_cast<unsigned>(m_threads.size()); }
    void add(std::function<void()> job);
    /// Runs the next waiting job on the caller's thread; false when none waits.
    bool helpOut();

private:
    void work();
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_jobs;
    std::vector<std::thread> m_threads;
    bool m_stopping = false;
};

}
