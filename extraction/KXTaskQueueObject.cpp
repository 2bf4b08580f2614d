#include "extraction/KXTaskQueueObject.h"

namespace vantoro {

void KXTaskQueueObject::newTask(QObject* target, std::function<void()> invocation)
{
    m_tasks.push_back({target, std::move(invocation)});
    restart();
}

void KXTaskQueueObject::restart()
{
    if (m_running)
        return;
    if (m_tasks.empty()) {
        m_finishAction(this);
        return;
    }
    m_running = true;
    performOnMainThread(this, [this] { startTask(); });
}

void KXTaskQueueObject::startTask()
{
    if (!m_running || m_tasks.empty())
        return; // stalled between being scheduled and started
    if (!m_tasks.front().target) {
        finishCurrentTask(); // nobody is left who could
        return;
    }
    const auto invocation = m_tasks.front().invocation; // the task may finish itself while it runs
    invocation();
}

void KXTaskQueueObject::finishCurrentTask()
{
    if (!m_running)
        return;
    m_tasks.pop_front();
    m_running = false;
    restart();
}

void KXTaskQueueObject::stallCurrentTask()
{
    if (!m_running)
        return;
    m_running = false;
    m_stalled = true;
}

}
