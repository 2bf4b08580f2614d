#pragma once

#include "platform/MainLoop.h"

#include <QObject>
#include <QPointer>
#include <QThread>

#include <functional>
#include <utility>

namespace vantoro {

/// A call to make later on one object, on that object's thread; nothing happens once the object is gone.
///
///     job->runWithFinishAction({this, &AppDelegate::archiveControllerFinished});
template <class... Args> class Action {
public:
    Action() = default;
    template <class Target, class Owner>
    Action(Target* target, void (Owner::*method)(Args...))
        : m_target(target)
        , m_call([owner = static_cast<Owner*>(target), method](Args... args) {
            (owner->*method)(std::forward<Args>(args)...);
        })
    {
    }
    /// For callers without a method of the right shape; `target` bounds the closure's life.
    Action(QObject* target, std::function<void(Args...)> call) : m_target(target), m_call(std::move(call)) {}

    explicit operator bool() const { return m_call && m_target; }

    /// Calls now; only on the target's thread.
    void operator()(Args... args) const
    {
        if (!*this)
            return;
        Q_ASSERT(m_target->thread() == QThread::currentThread());
        const auto call = m_call; // the call may replace the action that it was started from
        call(std::forward<Args>(args)...);
    }

    /// Calls in a later turn of the main loop; from any thread that knows the target to be alive.
    void later(Args... args) const
    {
        if (*this)
            performOnMainThread(m_target.data(), [call = m_call, ... values = args]() { call(values...); });
    }

private:
    QPointer<QObject> m_target;
    std::function<void(Args...)> m_call;
};

}
