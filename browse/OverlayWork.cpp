#include "browse/OverlayWork.h"

#include <exception>
#include <utility>

namespace vantoro {
namespace {

/// What a library throws ends the task and no more.
void runGuarded(const std::function<void(OverlayProgress&)>& block, OverlayProgress& progress)
{
    try {
        block(progress);
    } catch (const std::exception& exception) {
        qWarning("ERR: %s", exception.what());
    }
}

}

void OverlayWork::run(OverlayTask task)
{
    Q_ASSERT(!m_isRunning);
    m_isRunning = true;
    m_cancel = task.cancel;
    task.block = [block = std::move(task.block)](OverlayProgress& progress) { runGuarded(block, progress); };
    task.finished = [this, finished = std::move(task.finished)] { taskFinished(finished); };
    m_view.showWhileExecuting(std::move(task));
}

void OverlayWork::taskFinished(const std::function<void()>& finished)
{
    m_isRunning = false;
    m_cancel = {};
    const auto next = std::exchange(m_next, {});
    if (next)
        next();
    else if (finished)
        finished();
}

void OverlayWork::stopThen(std::function<void()> next)
{
    if (!m_isRunning)
        return next();
    m_next = std::move(next);
    stop();
}

void OverlayWork::stop()
{
    if (m_cancel)
        m_cancel();
}

}
