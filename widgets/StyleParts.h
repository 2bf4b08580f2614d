#pragma once

#include <QIcon>
#include <QStyle>

class QPainter;
class QStyleOption;
class QStyleOptionMenuItem;
class QStyleOptionSlider;
class QStyleOptionSpinBox;

/// How Style draws the single controls.
namespace vantoro::styleparts {

void drawPushButton(const QStyleOption& option, QPainter* painter);
void drawLineEdit(const QStyleOption& option, QPainter* painter);
void drawIndicator(const QStyleOption& option, QPainter* painter, bool round);
/// Pointing down.
void drawChevron(QPainter* painter, const QRectF& rect, const QColor& color);
void drawComboBox(const QStyleOption& option, const QRect& arrow, QPainter* painter);
void drawScrollBar(const QStyleOptionSlider& option, const QRect& slider, QPainter* painter);
void drawSpinBox(const QStyleOptionSpinBox& option, const QRect& up, const QRect& down, QPainter* painter);
/// The ground of a table's heading: the table's own, with a hairline below.
void drawHeaderGround(const QStyleOption& option, QPainter* painter);
void drawMenuPanel(const QStyleOption& option, QPainter* painter);
void drawMenuSeparator(const QStyleOption& option, QPainter* painter);
/// The ground of the item that the pointer is on.
void drawMenuSelection(const QStyleOption& option, QPainter* painter);

/// The sign of a message box; null for any other.
QIcon messageIcon(QStyle::StandardPixmap which, const QPalette& palette);

}
