#include "app/KXLeftView.h"

#include "widgets/Theme.h"

#include <QPainter>

namespace vantoro {

void KXLeftView::paintEvent(QPaintEvent*)
{
    const auto colors = theme::colors(palette());
    QPainter painter(this);
    painter.fillRect(rect(),
                     theme::isDark(palette()) ? theme::mix(colors.window, Qt::black, 0.18)
                                              : theme::mix(colors.window, colors.text, 0.05));
    painter.setPen(colors.border);
    const int edge = isRightToLeft() ? 0 : width() - 1;
    painter.drawLine(edge, 0, edge, height());
}

}
