#include "widgets/FlowLayout.h"

#include <QStyle>
#include <QWidget>

namespace vantoro {

FlowLayout::FlowLayout(int gap, QWidget* parent) : QLayout(parent), m_gap(gap) { setContentsMargins(0, 0, 0, 0); }

FlowLayout::~FlowLayout() { qDeleteAll(m_items); }

void FlowLayout::addItem(QLayoutItem* item) { m_items.append(item); }

QLayoutItem* FlowLayout::itemAt(int index) const { return m_items.value(index); }

QLayoutItem* FlowLayout::takeAt(int index)
{
    return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr;
}

int FlowLayout::heightForWidth(int width) const { return arrange(QRect(0, 0, width, 0), false); }

QSize FlowLayout::sizeHint() const
{
    QSize size;
    for (const QLayoutItem* item : m_items) {
        if (item->isEmpty())
            continue;
        size.rwidth() += item->sizeHint().width() + (size.isEmpty() ? 0 : m_gap);
        size.setHeight(qMax(size.height(), item->sizeHint().height()));
    }
    return size;
}

QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (const QLayoutItem* item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

void FlowLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    arrange(rect, true);
}

int FlowLayout::arrange(const QRect& rect, bool place) const
{
    const Qt::LayoutDirection direction = parentWidget() ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    int y = rect.top();
    for (qsizetype first = 0; first < m_items.size();) {
        int width = 0;
        int height = 0;
        qsizetype end = first;
        for (; end < m_items.size(); ++end) {
            const QSize size = m_items[end]->isEmpty() ? QSize(0, 0) : m_items[end]->sizeHint();
            const int wider = width + (width > 0 && size.width() > 0 ? m_gap : 0) + size.width();
            if (end > first && wider > rect.width())
                break;
            width = wider;
            height = qMax(height, size.height());
        }
        int x = rect.right() + 1 - width;
        for (; first < end; ++first) {
            if (m_items[first]->isEmpty())
                continue;
            const QRect box(QPoint(x, y), QSize(qMin(m_items[first]->sizeHint().width(), rect.width()), height));
            if (place)
                m_items[first]->setGeometry(QStyle::visualRect(direction, rect, box));
            x += box.width() + m_gap;
        }
        y += height + (end < m_items.size() ? m_gap : 0);
    }
    return y - rect.top();
}

}
