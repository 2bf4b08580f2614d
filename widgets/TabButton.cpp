#include "widgets/TabButton.h"

#include "widgets/Appearance.h"
#include "widgets/Style.h"
#include "widgets/Theme.h"

#include <QEvent>
#include <QFocusEvent>
#include <QPainter>

namespace vantoro {
namespace {

constexpr int kMinimumWidth = 84;

}

TabButton::TabButton(const QIcon& icon, const QString& text, QWidget* parent) : QAbstractButton(parent)
{
    setIcon(icon);
    setText(text);
    setAccessibleName(text);
    setCheckable(true);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
    setIconSize({theme::kIconMedium, theme::kIconMedium});
    connect(this, &QAbstractButton::toggled, this, &TabButton::glide);
    connect(&m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_shade = value.toDouble();
        update();
    });
}

QSize TabButton::sizeHint() const
{
    const int width = fontMetrics().horizontalAdvance(text()) + 2 * theme::kSpaceL;
    return {qMax(width, kMinimumWidth),
            iconSize().height() + fontMetrics().height() + 2 * theme::kSpaceS + theme::kSpaceXs};
}

bool TabButton::event(QEvent* event)
{
    const bool result = QAbstractButton::event(event);
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave)
        glide();
    return result;
}

void TabButton::focusInEvent(QFocusEvent* event)
{
    m_showsFocus = isKeyboardFocus(*event);
    QAbstractButton::focusInEvent(event);
}

void TabButton::glide()
{
    m_animation.stop();
    m_animation.setStartValue(m_shade);
    m_animation.setEndValue(isChecked() ? 1.0 : underMouse() ? 0.5 : 0.0);
    m_animation.setDuration(isVisible() ? Appearance::instance().duration(theme::kTransition) : 0);
    m_animation.start();
}

void TabButton::paintEvent(QPaintEvent*)
{
    const auto colors = theme::colors(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor ground = theme::accent(theme::Accent::Selection);
    ground.setAlphaF(static_cast<float>(0.2 * m_shade));
    painter.setBrush(ground);
    painter.drawRoundedRect(rect(), theme::kRadiusControl, theme::kRadiusControl);
    const QRect picture((width() - iconSize().width()) / 2, theme::kSpaceS, iconSize().width(), iconSize().height());
    icon().paint(&painter, picture);
    painter.setPen(isChecked() ? colors.text : colors.textSecondary);
    painter.drawText(rect().adjusted(0, picture.bottom(), 0, -theme::kSpaceXs), Qt::AlignCenter, text());
    if (hasFocus() && m_showsFocus)
        drawFocusRing(&painter, rect(), theme::kRadiusControl);
}

}
