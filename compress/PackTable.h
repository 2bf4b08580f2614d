#pragma once

#include <QAbstractScrollArea>
#include <QStringList>

#include <functional>
#include <map>
#include <vector>

namespace vantoro {

class KXTableCellView;

/// The list of chosen paths. Only the rows in sight have views, so that thousands of paths cost no more than a
/// screenful.
class PackTable final : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit PackTable(QWidget* parent = nullptr);

    /// Called for each row that comes into sight, with a view that may have served another row before.
    void setPrepareRow(std::function<void(KXTableCellView&)> prepare) { m_prepare = std::move(prepare); }
    void reloadData(const QStringList& paths);
    /// -1 when the view shows no row any more.
    int rowForView(const QWidget* view) const;
    KXTableCellView* viewForPath(const QString& path) const;
    /// The row that keys act on; -1 for none.
    int currentRow() const { return m_currentRow; }
    void setCurrentRow(int row);
    /// While files are dragged over the list.
    void setHighlighted(bool highlighted);

signals:
    void rowMade(KXTableCellView* view);
    void removeRequested(int row);
    void previewRequested(int row);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    QSize sizeHint() const override;

private:
    void updateScrollBar();
    void layoutRows();
    KXTableCellView* takeView();
    void orderTabs();
    int rowHeight() const;
    int rowsPerPage() const;

    QStringList m_paths;
    std::function<void(KXTableCellView&)> m_prepare;
    std::map<int, KXTableCellView*> m_views; // by row
    std::vector<KXTableCellView*> m_spare;
    int m_currentRow = -1;
    bool m_isHighlighted = false;
};

}
