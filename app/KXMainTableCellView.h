#pragma once

#include <QWidget>

class QLabel;

namespace vantoro {

class ImageView;

/// One row of the side table: a picture and the name of the page that it leads to.
class KXMainTableCellView final : public QWidget {
    Q_OBJECT
public:
    explicit KXMainTableCellView(int selectedIndex, QWidget* parent = nullptr);

    int selectedIndex() const { return m_selectedIndex; }
    QString groupName() const;
    /// The row's text stands on the selection's ground, or on the panel's.
    void setSelected(bool selected);

protected:
    void changeEvent(QEvent* event) override;

private:
    void applyColors();

    ImageView* m_imageIcon;
    QLabel* m_groupNameField;
    int m_selectedIndex; // of the page
    bool m_isSelected = false;
};

}
