#pragma once

#include <QLineEdit>

namespace vantoro {

/// A field for a password with a button that shows it, and a watch over Caps Lock.
class PasswordField : public QLineEdit {
    Q_OBJECT

public:
    explicit PasswordField(QWidget* parent = nullptr);

    bool isRevealed() const { return echoMode() == QLineEdit::Normal; }
    void setRevealed(bool revealed);
    /// As far as it can be told: from the keyboard's light, and from the letters that keys produce.
    bool isCapsLockOn() const { return m_capsLock; }
    /// Empties the field and overwrites what it held, as far as the toolkit lets us.
    void wipe();

signals:
    void capsLockChanged(bool on);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void setCapsLock(bool on);
    void updateGlyphs();

    QAction* m_reveal;
    QAction* m_capsMark;
    bool m_capsLock = false;
};

}
