#include "app/EventMonitor.h"

#include <QGuiApplication>

namespace vantoro {

GlobalEvents& GlobalEvents::shared()
{
    static DesktopEvents events;
    return events;
}

std::unique_ptr<EventMonitor> EventMonitor::eventMonitorWithEventMask(quint64 mask, GlobalEvents::Handler callback,
                                                                      GlobalEvents& events)
{
    return std::unique_ptr<EventMonitor>(new EventMonitor(mask, std::move(callback), events));
}

EventMonitor::EventMonitor(quint64 mask, GlobalEvents::Handler callback, GlobalEvents& events)
    : m_eventMask(mask)
    , m_callback(std::move(callback))
    , m_events(events)
{
}

EventMonitor::~EventMonitor() { stopMonitor(); }

void EventMonitor::startMonitor() { m_token = m_events.addMonitor(m_eventMask, m_callback); }

void EventMonitor::stopMonitor()
{
    if (m_token != 0)
        m_events.removeMonitor(std::exchange(m_token, 0));
}

DesktopEvents::DesktopEvents()
{
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationInactive)
            applicationLeft();
    });
}

GlobalEvents::Token DesktopEvents::addMonitor(quint64 mask, Handler handler)
{
    m_monitors.emplace(++m_last, Monitor{mask, std::move(handler)});
    return m_last;
}

void DesktopEvents::applicationLeft()
{
    const auto monitors = m_monitors; // a handler may take its monitor away
    for (const auto& [token, monitor] : monitors) {
        if ((monitor.mask & kLeftMouseDownMask) && m_monitors.contains(token))
            monitor.handler({.type = kLeftMouseDownMask});
    }
}

}
