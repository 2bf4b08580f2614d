#include "widgets/SwitchButton.h"

#include "widgets/Appearance.h"
#include "widgets/Style.h"
#include "widgets/Theme.h"

#include <QFocusEvent>
#include <QPainter>

namespace vantoro {
namespace {

constexpr QSize kSize(44, 26);
constexpr int kInset = 4;

}

SwitchButton::SwitchButton(QWidget* parent) : QAbstractButton(parent)
{
    setCheckable(true);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_position = value.toDouble();
        update();
    });
}

void SwitchButton::checkStateSet()
{
    m_animation.stop();
    m_animation.setStartValue(m_position);
    m_animation.setEndValue(isChecked() ? 1.0 : 0.0);
    m_animation.setDuration(isVisible() ? Appearance::instance().duration(theme::kTransition) : 0);
    m_animation.start();
}

void SwitchButton::nextCheckState()
{
    QAbstractButton::nextCheckState();
    checkStateSet();
}

QSize SwitchButton::sizeHint() const { return kSize; }

void SwitchButton::focusInEvent(QFocusEvent* event)
{
    m_showsFocus = isKeyboardFocus(*event);
    QAbstractButton::focusInEvent(event);
}

void SwitchButton::paintEvent(QPaintEvent*)
{
    const auto colors = theme::colors(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF groove = QRectF(rect()).adjusted(1, 2, -1, -2);
    const QColor off = theme::mix(colors.surface, colors.text, underMouse() ? 0.5 : 0.42);
    const QColor on = isEnabled() ? theme::accentFill(theme::Accent::Selection) : colors.textDisabled;
    painter.setBrush(theme::mix(isEnabled() ? off : colors.track, on, m_position));
    painter.drawRoundedRect(groove, groove.height() / 2, groove.height() / 2);
    const double edge = groove.height() - kInset;
    const double travel = groove.width() - edge - kInset;
    const double share = isRightToLeft() ? 1 - m_position : m_position;
    painter.setBrush(Qt::white);
    painter.drawEllipse(QRectF(groove.left() + kInset / 2.0 + share * travel, groove.top() + kInset / 2.0, edge, edge));
    if (hasFocus() && m_showsFocus)
        drawFocusRing(&painter, rect(), kSize.height() / 2.0);
}

}
