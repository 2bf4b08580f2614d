#include "platform/MainLoop.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

#include <deque>
#include <mutex>

namespace vantoro {
namespace {

/// Calls wait here, under a lock of our own, and an event only says that there are some: what is handed over between
/// threads stays visible to the tools that look for races, which cannot see into Qt's event queue.
class Performer final : public QObject {
public:
    void post(QObject* target, std::function<void()> call)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_calls.push_back({target, std::move(call)});
        }
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        if (Call call = take(); call.target && call.perform)
            call.perform();
        return true;
    }

private:
    struct Call {
        QPointer<QObject> target;
        std::function<void()> perform;
    };
    Call take()
    {
        const std::lock_guard lock(m_mutex);
        if (m_calls.empty())
            return {};
        Call call = std::move(m_calls.front());
        m_calls.pop_front();
        return call;
    }

    std::mutex m_mutex;
    std::deque<Call> m_calls;
};

Performer& performer()
{
    static Performer* const instance = [] {
        auto* made = new Performer; // never destroyed: threads may outlive the statics
        made->moveToThread(QCoreApplication::instance()->thread());
        return made;
    }();
    return *instance;
}

}

void performOnMainThread(QObject* target, std::function<void()> call) { performer().post(target, std::move(call)); }

}
