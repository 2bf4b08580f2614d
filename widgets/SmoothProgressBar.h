#pragma once

#include "widgets/Theme.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QProgressBar>

namespace vantoro {

/// A slim bar that glides to each new value. Assistive technology hears of every tenth part, not of every frame.
class SmoothProgressBar : public QProgressBar {
    Q_OBJECT

public:
    explicit SmoothProgressBar(QWidget* parent = nullptr);

    void setAccent(theme::Accent accent);
    /// Unknown length: a segment that wanders.
    void setIndeterminate(bool indeterminate);
    bool isIndeterminate() const { return m_indeterminate; }
    /// 0 to 1; what lies outside is cut off.
    void setFraction(double fraction);
    double fraction() const { return m_target; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void updateTimer();
    QRectF filledPart(const QRectF& groove) const;

    theme::Accent m_accent = theme::Accent::Extract;
    bool m_indeterminate = false;
    double m_target = 0;
    double m_shown = 0;
    QBasicTimer m_timer;
    QElapsedTimer m_clock;
};

}
