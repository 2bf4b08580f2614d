#pragma once

#include <QTreeView>

namespace vantoro {

class ArchiveTreeModel;

/// The outline: rows of one height, one of them selected at a time. What the user does to a row comes out as signals.
class ArchiveOutlineView final : public QTreeView {
    Q_OBJECT

public:
    explicit ArchiveOutlineView(QWidget* parent = nullptr);

    void setArchiveModel(ArchiveTreeModel* model);
    /// Position among the rows that are open, counted from the root row's 0; -1 where there is none.
    int rowForIndex(const QModelIndex& index) const;
    QModelIndex selectedIndex() const;
    /// Opens every row, in an outline that is not too long for that.
    void openAll(quint32 nodes);

signals:
    void previewRequested(const QModelIndex& index);
    /// As previewRequested(), but closes the preview of the same row.
    void previewToggled(const QModelIndex& index);
    void previewDismissed();
    void extractRequested(const QModelIndex& index);
    void menuRequested(const QModelIndex& index, const QPoint& globalPosition);
    /// A drag of a row has ended, wherever it ended.
    void dragEnded(const QModelIndex& index);
    void selectedRowChanged();

protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fitColumns();
    void openOrPreview(const QModelIndex& index);
    void drawGround(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void keepSelectionVisible(const QModelIndex& collapsed);

    ArchiveTreeModel* m_archiveModel = nullptr;
};

}
