#pragma once

#include <QStyledItemDelegate>

namespace vantoro {

/// Draws the cells of the outline: icon and name, date, size and the preview button. The row's ground is the outline's.
class KXOutlineTableCellView final : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

    /// Of every row and of the heading; grows with large type.
    static int rowHeight(const QFontMetrics& metrics);
    /// Where the preview button stands in a size cell.
    static QRect previewButtonRect(const QRect& cell);
    /// What a size cell needs besides its text.
    static int previewButtonSpace();

signals:
    /// The preview button of a row was pressed.
    void previewItem(const QModelIndex& index);

private:
    void paintName(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintSize(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintText(QPainter* painter, const QStyleOptionViewItem& option, const QRect& rect, const QString& text,
                   bool isQuiet) const;
};

}
