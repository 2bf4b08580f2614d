#pragma once

#include <QIcon>
#include <QPixmap>
#include <QWidget>

namespace vantoro {

/// Shows a picture as large as fits, in its own proportions and never enlarged past its size (an icon: any size).
class ImageView : public QWidget {
    Q_OBJECT

public:
    explicit ImageView(QWidget* parent = nullptr);

    void setPixmap(const QPixmap& pixmap);
    void setIcon(const QIcon& icon);
    /// Where the picture stands; null when there is none.
    QRect pictureRect() const;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap m_pixmap;
    QIcon m_icon;
};

}
