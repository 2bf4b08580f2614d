#pragma once

#include "engine/codecs/worker_pool.h"
#include "engine/io/cancel.h"

#include <deque>
#include <future>

namespace vantoro {

/// Jobs that run side by side and whose results are taken in the order in which the jobs were given. At most
/// `2 × threads + 1` results wait, so memory stays bounded.
template <class T> class OrderedJobs {
public:
    using Take = std::function<Result<void>(T)>;
    OrderedJobs(unsigned threads, Take take) : m_take(std::move(take)), m_limit(2 * threads + 1), m_pool(threads) {}

    Result<void> add(std::function<T()> job)
    {
        while (m_waiting.size() >= m_limit)
            TRY(takeFirst());
        auto task = std::make_shared<std::packaged_task<T()>>(std::move(job));
        m_waiting.push_back(task->get_future());
        m_pool.add([task] { (*task)(); });
        while (!m_waiting.empty() && m_waiting.front().wait_for(std::chrono::seconds(0)) == std::future_status::ready)
            TRY(takeFirst());
        return {};
    }
    /// Takes everything that is still on its way.
    Result<void> finish()
    {
        while (!m_waiting.empty())
            TRY(takeFirst());
        return {};
    }

private:
    Result<void> takeFirst()
    {
        auto first = std::move(m_waiting.front());
        m_waiting.pop_front();
        while (m_pool.threads() == 0 && first.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
            m_pool.helpOut();
        return m_take(first.get());
    }
    Take m_take;
    std::size_t m_limit;
    std::deque<std::future<T>> m_waiting;
    WorkerPool m_pool; // goes first: its threads use the tasks
};

}
