#include "compress/StrengthBar.h"

#include "widgets/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QStyle>

namespace vantoro {
namespace {

constexpr int kBars = 4;
constexpr int kBarWidth = 20;
constexpr int kBarHeight = 4;
constexpr int kGap = theme::kSpaceXs;

}

StrengthBar::StrengthBar(QWidget* parent) : QWidget(parent), m_word(new QLabel(this))
{
    m_word->setFont(theme::font(theme::Type::Caption, font()));
    m_word->setForegroundRole(QPalette::PlaceholderText);
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(kBars * (kBarWidth + kGap) + kGap, 0, 0, 0);
    line->addWidget(m_word);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAccessibleName(tr("Password strength"));
}

void StrengthBar::setPassword(const QString& password)
{
    m_strength = passwordStrength(password);
    const QString word = passwordStrengthText(m_strength);
    m_word->setText(word);
    setAccessibleDescription(word);
    update();
}

QColor StrengthBar::color() const
{
    const auto colors = theme::colors(palette());
    switch (m_strength) {
    case PasswordStrength::Weak:
        return colors.danger;
    case PasswordStrength::Fair:
        return colors.warning;
    default:
        return theme::accent(theme::Accent::Extract); // green
    }
}

void StrengthBar::paintEvent(QPaintEvent*)
{
    if (m_strength == PasswordStrength::None)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QColor track = theme::colors(palette()).track;
    for (int i = 0; i < kBars; ++i) {
        painter.setBrush(i < static_cast<int>(m_strength) ? color() : track);
        const QRect bar(i * (kBarWidth + kGap), (height() - kBarHeight) / 2, kBarWidth, kBarHeight);
        painter.drawRoundedRect(QStyle::visualRect(layoutDirection(), rect(), bar), kBarHeight / 2.0, kBarHeight / 2.0);
    }
}

}
