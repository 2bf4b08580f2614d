#include "widgets/Style.h"

#include "widgets/Icons.h"
#include "widgets/StyleParts.h"
#include "widgets/Theme.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOption>

namespace vantoro {
namespace {

using namespace styleparts;

constexpr int kScrollBarExtent = 12;
constexpr int kMenuSeparatorHeight = 2 * theme::kSpaceXs + 1;
constexpr int kSpinButtonWidth = 20;
constexpr int kMessageIconEdge = 40;

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
    if (qobject_cast<QComboBox*>(widget) || qobject_cast<QLineEdit*>(widget) || qobject_cast<QScrollBar*>(widget)
        || qobject_cast<QAbstractSpinBox*>(widget))
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
    case PE_PanelMenu:
        return drawMenuPanel(*option, painter);
    case PE_FrameMenu:
        return; // part of the panel
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
    if (element == CE_HeaderSection || element == CE_HeaderEmptyArea)
        return drawHeaderGround(*option, painter);
    if (element == CE_HeaderLabel)
        return drawHeaderLabel(option, painter, widget);
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_MenuItem && item)
        return drawMenuItem(*item, painter, widget);
    QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawHeaderLabel(const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
    if (!header)
        return QProxyStyle::drawControl(CE_HeaderLabel, option, painter, widget);
    QStyleOptionHeader quiet(*header);
    const QColor ink = theme::colors(option->palette).textSecondary;
    quiet.palette.setColor(QPalette::ButtonText, ink);
    quiet.palette.setColor(QPalette::WindowText, ink);
    painter->save();
    painter->setFont(theme::font(theme::Type::Caption, painter->font()));
    QProxyStyle::drawControl(CE_HeaderLabel, &quiet, painter, widget);
    painter->restore();
}

void Style::drawMenuItem(const QStyleOptionMenuItem& item, QPainter* painter, const QWidget* widget) const
{
    if (item.menuItemType == QStyleOptionMenuItem::Separator && item.text.isEmpty())
        return drawMenuSeparator(item, painter);
    if (!(item.state & State_Selected) || !(item.state & State_Enabled))
        return QProxyStyle::drawControl(CE_MenuItem, &item, painter, widget);
    drawMenuSelection(item, painter);
    QStyleOptionMenuItem chosen(item);
    chosen.state.setFlag(State_Selected, false);
    const QColor ink = item.palette.color(QPalette::HighlightedText);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        chosen.palette.setColor(role, ink);
    QProxyStyle::drawControl(CE_MenuItem, &chosen, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                               const QWidget* widget) const
{
    if (control == CC_ComboBox)
        return drawComboBox(*option, subControlRect(control, option, SC_ComboBoxArrow, widget), painter);
    if (const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option); control == CC_SpinBox && spin)
        return drawSpinBox(*spin, subControlRect(control, option, SC_SpinBoxUp, widget),
                           subControlRect(control, option, SC_SpinBoxDown, widget), painter);
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
    case PM_MessageBoxIconSize:
        return kMessageIconEdge;
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

QIcon Style::standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const
{
    // The toolkit would look into the icon theme and load all of its image plug-ins for this.
    if (which == SP_LineEditClearButton)
        return icons::glyphIcon(QStringLiteral("glyph-cancel"));
    const QIcon sign = messageIcon(which, widget ? widget->palette() : standardPalette());
    return sign.isNull() ? QProxyStyle::standardIcon(which, option, widget) : sign;
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
    if (control == CC_SpinBox)
        return spinBoxRect(*option, part);
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

QRect Style::spinBoxRect(const QStyleOptionComplex& option, SubControl part)
{
    const QRect inner = option.rect.adjusted(2, 2, -2, -2);
    const int half = inner.height() / 2;
    const int left = inner.right() - kSpinButtonWidth + 1;
    const auto placed = [&option](const QRect& rect) { return visualRect(option.direction, option.rect, rect); };
    switch (part) {
    case SC_SpinBoxFrame:
        return option.rect;
    case SC_SpinBoxUp:
        return placed({left, inner.top(), kSpinButtonWidth, half});
    case SC_SpinBoxDown:
        return placed({left, inner.bottom() - half + 1, kSpinButtonWidth, half});
    case SC_SpinBoxEditField:
        return placed(inner.adjusted(theme::kSpaceXs, 0, -kSpinButtonWidth, 0));
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
    case CT_SpinBox:
        return {contents.width() + kSpinButtonWidth + theme::kSpaceL, comfortable};
    case CT_HeaderSection:
        return {size.width(), option->fontMetrics.height() + theme::kSpaceM};
    case CT_MenuItem:
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
            item && item->menuItemType == QStyleOptionMenuItem::Separator && item->text.isEmpty())
            return {size.width(), kMenuSeparatorHeight};
        return {size.width(), qMax(size.height(), option->fontMetrics.height() + theme::kSpaceM)};
    default:
        return size;
    }
}

}
