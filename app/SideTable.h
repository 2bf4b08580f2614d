#pragma once

#include <QListWidget>

namespace vantoro {

class KXMainTableCellView;

/// The table beside the page of the single-page window.
class SideTable final : public QListWidget {
    Q_OBJECT
public:
    static constexpr int kRows = 4;

    explicit SideTable(QWidget* parent = nullptr);

    /// What the rows need to show their words whole.
    static int widthOfRows(const QFont& font);

    /// The page of a row: the second compresses, all others browse.
    static int obtainMainIndexWithRow(int row) { return row == 1 ? 1 : 0; }

    /// Makes the rows anew and selects one of them.
    void reloadDataWithRow(int row);
    void selectRow(int row);

signals:
    /// A row was clicked, or chosen by key.
    void didClickedRow(int row);

private:
    KXMainTableCellView* cell(int row) const;
    void showSelection(int row);

    bool m_isReloading = false;
};

}
