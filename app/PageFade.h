#pragma once

#include <QPixmap>
#include <QVariantAnimation>
#include <QWidget>

namespace vantoro {

/// The page that was shown fades away above the one that took its place. Gone when it is done; nothing where motion is
/// not wanted.
class PageFade final : public QWidget {
    Q_OBJECT
public:
    /// Call before the change; `place` is the widget that holds the pages.
    static void begin(QWidget* place);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    explicit PageFade(QWidget* place);

    QPixmap m_before;
    QVariantAnimation m_animation;
    double m_opacity = 1;
};

}
