#pragma once

#include <QStyledItemDelegate>

namespace vantoro {

/// Draws an encoding and, from a common edge on, the sample in small type.
class EncodingItemDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    enum Role { NameRole = Qt::UserRole + 1, SampleRole };

    using QStyledItemDelegate::QStyledItemDelegate;
    void setSampleEdge(int edge) { m_sampleEdge = edge; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    static bool isSeparator(const QModelIndex& index);

    int m_sampleEdge = 0;
};

}
