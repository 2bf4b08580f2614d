#include "browse/PasswordPrompt.h"

#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/Icons.h"
#include "widgets/PasswordField.h"

#include <QLabel>
#include <QVBoxLayout>

#include <utility>

namespace vantoro {
namespace {

constexpr int kWidth = 380;

}

PasswordPrompt::PasswordPrompt(QWidget* parent)
    : QDialog(parent)
    , m_question(new QLabel(this))
    , m_capsHint(new QLabel(tr("Caps Lock is on"), this))
    , m_passwordField(new PasswordField(this))
    , m_okButton(new FlatButton(tr("OK"), FlatButton::Kind::Prominent, this))
{
    setObjectName(QStringLiteral("passWdPanel"));
    setWindowTitle(tr("Password"));
    setWindowModality(Qt::ApplicationModal);
    setFixedWidth(kWidth);
    m_question->setWordWrap(true);
    m_question->setFont(theme::font(theme::Type::BodyStrong, font()));
    m_passwordField->setAccessibleName(tr("Password"));
    m_passwordField->setPlaceholderText(tr("Password"));
    m_capsHint->setFont(theme::font(theme::Type::Caption, font()));
    m_capsHint->hide();
    m_okButton->setAccent(theme::Accent::Extract);
    m_okButton->setDefault(true);

    auto* lock = new QLabel(this);
    lock->setPixmap(icons::glyph(QStringLiteral("glyph-lock"), theme::colors(palette()).textSecondary,
                                 theme::kIconMedium, devicePixelRatioF()));
    lock->setAlignment(Qt::AlignTop);
    auto* cancel = new FlatButton(tr("Cancel"), FlatButton::Kind::Plain, this);
    auto* head = new QHBoxLayout;
    head->setSpacing(theme::kSpaceM);
    head->addWidget(lock);
    head->addWidget(m_question, 1);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(theme::kSpaceS);
    buttons->addStretch(1);
    buttons->addWidget(cancel);
    buttons->addWidget(m_okButton);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(theme::kSpaceXl, theme::kSpaceXl, theme::kSpaceXl, theme::kSpaceL);
    column->setSpacing(theme::kSpaceM);
    column->addLayout(head);
    column->addWidget(m_passwordField);
    column->addWidget(m_capsHint);
    column->addLayout(buttons);

    connect(m_passwordField, &PasswordField::capsLockChanged, m_capsHint, &QLabel::setVisible);
    connect(m_passwordField, &QLineEdit::textChanged, m_okButton,
            [this](const QString& text) { m_okButton->setEnabled(!text.isEmpty()); });
    connect(m_okButton, &FlatButton::clicked, this, &PasswordPrompt::takeAnswer);
    connect(cancel, &FlatButton::clicked, this, &QDialog::reject);
    connect(this, &QDialog::rejected, this, [this] {
        m_passwordField->wipe();
        if (std::exchange(m_isAsking, false))
            emit cancelled();
    });
}

void PasswordPrompt::ask(const QString& archiveName)
{
    m_isAsking = true;
    m_question->setText(tr("“%1” is encrypted. Which password opens it?").arg(isolated(archiveName)));
    m_passwordField->wipe();
    m_okButton->setEnabled(false);
    show();
    m_passwordField->setFocus();
}

void PasswordPrompt::dismiss()
{
    m_isAsking = false;
    m_passwordField->wipe();
    hide();
}

void PasswordPrompt::takeAnswer()
{
    if (!m_isAsking)
        return;
    QByteArray text = m_passwordField->text().toUtf8();
    const Secret password(std::string_view(text.constData(), static_cast<std::size_t>(text.size())));
    wipe(text.data(), static_cast<std::size_t>(text.size()));
    dismiss();
    emit answered(password);
}

}
