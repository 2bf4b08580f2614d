#pragma once

#include <QDialog>

class QComboBox;
class QFormLayout;
class QLabel;

namespace vantoro {

class FlatButton;
class PasswordField;
class StrengthBar;

/// The options of a compression in one window: the kind, and the password typed twice. Blocks the program's windows
/// while it is open. Start is only heard of when both passwords agree.
class CompressWindow final : public QDialog {
    Q_OBJECT

public:
    explicit CompressWindow(QWidget* parent);

    /// Fills the kind menu like the one of the page.
    QComboBox* kindPopButton() const { return m_kind; }
    PasswordField* passwordField() const { return m_password; }
    PasswordField* repeatField() const { return m_repeat; }
    FlatButton* startButton() const { return m_start; }
    FlatButton* cancelButton() const { return m_cancel; }
    void setPassword(const QString& password);
    void wipe();

signals:
    void startRequested();

private:
    void kindChanged();
    void passwordChanged();
    void start();
    bool takesPassword() const;

    QComboBox* m_kind;
    PasswordField* m_password;
    StrengthBar* m_strength;
    PasswordField* m_repeat;
    QLabel* m_complaint;
    FlatButton* m_start;
    FlatButton* m_cancel;
    QFormLayout* m_form;
};

}
