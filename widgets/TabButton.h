#pragma once

#include <QAbstractButton>
#include <QVariantAnimation>

namespace vantoro {

/// A tab: picture above its word; the chosen one stands on a tinted ground.
class TabButton : public QAbstractButton {
    Q_OBJECT

public:
    TabButton(const QIcon& icon, const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void glide();

    double m_shade = 0; // 0 at rest, 0.5 under the pointer, 1 chosen
    QVariantAnimation m_animation;
    bool m_showsFocus = false;
};

}
