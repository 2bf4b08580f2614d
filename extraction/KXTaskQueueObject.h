#pragma once

#include "platform/Action.h"

#include <deque>
#include <tuple>

namespace vantoro {

class KXTaskQueueObject;

/// Records one call on a target and queues it; made by KXTaskQueueObject::taskWithTarget().
template <class Target> class TUTaskTrampoline {
public:
    TUTaskTrampoline(Target* actual, KXTaskQueueObject* parent) : m_actual(actual), m_parent(parent) {}
    /// Returns at once. The arguments are kept by value until the task is removed; a pointer keeps nothing alive.
    template <class Owner, class... Params, class... Args>
    void call(void (Owner::*method)(Params...), Args&&... args) const;

private:
    Target* m_actual;
    KXTaskQueueObject* m_parent;
};

/// Runs recorded calls one after another on the main thread, each in a later turn of the main loop than the one that
/// queued it or ended its predecessor. A task ends only when somebody calls finishCurrentTask(), not when its method
/// returns.
class KXTaskQueueObject : public QObject {
public:
    KXTaskQueueObject() = default;

    /// Told each time the queue runs dry, with the queue.
    void setFinishAction(Action<KXTaskQueueObject*> action) { m_finishAction = std::move(action); }
    /// `target` outlives the queued calls, or they do nothing.
    template <class Target> TUTaskTrampoline<Target> taskWithTarget(Target* target) { return {target, this}; }
    void newTask(QObject* target, std::function<void()> invocation);

    void finishCurrentTask();
    /// The head task waits for a restart(); nothing clears the stalled flag.
    void stallCurrentTask();
    void restart();

    bool isRunning() const { return m_running; }
    bool isStalled() const { return m_stalled; }
    /// Neither running nor stalled; does not look at what is queued.
    bool isEmpty() const { return !m_running && !m_stalled; }

private:
    struct Task {
        QPointer<QObject> target;
        std::function<void()> invocation;
    };
    void startTask();

    std::deque<Task> m_tasks; // the head is the current one while m_running
    bool m_running = false;
    bool m_stalled = false;
    Action<KXTaskQueueObject*> m_finishAction;
};

template <class Target>
template <class Owner, class... Params, class... Args>
void TUTaskTrampoline<Target>::call(void (Owner::*method)(Params...), Args&&... args) const
{
    m_parent->newTask(m_actual,
                      [actual = m_actual, method,
                       values = std::tuple<std::decay_t<Params>...>(std::forward<Args>(args)...)]() mutable {
                          std::apply([&](auto&... value) { (actual->*method)(value...); }, values);
                      });
}

}
