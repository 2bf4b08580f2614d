#pragma once

#include "widgets/Theme.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

namespace vantoro {

/// A turning arc for work of unknown length. With reduced motion it stands still. It costs nothing while hidden.
class SpinningIndicator : public QWidget {
    Q_OBJECT

public:
    explicit SpinningIndicator(QWidget* parent = nullptr);

    void setAccent(theme::Accent accent);
    void startAnimation();
    void stopAnimation();
    bool isAnimating() const { return m_animating; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void updateTimer();

    theme::Accent m_accent = theme::Accent::Selection;
    bool m_animating = false;
    QBasicTimer m_timer;
    QElapsedTimer m_clock;
};

}
