#pragma once

#include "extraction/ProgressEstimate.h"
#include "extraction/TaskPanel.h"

#include <QElapsedTimer>

namespace vantoro {

class ElidedLabel;
class SmoothProgressBar;
struct XADProgress;

/// The archive waits for its turn.
class WaitPanel : public TaskPanel {
    Q_OBJECT

public:
    explicit WaitPanel(QWidget* parent);
    void setText(const QString& text);
    QString text() const;
    FlatButton* cancelButton() const { return m_cancel; }

private:
    ElidedLabel* m_waitfield;
    ElidedLabel* m_state;
    FlatButton* m_cancel;
};

/// Preparing (the bar wanders) or extracting.
class ProgressPanel : public TaskPanel {
    Q_OBJECT

public:
    explicit ProgressPanel(QWidget* parent);
    void setAction(const QString& text);
    QString action() const;
    void setName(const QString& name);
    QString name() const;
    bool isPreparing() const;
    void setPreparing(bool preparing);
    void setFraction(double fraction);
    double fraction() const;
    /// Bytes or entries done, rate and time left, as far as they mean something yet.
    void setDetail(const XADProgress& progress);
    void setStopping();
    /// The time while a question was open does not count as slow progress.
    void resumeClock();
    FlatButton* cancelButton() const { return m_cancel; }

private:
    ElidedLabel* m_actionfield;
    ElidedLabel* m_namefield;
    SmoothProgressBar* m_progressindicator;
    ElidedLabel* m_amount;
    QLabel* m_timeLeft;
    FlatButton* m_cancel;
    ProgressEstimate m_estimate;
    QElapsedTimer m_clock;
    bool m_isStopping = false;
};

/// "24.1 MB of 98.7 MB"; entries where the bytes are not known.
QString amountText(const XADProgress& progress);
/// "About 25 seconds left", in steps that do not flicker.
QString timeLeftText(int seconds);

}
