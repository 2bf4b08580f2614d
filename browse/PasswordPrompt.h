#pragma once

#include "engine/io/secret.h"

#include <QDialog>

class QLabel;

namespace vantoro {

class FlatButton;
class PasswordField;

/// Asks for the password of the archive that the page shows, in front of its window. One answer for each time that it
/// is shown; closing it cancels.
class PasswordPrompt final : public QDialog {
    Q_OBJECT

public:
    explicit PasswordPrompt(QWidget* parent);

    void ask(const QString& archiveName);
    /// Without an answer.
    void dismiss();

signals:
    void answered(const vantoro::Secret& password);
    void cancelled();

private:
    void takeAnswer();

    QLabel* m_question;
    QLabel* m_capsHint;
    PasswordField* m_passwordField;
    FlatButton* m_okButton;
    bool m_isAsking = false;
};

}
