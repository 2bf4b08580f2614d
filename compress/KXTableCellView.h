#pragma once

#include <QWidget>

namespace vantoro {

class ElidedLabel;
class FlatButton;
class ImageView;
class SpinningIndicator;

/// A row of the list of chosen files: icon, name and size, and buttons to look at it and to take it off the list.
class KXTableCellView final : public QWidget {
    Q_OBJECT

public:
    /// Grows with large type.
    static int rowHeight(const QFontMetrics& metrics);

    explicit KXTableCellView(QWidget* parent = nullptr);

    ImageView* itemIcon() const { return m_itemIcon; }
    ElidedLabel* itemName() const { return m_itemName; }
    ElidedLabel* itemSize() const { return m_itemSize; }
    FlatButton* closeBut() const { return m_closeBut; }
    SpinningIndicator* indicator() const { return m_indicator; }
    FlatButton* previewButton() const { return m_previewButton; }

    /// The path that the row stands for; names the row and its buttons after it.
    const QString& path() const { return m_path; }
    void setPath(const QString& path);
    /// Text in the place of the spinning indicator; null: the indicator.
    void setSizeText(const QString& text);

private:
    QString m_path;
    ImageView* m_itemIcon;
    ElidedLabel* m_itemName;
    ElidedLabel* m_itemSize;
    SpinningIndicator* m_indicator;
    FlatButton* m_previewButton;
    FlatButton* m_closeBut;
};

}
