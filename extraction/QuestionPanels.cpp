#include "extraction/QuestionPanels.h"

#include "browse/KXEncodePopButton.h"
#include "widgets/ColoredView.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/FlowLayout.h"
#include "widgets/PasswordField.h"
#include "widgets/Theme.h"

#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace vantoro {
namespace {

// Heights that the password panel had by design; larger type makes it grow past them.
constexpr int kPasswordHeight = 86;
constexpr int kPasswordHeightWithEncoding = 106;

}

QuestionPanel::QuestionPanel(Mark mark, QWidget* parent)
    : TaskPanel(mark, parent)
    , m_message(addMessage())
    , m_body(new QVBoxLayout)
    , m_buttons(new FlowLayout(8))
{
    m_body->setSpacing(theme::kSpaceXs);
    column()->addLayout(m_body);
    column()->addSpacing(theme::kSpaceXs);
    column()->addLayout(m_buttons);
}

void QuestionPanel::setMessage(const QString& message)
{
    m_message->setText(message);
    setAccessibleName(message);
    for (FlatButton* answer : m_answers)
        answer->setAccessibleDescription(message);
}

void QuestionPanel::setHeading(const QString& heading)
{
    if (!m_heading) {
        m_heading = new ElidedLabel(this);
        m_heading->setFont(theme::font(theme::Type::BodyStrong, font()));
        column()->insertWidget(0, m_heading);
    }
    m_heading->setText(heading);
}

QString QuestionPanel::message() const { return m_message->text(); }

FlatButton* QuestionPanel::addAnswer(const QString& text, int response, bool isProminent)
{
    auto* answer = new FlatButton(text, isProminent ? FlatButton::Kind::Prominent : FlatButton::Kind::Plain, this);
    answer->setAccent(theme::Accent::Extract);
    answer->setProperty("response", response);
    m_buttons->addWidget(answer);
    m_answers.append(answer);
    if (isProminent)
        m_prominent = answer;
    connect(answer, &FlatButton::clicked, this, [this, response] { emit answered(response); });
    return answer;
}

FlatButton* QuestionPanel::button(int response) const
{
    for (FlatButton* answer : m_answers) {
        if (answer->property("response").toInt() == response)
            return answer;
    }
    return nullptr;
}

QWidget* QuestionPanel::focusTarget() const { return m_prominent; }

void QuestionPanel::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && button(0)) {
        button(0)->animateClick();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        auto* focused = qobject_cast<FlatButton*>(focusWidget());
        FlatButton* pressed = focused && m_answers.contains(focused) ? focused : m_prominent;
        if (pressed)
            pressed->animateClick();
    } else {
        TaskPanel::keyPressEvent(event);
    }
}

PasswordPanel::PasswordPanel(QWidget* parent)
    : QuestionPanel(Mark::Password, parent)
    , m_passwordfield(new PasswordField(this))
    , m_hint(new QLabel(this))
    , m_passwordpopuplabel(new QLabel(tr("Password &encoding:"), this))
    , m_passwordpopup(new KXEncodePopButton(this))
{
    m_passwordpopuplabel->setBuddy(m_passwordpopup);
    m_passwordpopup->setAccessibleName(tr("Password encoding"));
    m_hint->setTextFormat(Qt::PlainText);
    m_hint->setWordWrap(true);
    m_hint->setFont(theme::font(theme::Type::Caption, font()));
    body()->addWidget(m_passwordfield);
    body()->addWidget(m_hint);
    body()->addWidget(m_passwordpopuplabel);
    body()->addWidget(m_passwordpopup);
    addAnswer(tr("Stop"), 0, false);
    addAnswer(tr("Continue"), 1, true);
    connect(m_passwordfield, &PasswordField::capsLockChanged, this, [this](bool on) {
        updateHint();
        if (on)
            announce();
    });
    connect(m_passwordfield, &QLineEdit::textEdited, this, [this] {
        m_wasWrong = false;
        updateHint();
    });
}

void PasswordPanel::prepare(const QString& archiveName, bool wasWrong, bool caresAboutEncoding)
{
    setMessage(tr("Enter a PASSWORD to open the archive \"%1\".").arg(isolated(archiveName)));
    m_passwordfield->wipe();
    m_passwordfield->setRevealed(false);
    m_wasWrong = wasWrong;
    updateHint();
    setLeastHeight(caresAboutEncoding ? kPasswordHeightWithEncoding : kPasswordHeight);
    m_passwordpopuplabel->setVisible(caresAboutEncoding);
    m_passwordpopup->setVisible(caresAboutEncoding);
    if (caresAboutEncoding) {
        m_passwordpopup->buildEncodingListWithDefaultEncoding();
        m_passwordpopup->selectItemWithTag(kCharsetUnknown);
    }
}

void PasswordPanel::updateHint()
{
    QString text;
    const auto colors = theme::colors(palette());
    if (m_wasWrong)
        text = tr("That password is not right. Please try again.");
    else if (m_passwordfield->isCapsLockOn())
        text = tr("Caps Lock is on.");
    QPalette ink = palette();
    ink.setColor(QPalette::WindowText, m_wasWrong ? colors.danger : colors.warning);
    m_hint->setPalette(ink);
    m_hint->setText(text);
    m_hint->setVisible(!text.isEmpty());
    m_passwordfield->setAccessibleDescription(text.isEmpty() ? message() : text);
}

QString PasswordPanel::hint() const { return m_hint->text(); }

QWidget* PasswordPanel::focusTarget() const { return m_passwordfield; }

EncodingPanel::EncodingPanel(QWidget* parent)
    : QuestionPanel(Mark::Encoding, parent)
    , m_btnEncodePopButton(new KXEncodePopButton(this))
    , m_encodingfield(new ElidedLabel(this))
{
    auto* sample = new ColoredView(this);
    sample->setShaded(true);
    sample->setRadius(theme::kRadiusControl);
    auto* line = new QVBoxLayout(sample);
    line->setContentsMargins(theme::kSpaceS, theme::kSpaceXs, theme::kSpaceS, theme::kSpaceXs);
    line->addWidget(m_encodingfield);
    m_encodingfield->setFont(theme::font(theme::Type::BodyStrong, font()));
    body()->addWidget(sample);
    body()->addSpacing(theme::kSpaceXs);
    body()->addWidget(m_btnEncodePopButton);
    addAnswer(tr("Stop"), 0, false);
    addAnswer(tr("Continue"), 1, true);
    connect(m_btnEncodePopButton, &QComboBox::currentIndexChanged, this, &EncodingPanel::selectEncoding);
}

void EncodingPanel::prepare(const QString& archiveName, const XADString& name)
{
    m_namestring = name;
    setMessage(tr("The file names in \"%1\" do not say how they are written. Choose the encoding in which this name "
                  "reads right:")
                   .arg(isolated(archiveName)));
    m_btnEncodePopButton->buildEncodingListMatchingXADString(name);
    if (name.encoding() != kCharsetUnknown && !m_btnEncodePopButton->selectItemWithTag(name.encoding()))
        m_btnEncodePopButton->selectItemWithTag(kCharsetLatin1);
    selectEncoding();
}

void EncodingPanel::selectEncoding()
{
    const CharsetId tag = selectedTag();
    m_encodingfield->setText(m_namestring.canDecodeWithEncoding(tag) ? m_namestring.stringWithEncoding(tag)
                                                                     : QString());
    m_btnEncodePopButton->setAccessibleDescription(tr("This name would read: %1").arg(m_encodingfield->text()));
}

CharsetId EncodingPanel::selectedTag() const { return m_btnEncodePopButton->selectedTag(); }

QString EncodingPanel::preview() const { return m_encodingfield->text(); }

QWidget* EncodingPanel::focusTarget() const { return m_btnEncodePopButton; }

}
