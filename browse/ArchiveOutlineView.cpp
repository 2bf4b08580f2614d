#include "browse/ArchiveOutlineView.h"

#include "browse/ArchiveTreeModel.h"
#include "browse/KXOutlineTableCellView.h"
#include "browse/OutlineHeader.h"

#include "widgets/Icons.h"
#include "widgets/Theme.h"

#include <QDrag>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>

namespace vantoro {
namespace {

constexpr int kIndentation = 20;
constexpr int kChevronEdge = 12;
constexpr int kLeastNameLetters = 28;
constexpr quint32 kOpenedAtOnce = 5000; // nodes

}

ArchiveOutlineView::ArchiveOutlineView(QWidget* parent) : QTreeView(parent)
{
    setObjectName(QStringLiteral("ddOutlineView"));
    setHeader(new OutlineHeader(this));
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setIndentation(kIndentation);
    setExpandsOnDoubleClick(false);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setDragEnabled(true);
    setDragDropMode(QAbstractItemView::DragOnly);
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_Hover);
    auto* cells = new KXOutlineTableCellView(this);
    setItemDelegate(cells);
    connect(cells, &KXOutlineTableCellView::previewItem, this, &ArchiveOutlineView::previewRequested);
    connect(this, &QTreeView::collapsed, this, &ArchiveOutlineView::keepSelectionVisible);
}

void ArchiveOutlineView::setArchiveModel(ArchiveTreeModel* model)
{
    m_archiveModel = model;
    setModel(model);
    header()->setSectionResizeMode(ArchiveTreeModel::Name, QHeaderView::Stretch);
    fitColumns();
}

/// The name has the free width; what the others hold is known beforehand.
void ArchiveOutlineView::fitColumns()
{
    if (!m_archiveModel)
        return;
    const QFontMetrics metrics(font());
    const int date = metrics.horizontalAdvance(QStringLiteral("2000/00/00 00:00")) + 2 * theme::kSpaceM;
    const int size = metrics.horizontalAdvance(QStringLiteral("1000.00 MB")) + theme::kSpaceL;
    const int name = kLeastNameLetters * metrics.averageCharWidth();
    const int room = viewport()->width() - date - size - KXOutlineTableCellView::previewButtonSpace();
    setColumnHidden(ArchiveTreeModel::Modified, room < name); // in a narrow window names matter more
    header()->resizeSection(ArchiveTreeModel::Modified, date);
    header()->resizeSection(ArchiveTreeModel::Size, size + KXOutlineTableCellView::previewButtonSpace());
}

int ArchiveOutlineView::rowForIndex(const QModelIndex& index) const
{
    const QRect rect = index.isValid() ? visualRect(index) : QRect();
    return rect.isEmpty() ? -1 : (rect.top() + verticalOffset()) / KXOutlineTableCellView::rowHeight(fontMetrics());
}

QModelIndex ArchiveOutlineView::selectedIndex() const
{
    const auto rows = selectionModel() ? selectionModel()->selectedRows() : QModelIndexList();
    return rows.isEmpty() ? QModelIndex() : rows.front();
}

void ArchiveOutlineView::openAll(quint32 nodes)
{
    if (nodes <= kOpenedAtOnce)
        expandAll();
    else
        expandToDepth(0);
}

void ArchiveOutlineView::drawGround(QPainter* painter, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const
{
    const QRect row(0, option.rect.y(), viewport()->width(), option.rect.height());
    const auto colors = theme::colors(option.palette);
    if ((option.rect.y() + verticalOffset()) / KXOutlineTableCellView::rowHeight(fontMetrics()) % 2 == 1)
        painter->fillRect(row, colors.surfaceAlternate);
    const bool isHot = option.state & QStyle::State_MouseOver;
    const bool isChosen = selectionModel()->isSelected(index);
    if (!isChosen && !isHot)
        return;
    QColor ground = colors.hover;
    if (isChosen)
        ground = isActiveWindow() ? theme::accentFill(theme::Accent::Selection)
                                  : theme::mix(theme::accentFill(theme::Accent::Selection), colors.window,
                                               theme::isDark(option.palette) ? 0.45 : 0);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(ground);
    painter->drawRoundedRect(row.adjusted(theme::kSpaceXs, 1, -theme::kSpaceXs, -1), theme::kRadiusControl,
                             theme::kRadiusControl);
}

void ArchiveOutlineView::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem cell = option;
    cell.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    cell.widget = this;
    const QPoint pointer = viewport()->mapFromGlobal(QCursor::pos());
    const bool isHot
        = viewport()->underMouse() && pointer.y() >= option.rect.top() && pointer.y() <= option.rect.bottom();
    cell.state.setFlag(QStyle::State_MouseOver, isHot);
    cell.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
    painter->save();
    drawGround(painter, cell, index);
    for (int column = 0; column < ArchiveTreeModel::ColumnCount; ++column) {
        if (isColumnHidden(column))
            continue;
        const auto sibling = index.sibling(index.row(), column);
        cell.rect = visualRect(sibling);
        itemDelegate()->paint(painter, cell, sibling);
    }
    const QRect name = visualRect(index.sibling(index.row(), ArchiveTreeModel::Name));
    const QRect branches = isRightToLeft() ? QRect(name.right(), name.top(), kIndentation, name.height())
                                           : QRect(name.left() - kIndentation, name.top(), kIndentation, name.height());
    drawBranches(painter, branches, index);
    painter->restore();
}

void ArchiveOutlineView::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const
{
    if (!m_archiveModel->hasChildren(index))
        return;
    const bool isChosen = selectionModel()->isSelected(index);
    const QColor color = isChosen ? palette().color(QPalette::HighlightedText) : theme::colors(palette()).textSecondary;
    painter->save();
    painter->translate(QRectF(rect).center());
    painter->rotate(isExpanded(index) ? 0 : isRightToLeft() ? 90 : -90);
    painter->drawPixmap(
        QPointF(-kChevronEdge / 2.0, -kChevronEdge / 2.0),
        icons::glyph(QStringLiteral("glyph-chevron"), color, kChevronEdge, painter->device()->devicePixelRatioF()));
    painter->restore();
}

void ArchiveOutlineView::openOrPreview(const QModelIndex& index)
{
    if (m_archiveModel->hasChildren(index))
        setExpanded(index.siblingAtColumn(0), !isExpanded(index.siblingAtColumn(0)));
    else if (m_archiveModel->isPreviewable(index))
        emit previewRequested(index);
}

void ArchiveOutlineView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Space:
        if (currentIndex().isValid())
            emit previewToggled(currentIndex().siblingAtColumn(0));
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (currentIndex().isValid())
            openOrPreview(currentIndex());
        return;
    case Qt::Key_Escape:
        emit previewDismissed();
        return;
    default:
        QTreeView::keyPressEvent(event);
    }
}

void ArchiveOutlineView::mouseMoveEvent(QMouseEvent* event)
{
    QTreeView::mouseMoveEvent(event);
    const auto index = indexAt(event->position().toPoint());
    if (index.column() == ArchiveTreeModel::Size)
        update(index); // the button under the pointer
}

void ArchiveOutlineView::mouseDoubleClickEvent(QMouseEvent* event)
{
    const auto index = indexAt(event->position().toPoint());
    QTreeView::mouseDoubleClickEvent(event);
    const bool isOnRow = index.isValid() && visualRect(index).contains(event->position().toPoint());
    if (isOnRow && event->button() == Qt::LeftButton && index.column() != ArchiveTreeModel::Size)
        openOrPreview(index);
}

void ArchiveOutlineView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    const auto index = isByKey ? currentIndex() : indexAt(viewport()->mapFromGlobal(event->globalPos()));
    if (!index.isValid())
        return;
    setCurrentIndex(index.siblingAtColumn(0));
    const QPoint place = isByKey ? viewport()->mapToGlobal(visualRect(index).bottomLeft()) : event->globalPos();
    emit menuRequested(index.siblingAtColumn(0), place);
}

void ArchiveOutlineView::startDrag(Qt::DropActions)
{
    const QPersistentModelIndex dragged = selectedIndex();
    if (!dragged.isValid())
        return;
    auto* drag = new QDrag(this);
    drag->setMimeData(m_archiveModel->mimeData({dragged}));
    drag->setPixmap(dragged.data(Qt::DecorationRole).value<QIcon>().pixmap(theme::kIconRow));
    drag->exec(Qt::CopyAction); // the toolkit has no drag that returns at once
    if (dragged.isValid())
        emit dragEnded(dragged);
}

void ArchiveOutlineView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    viewport()->update(); // the rows' grounds are wider than their cells
    emit selectedRowChanged();
}

void ArchiveOutlineView::resizeEvent(QResizeEvent* event)
{
    QTreeView::resizeEvent(event);
    fitColumns();
}

void ArchiveOutlineView::changeEvent(QEvent* event)
{
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitColumns();
}

/// A selected row that nobody sees would count as no choice.
void ArchiveOutlineView::keepSelectionVisible(const QModelIndex& collapsed)
{
    for (auto above = selectedIndex().parent(); above.isValid(); above = above.parent()) {
        if (above == collapsed)
            return setCurrentIndex(collapsed);
    }
}

}
