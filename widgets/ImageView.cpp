#include "widgets/ImageView.h"

#include <QPainter>
#include <QStyle>

namespace vantoro {

ImageView::ImageView(QWidget* parent) : QWidget(parent) {}

void ImageView::setPixmap(const QPixmap& pixmap)
{
    m_pixmap = pixmap;
    m_icon = {};
    updateGeometry();
    update();
}

void ImageView::setIcon(const QIcon& icon)
{
    m_icon = icon;
    m_pixmap = {};
    update();
}

QSize ImageView::sizeHint() const
{
    return m_pixmap.isNull() ? QSize(40, 40) : m_pixmap.deviceIndependentSize().toSize();
}

QRect ImageView::pictureRect() const
{
    if (!m_icon.isNull()) {
        const int edge = qMin(width(), height());
        return QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, QSize(edge, edge), rect());
    }
    if (m_pixmap.isNull())
        return {};
    QSize size = m_pixmap.deviceIndependentSize().toSize();
    if (size.width() > width() || size.height() > height())
        size.scale(this->size(), Qt::KeepAspectRatio);
    return QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, size, rect());
}

void ImageView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect place = pictureRect();
    if (!m_icon.isNull()) {
        m_icon.paint(&painter, place);
    } else if (!m_pixmap.isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(place, m_pixmap);
    }
}

}
