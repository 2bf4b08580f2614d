#pragma once

#include <QObject>
#include <QTimer>

namespace vantoro {

class AppDelegate;

/// Ends a program that nobody can see or reach: no window is open, no job runs, and there is no status area that could
/// hold an icon of it. With a status area it stays, as closing the last window is not meant to end it.
class IdleQuit final : public QObject {
    Q_OBJECT
public:
    explicit IdleQuit(const AppDelegate& delegate);

private:
    void check();

    const AppDelegate& m_delegate;
    QTimer m_timer;
    int m_idleChecks = 0;
};

}
