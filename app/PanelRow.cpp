#include "app/PanelRow.h"

#include "widgets/Icons.h"
#include "widgets/Style.h"
#include "widgets/Theme.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

namespace vantoro {

PanelRow::PanelRow(const QString& glyph, const QString& text, QWidget* parent) : QAbstractButton(parent), m_glyph(glyph)
{
    setText(text);
    setAccessibleName(text);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
}

QSize PanelRow::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()) + theme::kIconSmall + 3 * theme::kSpaceM,
            fontMetrics().height() + 2 * theme::kSpaceS};
}

void PanelRow::focusInEvent(QFocusEvent* event)
{
    m_showsFocus = isKeyboardFocus(*event);
    QAbstractButton::focusInEvent(event);
}

/// As in a menu.
void PanelRow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void PanelRow::paintEvent(QPaintEvent*)
{
    const auto colors = theme::colors(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (underMouse() || isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(isDown() ? colors.pressed : colors.hover);
        painter.drawRoundedRect(rect(), theme::kRadiusControl, theme::kRadiusControl);
    }
    const QRect content = rect().adjusted(theme::kSpaceM, 0, -theme::kSpaceM, 0);
    const QRect picture = QStyle::alignedRect(layoutDirection(), Qt::AlignLeading | Qt::AlignVCenter,
                                              QSize(theme::kIconSmall, theme::kIconSmall), content);
    painter.drawPixmap(picture.topLeft(),
                       icons::glyph(m_glyph, colors.textSecondary, theme::kIconSmall, devicePixelRatioF()));
    const int by = theme::kIconSmall + theme::kSpaceM;
    painter.setPen(colors.text);
    const auto side = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeading | Qt::AlignVCenter);
    painter.drawText(isRightToLeft() ? content.adjusted(0, 0, -by, 0) : content.adjusted(by, 0, 0, 0),
                     static_cast<int>(side), text());
    if (hasFocus() && m_showsFocus)
        drawFocusRing(&painter, rect(), theme::kRadiusControl);
}

}
