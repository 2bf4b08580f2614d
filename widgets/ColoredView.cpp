#include "widgets/ColoredView.h"

#include "widgets/Theme.h"

#include <QPainter>

namespace vantoro {

ColoredView::ColoredView(QWidget* parent) : QWidget(parent) {}

ColoredView* ColoredView::card(QWidget* parent)
{
    auto* card = new ColoredView(parent);
    card->setRadius(theme::kRadiusCard);
    card->setBordered(true);
    return card;
}

void ColoredView::setColor(const QColor& color)
{
    m_color = color;
    update();
}

void ColoredView::setShaded(bool shaded)
{
    m_isShaded = shaded;
    update();
}

void ColoredView::setBordered(bool bordered)
{
    m_isBordered = bordered;
    update();
}

void ColoredView::setRadius(int radius)
{
    m_radius = radius;
    update();
}

void ColoredView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto colors = theme::colors(palette());
    painter.setBrush(m_color.isValid() ? m_color : m_isShaded ? colors.hover : colors.surface);
    painter.setPen(m_isBordered ? QPen(colors.border, 1) : QPen(Qt::NoPen));
    const qreal by = m_isBordered ? 0.5 : 0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(by, by, -by, -by), m_radius, m_radius);
}

}
