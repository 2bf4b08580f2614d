#include "widgets/StyleParts.h"

#include "widgets/Icons.h"
#include "widgets/Style.h"
#include "widgets/Theme.h"

#include <QAbstractSpinBox>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

namespace vantoro::styleparts {
namespace {

constexpr qreal kHairline = 1.0;

QRectF inset(const QRect& rect, qreal by) { return QRectF(rect).adjusted(by, by, -by, -by); }

void drawBox(QPainter* painter, const QRect& rect, const QColor& fill, const QColor& border, qreal radius)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(fill);
    painter->setPen(border.isValid() ? QPen(border, kHairline) : QPen(Qt::NoPen));
    painter->drawRoundedRect(inset(rect, kHairline / 2), radius, radius);
    painter->restore();
}

QColor controlFill(const QStyleOption& option, const theme::Colors& colors)
{
    if (!(option.state & QStyle::State_Enabled))
        return theme::mix(colors.surface, colors.window, 0.6);
    if (option.state & QStyle::State_Sunken)
        return colors.pressed;
    if (option.state & QStyle::State_MouseOver)
        return colors.hover;
    return option.palette.color(QPalette::Button);
}

void drawStepArrow(QPainter* painter, const QRect& rect, const QColor& color, bool isUp)
{
    painter->save();
    painter->translate(QRectF(rect).center());
    painter->rotate(isUp ? 180 : 0);
    painter->scale(0.8, 0.8);
    drawChevron(painter, QRectF(-8, -8, 16, 16), color);
    painter->restore();
}

}

void drawPushButton(const QStyleOption& option, QPainter* painter)
{
    const auto colors = theme::colors(option.palette);
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool prominent = button && (button->features & QStyleOptionButton::DefaultButton) && enabled;
    QColor fill = controlFill(option, colors);
    if (prominent) {
        fill = theme::accentFill(theme::Accent::Selection);
        if (option.state & QStyle::State_Sunken)
            fill = fill.darker(115);
    }
    drawBox(painter, option.rect, fill, prominent ? QColor() : colors.border, theme::kRadiusControl);
    if ((option.state & QStyle::State_HasFocus) && (option.state & QStyle::State_KeyboardFocusChange))
        drawFocusRing(painter, option.rect, theme::kRadiusControl);
}

void drawLineEdit(const QStyleOption& option, QPainter* painter)
{
    const auto colors = theme::colors(option.palette);
    const bool enabled = option.state & QStyle::State_Enabled;
    drawBox(painter, option.rect, enabled ? colors.surface : colors.window, colors.border, theme::kRadiusControl);
    if (option.state & QStyle::State_HasFocus)
        drawFocusRing(painter, option.rect, theme::kRadiusControl);
}

void drawIndicator(const QStyleOption& option, QPainter* painter, bool round)
{
    const auto colors = theme::colors(option.palette);
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool on = option.state & (QStyle::State_On | QStyle::State_NoChange);
    const qreal radius = round ? option.rect.width() / 2.0 : 4.0;
    const QColor filled = enabled ? theme::accentFill(theme::Accent::Selection) : colors.textDisabled;
    drawBox(painter, option.rect, on ? filled : controlFill(option, colors),
            on ? QColor() : theme::mix(colors.border, colors.text, 0.35), radius);
    if (!on)
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRectF box = option.rect;
    painter->setPen(QPen(theme::textOn(filled), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (round) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(theme::textOn(filled));
        painter->drawEllipse(box.center(), box.width() / 5, box.width() / 5);
    } else if (option.state & QStyle::State_NoChange) {
        painter->drawLine(box.center() - QPointF(box.width() / 4, 0), box.center() + QPointF(box.width() / 4, 0));
    } else {
        QPainterPath tick(box.topLeft() + QPointF(box.width() * 0.25, box.height() * 0.52));
        tick.lineTo(box.topLeft() + QPointF(box.width() * 0.43, box.height() * 0.70));
        tick.lineTo(box.topLeft() + QPointF(box.width() * 0.76, box.height() * 0.32));
        painter->drawPath(tick);
    }
    painter->restore();
}

void drawChevron(QPainter* painter, const QRectF& rect, const QColor& color)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF center = rect.center();
    QPainterPath path(center + QPointF(-4, -2));
    path.lineTo(center + QPointF(0, 2));
    path.lineTo(center + QPointF(4, -2));
    painter->drawPath(path);
    painter->restore();
}

void drawScrollBar(const QStyleOptionSlider& option, const QRect& slider, QPainter* painter)
{
    const auto colors = theme::colors(option.palette);
    const bool active = option.activeSubControls & QStyle::SC_ScrollBarSlider;
    const bool hovered = active && (option.state & (QStyle::State_MouseOver | QStyle::State_Sunken));
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(theme::mix(colors.surface, colors.text, hovered ? 0.5 : 0.28));
    const QRectF thumb = inset(slider, 3);
    const qreal radius = qMin(thumb.width(), thumb.height()) / 2;
    if (option.maximum > option.minimum)
        painter->drawRoundedRect(thumb, radius, radius);
    painter->restore();
}

void drawComboBox(const QStyleOption& option, const QRect& arrow, QPainter* painter)
{
    const auto colors = theme::colors(option.palette);
    drawBox(painter, option.rect, controlFill(option, colors), colors.border, theme::kRadiusControl);
    drawChevron(painter, arrow, colors.textSecondary);
    if (option.state & QStyle::State_HasFocus)
        drawFocusRing(painter, option.rect, theme::kRadiusControl);
}

void drawSpinBox(const QStyleOptionSpinBox& option, const QRect& up, const QRect& down, QPainter* painter)
{
    drawLineEdit(option, painter);
    const auto colors = theme::colors(option.palette);
    const auto step = [&](const QRect& rect, bool isUp) {
        const auto part = isUp ? QStyle::SC_SpinBoxUp : QStyle::SC_SpinBoxDown;
        const auto enabled = isUp ? QAbstractSpinBox::StepUpEnabled : QAbstractSpinBox::StepDownEnabled;
        const bool canStep = (option.stepEnabled & enabled) && (option.state & QStyle::State_Enabled);
        const bool isHot = (option.activeSubControls & part) && (option.state & QStyle::State_MouseOver);
        if (canStep && isHot)
            drawBox(painter, rect, option.state & QStyle::State_Sunken ? colors.pressed : colors.hover, QColor(), 3);
        drawStepArrow(painter, rect, canStep ? colors.textSecondary : colors.textDisabled, isUp);
    };
    step(up, true);
    step(down, false);
}

void drawHeaderGround(const QStyleOption& option, QPainter* painter)
{
    const auto colors = theme::colors(option.palette);
    painter->fillRect(option.rect, colors.surface);
    painter->fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1), colors.border);
}

void drawMenuPanel(const QStyleOption& option, QPainter* painter)
{
    const auto colors = theme::colors(option.palette);
    painter->save();
    painter->setBrush(colors.surface);
    painter->setPen(theme::mix(colors.border, colors.text, 0.12));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

void drawMenuSeparator(const QStyleOption& option, QPainter* painter)
{
    const QRect line(option.rect.left() + theme::kSpaceS, option.rect.center().y(),
                     option.rect.width() - 2 * theme::kSpaceS, 1);
    painter->fillRect(line, theme::colors(option.palette).border);
}

void drawMenuSelection(const QStyleOption& option, QPainter* painter)
{
    drawBox(painter, option.rect, option.palette.color(QPalette::Highlight), QColor(), 4);
}

QIcon messageIcon(QStyle::StandardPixmap which, const QPalette& palette)
{
    const auto colors = theme::colors(palette);
    constexpr int edge = 40;
    constexpr qreal ratio = 3; // of the finest screens
    const auto icon = [&](const char* glyph, const QColor& color) {
        return QIcon(icons::glyph(QLatin1String(glyph), color, edge, ratio));
    };
    switch (which) {
    case QStyle::SP_MessageBoxInformation:
        return icon("glyph-info", theme::accent(theme::Accent::Selection));
    case QStyle::SP_MessageBoxQuestion:
        return icon("glyph-help", theme::accent(theme::Accent::Selection));
    case QStyle::SP_MessageBoxWarning:
        return icon("glyph-warning", colors.warning);
    case QStyle::SP_MessageBoxCritical:
        return icon("glyph-error", colors.danger);
    default:
        return {};
    }
}

}
