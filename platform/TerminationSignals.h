#pragma once

#include <QObject>

#include <optional>

class QSocketNotifier;

namespace vantoro {

/// Turns SIGINT, SIGTERM and SIGHUP into a signal of the main loop, so that the program can end in order: nothing
/// half-written stays. A second one ends the program at once. One object at a time, on the main thread.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;
    Q_DISABLE_COPY_MOVE(TerminationSignals)

    /// 128 plus the signal's number, as a shell states it; nothing if there was none.
    std::optional<int> exitStatus() const;

signals:
    void received();

private:
    void take();

    QSocketNotifier* m_notifier = nullptr;
    int m_number = 0;
};

}
