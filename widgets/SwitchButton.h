#pragma once

#include <QAbstractButton>
#include <QVariantAnimation>

namespace vantoro {

/// On or off, in effect at once. Set an accessible name: it carries no words.
class SwitchButton final : public QAbstractButton {
    Q_OBJECT

public:
    explicit SwitchButton(QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void checkStateSet() override;
    void nextCheckState() override;

private:
    QVariantAnimation m_animation;
    double m_position = 0; // of the knob: 0 off, 1 on
    bool m_showsFocus = false;
};

}
