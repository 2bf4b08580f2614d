#pragma once

#include <QAbstractButton>

namespace vantoro {

/// A line that can be clicked: a glyph and words from the leading edge, a tinted ground under the pointer.
class PanelRow final : public QAbstractButton {
    Q_OBJECT
public:
    PanelRow(const QString& glyph, const QString& text, QWidget* parent);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString m_glyph;
    bool m_showsFocus = false;
};

}
