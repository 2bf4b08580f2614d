#pragma once

#include <QColor>
#include <QWidget>

namespace vantoro {

/// A plain ground of one colour, with round corners and a border if wished. Without a colour: the palette's surface.
class ColoredView : public QWidget {
    Q_OBJECT

public:
    explicit ColoredView(QWidget* parent = nullptr);
    /// The ground of a group of things.
    static ColoredView* card(QWidget* parent);

    void setColor(const QColor& color);
    /// Instead of a colour: a shade off the palette's surface.
    void setShaded(bool shaded);
    /// With the palette's hairline around it.
    void setBordered(bool bordered);
    void setRadius(int radius);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_color;
    bool m_isShaded = false;
    bool m_isBordered = false;
    int m_radius = 0;
};

}
