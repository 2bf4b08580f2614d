#pragma once

#include <QLayout>

namespace vantoro {

/// Buttons in a line that ends at the trailing edge; what does not fit goes on a line of its own below.
class FlowLayout : public QLayout {
    Q_OBJECT

public:
    explicit FlowLayout(int gap, QWidget* parent = nullptr);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override;
    int count() const override { return static_cast<int>(m_items.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    /// Places the items when `place` is set; gives the height that they take in any case.
    int arrange(const QRect& rect, bool place) const;

    QList<QLayoutItem*> m_items;
    int m_gap;
};

}
