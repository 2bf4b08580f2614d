#pragma once

#include <QObject>

class QDBusPendingCallWatcher;

namespace vantoro {

/// Finds out whether the desktop has a tray, now or later. QSystemTrayIcon gives its first answer for ever, so it is
/// asked nothing before there is one.
class TrayPresence final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    /// Asks now, and whenever a tray may have come.
    void watch();

signals:
    void found();

private slots:
    void askWatcher();

private:
    void takeAnswer(QDBusPendingCallWatcher& answer);
    /// A tray of the older kind, which an X11 panel announces.
    static bool hasSelectionOwner();
};

}
