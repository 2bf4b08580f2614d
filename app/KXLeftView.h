#pragma once

#include <QWidget>

namespace vantoro {

/// The ground of the side panel: a shade off the window's, darker or lighter as the appearance is.
class KXLeftView final : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}
