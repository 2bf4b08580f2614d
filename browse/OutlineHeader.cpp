#include "browse/OutlineHeader.h"

#include "browse/ArchiveTreeModel.h"
#include "browse/KXOutlineTableCellView.h"

#include "widgets/Theme.h"

#include <QPainter>

namespace vantoro {

OutlineHeader::OutlineHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent)
{
    setStretchLastSection(false);
    setSectionsMovable(false);
    setSectionsClickable(false);
    setMinimumSectionSize(0);
    viewport()->setBackgroundRole(QPalette::Base); // of one piece with the rows
}

QSize OutlineHeader::sizeHint() const
{
    return {QHeaderView::sizeHint().width(), KXOutlineTableCellView::rowHeight(fontMetrics())};
}

void OutlineHeader::paintSection(QPainter* painter, const QRect& rect, int section) const
{
    const bool isSize = section == ArchiveTreeModel::Size;
    const int before = theme::kSpaceS;
    const int behind = isSize ? KXOutlineTableCellView::previewButtonSpace() : theme::kSpaceS;
    const QRect text = QStyle::visualRect(layoutDirection(), rect, rect.adjusted(before, 0, -behind, 0));
    const auto alignment = QStyle::visualAlignment(layoutDirection(), isSize ? Qt::AlignRight : Qt::AlignLeft);
    painter->setFont(theme::font(theme::Type::Caption, font()));
    painter->setPen(theme::colors(palette()).textSecondary);
    painter->drawText(text, static_cast<int>(alignment | Qt::AlignVCenter | Qt::TextSingleLine),
                      model()->headerData(section, Qt::Horizontal).toString());
}

void OutlineHeader::paintEvent(QPaintEvent* event)
{
    QHeaderView::paintEvent(event);
    QPainter painter(viewport());
    painter.setPen(theme::colors(palette()).border);
    painter.drawLine(0, height() - 1, width(), height() - 1);
}

}
