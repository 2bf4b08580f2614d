#include "app/IdleQuit.h"

#include "app/AppDelegate.h"

#include <QApplication>
#include <QSystemTrayIcon>
#include <QWidget>

#include <algorithm>
#include <chrono>

namespace vantoro {
namespace {

using namespace std::chrono_literals;
constexpr auto kInterval = 2s;
constexpr int kChecksBeforeQuitting = 5;

bool isAnyWindowOpen()
{
    return std::ranges::any_of(QApplication::topLevelWidgets(),
                               [](const QWidget* window) { return window->isVisible(); });
}

}

IdleQuit::IdleQuit(const AppDelegate& delegate) : m_delegate(delegate)
{
    connect(&m_timer, &QTimer::timeout, this, &IdleQuit::check);
    m_timer.start(kInterval);
}

void IdleQuit::check()
{
    const bool isReachable = m_delegate.isRunning() || isAnyWindowOpen() || QSystemTrayIcon::isSystemTrayAvailable();
    m_idleChecks = isReachable ? 0 : m_idleChecks + 1;
    if (m_idleChecks >= kChecksBeforeQuitting)
        QCoreApplication::quit();
}

}
