#pragma once

#include <QObject>
#include <QPointF>

#include <functional>
#include <map>
#include <memory>

namespace vantoro {

/// Bits of an event mask.
enum EventTypeMask : quint64 {
    kLeftMouseDownMask = 1U << 1,
    kRightMouseDownMask = 1U << 3,
};

/// Something that happened outside the program.
struct GlobalEvent {
    quint64 type = kLeftMouseDownMask; ///< one bit
};

/// Where events outside the program are learnt of. Main thread.
class GlobalEvents {
public:
    using Handler = std::function<void(const GlobalEvent&)>;
    using Token = quint64; // 0 is none
    virtual ~GlobalEvents() = default;
    virtual Token addMonitor(quint64 mask, Handler handler) = 0;
    virtual void removeMonitor(Token token) = 0;

    /// The desktop's.
    static GlobalEvents& shared();
};

/// Calls back for events outside the program while it is started.
class EventMonitor {
public:
    static std::unique_ptr<EventMonitor> eventMonitorWithEventMask(quint64 mask, GlobalEvents::Handler callback,
                                                                   GlobalEvents& events = GlobalEvents::shared());
    ~EventMonitor();
    EventMonitor(const EventMonitor&) = delete;
    EventMonitor& operator=(const EventMonitor&) = delete;

    /// A second start replaces the token; the first monitor stays.
    void startMonitor();
    void stopMonitor();
    bool isMonitoring() const { return m_token != 0; }

private:
    EventMonitor(quint64 mask, GlobalEvents::Handler callback, GlobalEvents& events);

    quint64 m_eventMask;
    GlobalEvents::Handler m_callback;
    GlobalEvents& m_events;
    GlobalEvents::Token m_token = 0;
};

/// Desktops tell a program nothing of clicks elsewhere but that it is no longer the active one: that stands for them.
class DesktopEvents final : public QObject, public GlobalEvents {
    Q_OBJECT
public:
    DesktopEvents();
    Token addMonitor(quint64 mask, Handler handler) override;
    void removeMonitor(Token token) override { m_monitors.erase(token); }

private:
    void applicationLeft();

    struct Monitor {
        quint64 mask;
        Handler handler;
    };
    std::map<Token, Monitor> m_monitors;
    Token m_last = 0;
};

}
