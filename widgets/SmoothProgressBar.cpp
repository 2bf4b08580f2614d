#include "widgets/SmoothProgressBar.h"

#include "widgets/Appearance.h"

#include <QPainter>
#include <QTimerEvent>

#include <cmath>

namespace vantoro {
namespace {

constexpr int kFrameMs = 33; // smooth enough for a bar, and leaves the processor to the extraction
constexpr int kWanderMs = 1600;
constexpr double kApproach = 0.35; // share of the distance covered in a frame
constexpr double kArrived = 0.0005;
constexpr int kThickness = 6;
constexpr double kSegment = 0.3;

}

SmoothProgressBar::SmoothProgressBar(QWidget* parent) : QProgressBar(parent)
{
    setTextVisible(false);
    setRange(0, 100);
    setValue(0);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_clock.start();
}

void SmoothProgressBar::setAccent(theme::Accent accent)
{
    m_accent = accent;
    update();
}

void SmoothProgressBar::setIndeterminate(bool indeterminate)
{
    if (m_indeterminate == indeterminate)
        return;
    m_indeterminate = indeterminate;
    setRange(0, indeterminate ? 0 : 100);
    m_clock.restart();
    updateTimer();
    update();
}

void SmoothProgressBar::setFraction(double fraction)
{
    m_target = std::isfinite(fraction) ? qBound(0.0, fraction, 1.0) : 0.0;
    if (!isVisible() || Appearance::instance().reducedMotion() || m_target < m_shown)
        m_shown = m_target;
    if (!m_indeterminate)
        setValue(static_cast<int>(m_target * 10) * 10);
    updateTimer();
    update();
}

QSize SmoothProgressBar::sizeHint() const { return {160, kThickness}; }

QSize SmoothProgressBar::minimumSizeHint() const { return {40, kThickness}; }

void SmoothProgressBar::updateTimer()
{
    const bool moving = m_indeterminate ? !Appearance::instance().reducedMotion() : m_shown < m_target;
    if (moving && isVisible()) {
        if (!m_timer.isActive())
            m_timer.start(kFrameMs, Qt::PreciseTimer, this);
    } else {
        m_timer.stop();
    }
}

void SmoothProgressBar::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return QProgressBar::timerEvent(event);
    if (!m_indeterminate) {
        m_shown += (m_target - m_shown) * kApproach;
        if (m_target - m_shown < kArrived)
            m_shown = m_target;
        updateTimer();
    }
    update();
}

void SmoothProgressBar::showEvent(QShowEvent* event)
{
    QProgressBar::showEvent(event);
    m_shown = m_target;
    updateTimer();
}

void SmoothProgressBar::hideEvent(QHideEvent* event)
{
    QProgressBar::hideEvent(event);
    m_timer.stop();
}

QRectF SmoothProgressBar::filledPart(const QRectF& groove) const
{
    QRectF part = groove;
    if (m_indeterminate) {
        const double phase = m_timer.isActive() ? double(m_clock.elapsed() % kWanderMs) / kWanderMs : 0.35;
        const double eased = 0.5 - 0.5 * std::cos(phase * 2 * M_PI);
        part.setWidth(groove.width() * kSegment);
        part.translate((groove.width() - part.width()) * eased, 0);
    } else {
        part.setWidth(groove.width() * m_shown);
    }
    if (layoutDirection() == Qt::RightToLeft)
        part.moveRight(groove.right() - (part.left() - groove.left()));
    return part;
}

void SmoothProgressBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF groove = rect();
    const qreal radius = groove.height() / 2;
    painter.setBrush(theme::colors(palette()).track);
    painter.drawRoundedRect(groove, radius, radius);
    QRectF part = filledPart(groove);
    if (part.width() <= 0)
        return;
    // A sliver narrower than the ends are round would look like a lens; it starts as a dot.
    if (part.width() < groove.height())
        part.setWidth(groove.height());
    painter.setBrush(isEnabled() ? theme::accent(m_accent) : theme::colors(palette()).textDisabled);
    painter.drawRoundedRect(part, radius, radius);
}

}
