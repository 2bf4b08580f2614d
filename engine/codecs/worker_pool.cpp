#include "engine/codecs/worker_pool.h"

#include <system_error>

namespace vantoro {

WorkerPool::WorkerPool(unsigned threads)
{
    try {
        for (unsigned i = 0; i < threads; ++i)
            m_threads.emplace_back([this] { work(); });
    } catch (const std::system_error&) {
        // The limit on threads is reached: those that were started do the work.
    }
}

WorkerPool::~WorkerPool()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
        m_jobs.clear();
    }
    m_wake.notify_all();
    for (auto& thread : m_threads)
        thread.join();
}

void WorkerPool::add(std::function<void()> job)
{
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_wake.notify_one();
}

bool WorkerPool::helpOut()
{
    std::function<void()> job;
    {
        const std::lock_guard lock(m_mutex);
        if (m_jobs.empty())
            return false;
        job = std::move(m_jobs.front());
        m_jobs.pop_front();
    }
    job();
    return true;
}

void WorkerPool::work()
{
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_stopping || !m_jobs.empty(); });
            if (m_jobs.empty())
                return;
            job = std::move(m_jobs.front());
            m_jobs.pop_front();
        }
        job();
    }
}

}
