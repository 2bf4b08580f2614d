#pragma once

#include "extraction/TaskPanel.h"

#include "platform/XADString.h"

class QCheckBox;

namespace vantoro {

class ElidedLabel;
class KXEncodePopButton;
class PasswordField;

/// A message and buttons, each of which stands for a number. Return presses the prominent one, Escape the one for 0.
class QuestionPanel : public TaskPanel {
    Q_OBJECT

public:
    QuestionPanel(Mark mark, QWidget* parent);

    void setMessage(const QString& message);
    /// A line above the message, for messages that do not name the archive.
    void setHeading(const QString& heading);
    QString message() const;
    /// In the order in which they stand; one may be prominent.
    FlatButton* addAnswer(const QString& text, int response, bool isProminent);
    FlatButton* button(int response) const;
    QWidget* focusTarget() const override;

signals:
    void answered(int response);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    QLabel* messageLabel() const { return m_message; }
    /// Where subclasses put their controls: between the message and the buttons.
    QVBoxLayout* body() const { return m_body; }

private:
    ElidedLabel* m_heading = nullptr;
    QLabel* m_message;
    QVBoxLayout* m_body;
    QLayout* m_buttons;
    FlatButton* m_prominent = nullptr;
    QList<FlatButton*> m_answers;
};

/// Asks for a password. The two numbers are stop (0) and continue (1).
class PasswordPanel : public QuestionPanel {
    Q_OBJECT

public:
    explicit PasswordPanel(QWidget* parent);

    /// Fresh and empty. After a wrong password it says so.
    void prepare(const QString& archiveName, bool wasWrong, bool caresAboutEncoding);
    PasswordField* field() const { return m_passwordfield; }
    KXEncodePopButton* popup() const { return m_passwordpopup; }
    QString hint() const;
    QWidget* focusTarget() const override;

private:
    void updateHint();

    PasswordField* m_passwordfield;
    QLabel* m_hint;
    QLabel* m_passwordpopuplabel;
    KXEncodePopButton* m_passwordpopup;
    bool m_wasWrong = false;
};

/// Asks for the encoding of file names and shows one of them as the chosen encoding reads it.
class EncodingPanel : public QuestionPanel {
    Q_OBJECT

public:
    explicit EncodingPanel(QWidget* parent);

    void prepare(const QString& archiveName, const XADString& name);
    CharsetId selectedTag() const;
    KXEncodePopButton* popup() const { return m_btnEncodePopButton; }
    QString preview() const;
    QWidget* focusTarget() const override;

private:
    void selectEncoding();

    KXEncodePopButton* m_btnEncodePopButton;
    ElidedLabel* m_encodingfield;
    XADString m_namestring;
};

}
