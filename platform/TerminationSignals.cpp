#include "platform/TerminationSignals.h"

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <sys/eventfd.h>
#include <unistd.h>

namespace vantoro {
namespace {

constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};

// A handler can reach nothing else.
int g_event = -1;
volatile std::sig_atomic_t g_number = 0;

/// Only what may be called in a handler.
void wake(int number)
{
    const int kept = errno;
    g_number = number;
    const std::uint64_t value = 1;
    [[maybe_unused]] const auto written = write(g_event, &value, sizeof value);
    errno = kept;
}

}

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent)
{
    g_event = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (g_event < 0)
        return; // such signals end the program at once, as they would anyway
    m_notifier = new QSocketNotifier(g_event, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &TerminationSignals::take);
    struct sigaction action = {};
    action.sa_handler = wake;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int number : kSignals) {
        struct sigaction old = {};
        // Who started us without a terminal (nohup) may want us to outlive it.
        if (sigaction(number, nullptr, &old) == 0 && old.sa_handler != SIG_IGN)
            sigaction(number, &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals()
{
    if (g_event < 0)
        return;
    for (const int number : kSignals) {
        struct sigaction old = {};
        if (sigaction(number, nullptr, &old) == 0 && old.sa_handler == wake)
            std::signal(number, SIG_DFL);
    }
    close(std::exchange(g_event, -1));
}

std::optional<int> TerminationSignals::exitStatus() const
{
    return m_number > 0 ? std::optional(128 + m_number) : std::nullopt;
}

void TerminationSignals::take()
{
    std::uint64_t value = 0;
    if (read(g_event, &value, sizeof value) != sizeof value)
        return;
    m_number = g_number;
    emit received();
}

}
