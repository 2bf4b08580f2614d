#include "widgets/Style.h"

#include "widgets/Theme.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QStyleOption>

namespace vantoro {
namespace {

constexpr int kScrollBarExtent = 12;
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

}

bool isKeyboardFocus(const QFocusEvent& event)
{
    return event.reason() != Qt::MouseFocusReason && event.reason() != Qt::ActiveWindowFocusReason;
}

void drawFocusRing(QPainter* painter, const QRectF& rect, qreal radius)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(theme::accent(theme::Accent::Selection), 2));
    painter->drawRoundedRect(rect.adjusted(1, 1, -1, -1), radius - 1, radius - 1);
    painter->restore();
}

Style::Style() : QProxyStyle(QStringLiteral("fusion")) { setObjectName(QStringLiteral("vantoro")); }

void Style::polish(QWidget* widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QComboBox*>(widget) || qobject_cast<QLineEdit*>(widget) || qobject_cast<QScrollBar*>(widget))
        widget->setAttribute(Qt::WA_Hover);
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const
{
    switch (element) {
    case PE_PanelButtonCommand:
        return drawPushButton(*option, painter);
    case PE_FrameDefaultButton:
        return;
    case PE_PanelLineEdit:
        // A combo box, a spin box or an item view draws the frame of the field that it holds.
        if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option); frame && frame->lineWidth > 0)
            return drawLineEdit(*option, painter);
        painter->fillRect(option->rect, option->palette.base());
        return;
    case PE_FrameLineEdit:
        return;
    case PE_IndicatorCheckBox:
        return drawIndicator(*option, painter, false);
    case PE_IndicatorRadioButton:
        return drawIndicator(*option, painter, true);
    case PE_FrameFocusRect:
        if (qobject_cast<const QAbstractItemView*>(widget) == nullptr)
            drawFocusRing(painter, option->rect, 4);
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const
{
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (element == CE_PushButtonLabel && button && (button->features & QStyleOptionButton::DefaultButton)
        && (button->state & State_Enabled)) {
        QStyleOptionButton label(*button);
        label.palette.setColor(QPalette::ButtonText, theme::textOn(theme::accentFill(theme::Accent::Selection)));
        return QProxyStyle::drawControl(element, &label, painter, widget);
    }
    if (element == CE_PushButtonBevel) {
        proxy()->drawPrimitive(PE_PanelButtonCommand, option, painter, widget);
        if (button && (button->features & QStyleOptionButton::HasMenu))
            drawChevron(painter, QRectF(option->rect.right() - 22, option->rect.top(), 16, option->rect.height()),
                        option->palette.color(QPalette::ButtonText));
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                               const QWidget* widget) const
{
    if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option); control == CC_ComboBox && combo) {
        const auto colors = theme::colors(option->palette);
        drawBox(painter, option->rect, controlFill(*option, colors), colors.border, theme::kRadiusControl);
        drawChevron(painter, subControlRect(control, option, SC_ComboBoxArrow, widget), colors.textSecondary);
        if (option->state & State_HasFocus)
            drawFocusRing(painter, option->rect, theme::kRadiusControl);
        return;
    }
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option); control == CC_ScrollBar && bar)
        return drawScrollBar(*bar, subControlRect(control, option, SC_ScrollBarSlider, widget), painter);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return kScrollBarExtent;
    case PM_ScrollBarSliderMin:
        return 32;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return 18;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return theme::kSpaceS;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return theme::kSpaceXs;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
        return theme::kSpaceS;
    case PM_LayoutLeftMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutBottomMargin:
        return theme::kSpaceL;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* result) const
{
    switch (hint) {
    case SH_ComboBox_Popup:
        return 0; // a list below the field: it scrolls, and type-ahead finds one of a hundred encodings
    case SH_ScrollBar_LeftClickAbsolutePosition:
        return 1;
    case SH_EtchDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

QRect Style::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const
{
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    if (element == SE_LineEditContents && qobject_cast<const QLineEdit*>(widget))
        return rect.adjusted(theme::kSpaceXs, 0, -theme::kSpaceXs, 0);
    return rect;
}

QRect Style::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                            const QWidget* widget) const
{
    if (control == CC_ComboBox && part == SC_ComboBoxArrow)
        return visualRect(option->direction, option->rect,
                          QRect(option->rect.right() - 27, option->rect.top(), 24, option->rect.height()));
    if (control == CC_ComboBox && part == SC_ComboBoxEditField)
        return visualRect(option->direction, option->rect, option->rect.adjusted(theme::kSpaceS, 2, -28, -2));
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || !bar)
        return QProxyStyle::subControlRect(control, option, part, widget);
    // No arrow buttons: the whole bar is the groove.
    const bool horizontal = bar->orientation == Qt::Horizontal;
    const int length = horizontal ? bar->rect.width() : bar->rect.height();
    const qint64 range = qint64(bar->maximum) - bar->minimum;
    int thumb = length;
    if (range > 0)
        thumb = qBound(qMin(32, length), int(qint64(bar->pageStep) * length / (range + bar->pageStep)), length);
    const int start
        = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition, length - thumb, bar->upsideDown);
    const auto span = [&](int from, int size) {
        const QRect rect
            = horizontal ? QRect(from, 0, size, bar->rect.height()) : QRect(0, from, bar->rect.width(), size);
        return visualRect(bar->direction, bar->rect, rect.translated(bar->rect.topLeft()));
    };
    switch (part) {
    case SC_ScrollBarGroove:
        return bar->rect;
    case SC_ScrollBarSlider:
        return span(start, thumb);
    case SC_ScrollBarSubPage:
        return span(0, start);
    case SC_ScrollBarAddPage:
        return span(start + thumb, length - start - thumb);
    default:
        return {};
    }
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                              const QWidget* widget) const
{
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    const int comfortable = option ? option->fontMetrics.height() + 2 * theme::kSpaceS : 0;
    switch (type) {
    case CT_PushButton:
        return {qMax(size.width() + theme::kSpaceL, 84), qMax(contents.height() + 2 * theme::kSpaceS, comfortable)};
    case CT_LineEdit:
        return {size.width() + theme::kSpaceS, comfortable};
    case CT_ComboBox:
        return {size.width() + theme::kSpaceL, comfortable};
    case CT_MenuItem:
        return {size.width(), qMax(size.height(), option->fontMetrics.height() + theme::kSpaceS)};
    default:
        return size;
    }
}

}
