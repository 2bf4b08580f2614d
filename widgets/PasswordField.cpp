#include "widgets/PasswordField.h"

#include "widgets/Icons.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QKeyEvent>
#include <QToolButton>

#include <optional>

namespace vantoro {
namespace {

/// The lights of the machine's own keyboards; nothing when there are none (a virtual display, a remote session).
std::optional<bool> capsLockLight()
{
    const QDir leds(QStringLiteral("/sys/class/leds"));
    std::optional<bool> on;
    for (const QString& name : leds.entryList({QStringLiteral("*::capslock")}, QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile brightness(leds.filePath(name + QStringLiteral("/brightness")));
        if (brightness.open(QIODevice::ReadOnly))
            on = on.value_or(false) || brightness.readAll().trimmed() != "0";
    }
    return on;
}

/// A letter whose case disagrees with the Shift key was typed under Caps Lock. Nothing for what has no case.
std::optional<bool> capsLockFromKey(const QKeyEvent& event)
{
    const QString text = event.text();
    if (text.size() != 1 || (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)))
        return std::nullopt;
    const QChar letter = text.front();
    if (letter.toUpper() == letter.toLower())
        return std::nullopt;
    return letter.isUpper() != bool(event.modifiers() & Qt::ShiftModifier);
}

}

PasswordField::PasswordField(QWidget* parent)
    : QLineEdit(parent)
    , m_reveal(addAction(QIcon(), TrailingPosition))
    , m_capsMark(addAction(QIcon(), TrailingPosition))
{
    setEchoMode(QLineEdit::Password);
    setInputMethodHints(Qt::ImhHiddenText | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase | Qt::ImhSensitiveData);
    setPlaceholderText(tr("Password"));
    setAccessibleName(tr("Password"));
    m_reveal->setCheckable(true);
    connect(m_reveal, &QAction::triggered, this, &PasswordField::setRevealed);
    m_capsMark->setText(tr("Caps Lock is on"));
    m_capsMark->setToolTip(tr("Caps Lock is on"));
    m_capsMark->setVisible(false);
    setRevealed(false);
    updateGlyphs();
    for (auto* button : findChildren<QToolButton*>()) {
        button->setCursor(Qt::ArrowCursor);
        if (button->defaultAction() == m_reveal)
            button->setFocusPolicy(Qt::TabFocus);
    }
}

void PasswordField::setRevealed(bool revealed)
{
    setEchoMode(revealed ? QLineEdit::Normal : QLineEdit::Password);
    m_reveal->setChecked(revealed);
    m_reveal->setText(revealed ? tr("Hide password") : tr("Show password"));
    m_reveal->setToolTip(m_reveal->text());
    for (auto* button : findChildren<QToolButton*>()) {
        if (button->defaultAction())
            button->setAccessibleName(button->defaultAction()->text());
    }
    updateGlyphs();
}

void PasswordField::wipe()
{
    setText(QString(text().size(), QChar(u'\0')));
    clear();
}

void PasswordField::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_CapsLock && !event->isAutoRepeat())
        setCapsLock(capsLockLight().value_or(!m_capsLock));
    else if (const auto on = capsLockFromKey(*event))
        setCapsLock(*on);
    QLineEdit::keyPressEvent(event);
}

void PasswordField::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (const auto on = capsLockLight())
        setCapsLock(*on);
}

void PasswordField::changeEvent(QEvent* event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        updateGlyphs();
}

void PasswordField::setCapsLock(bool on)
{
    if (on == m_capsLock)
        return;
    m_capsLock = on;
    m_capsMark->setVisible(on);
    emit capsLockChanged(on);
}

void PasswordField::updateGlyphs()
{
    const auto colors = theme::colors(palette());
    const qreal ratio = devicePixelRatioF();
    const QString eye = isRevealed() ? QStringLiteral("glyph-eye-off") : QStringLiteral("glyph-eye");
    m_reveal->setIcon(icons::glyph(eye, colors.textSecondary, theme::kIconSmall, ratio));
    m_capsMark->setIcon(icons::glyph(QStringLiteral("glyph-caps"), colors.warning, theme::kIconSmall, ratio));
}

}
