#include "widgets/SpinningIndicator.h"

#include "widgets/Appearance.h"

#include <QPainter>
#include <QTimerEvent>

namespace vantoro {
namespace {

constexpr int kFrameMs = 16;
constexpr int kTurnMs = 1100;
constexpr int kFullCircle = 360 * 16; // QPainter counts sixteenths of a degree
constexpr int kArc = kFullCircle * 3 / 10;

}

SpinningIndicator::SpinningIndicator(QWidget* parent) : QWidget(parent)
{
    setAccessibleName(tr("Busy"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&Appearance::instance(), &Appearance::changed, this, &SpinningIndicator::updateTimer);
}

void SpinningIndicator::setAccent(theme::Accent accent)
{
    m_accent = accent;
    update();
}

void SpinningIndicator::startAnimation()
{
    m_animating = true;
    m_clock.start();
    updateTimer();
    update();
}

void SpinningIndicator::stopAnimation()
{
    m_animating = false;
    updateTimer();
    update();
}

QSize SpinningIndicator::sizeHint() const
{
    const int edge = fontMetrics().height() + theme::kSpaceXs;
    return {edge, edge};
}

void SpinningIndicator::updateTimer()
{
    if (m_animating && isVisible() && !Appearance::instance().reducedMotion())
        m_timer.start(kFrameMs, Qt::PreciseTimer, this);
    else
        m_timer.stop();
}

void SpinningIndicator::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer.timerId())
        update();
    else
        QWidget::timerEvent(event);
}

void SpinningIndicator::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    updateTimer();
}

void SpinningIndicator::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_timer.stop();
}

void SpinningIndicator::paintEvent(QPaintEvent*)
{
    if (!m_animating)
        return;
    const qreal edge = qMin(width(), height());
    const qreal thickness = qMax(2.0, edge / 9);
    const QRectF circle = QRectF((width() - edge) / 2, (height() - edge) / 2, edge, edge)
                              .adjusted(thickness / 2, thickness / 2, -thickness / 2, -thickness / 2);
    const qint64 elapsed = m_timer.isActive() ? m_clock.elapsed() % kTurnMs : 0;
    const int angle = static_cast<int>(kFullCircle / 4 - kFullCircle * elapsed / kTurnMs);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(theme::colors(palette()).track, thickness));
    painter.drawEllipse(circle);
    painter.setPen(QPen(theme::accent(m_accent), thickness, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, angle, -kArc);
}

}
