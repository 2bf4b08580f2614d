#include "app/SettingsCard.h"

#include "widgets/Theme.h"
#include "widgets/Translation.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

namespace vantoro {
namespace {

class Caption final : public QLabel {
public:
    Caption(const QString& text, QWidget* parent) : QLabel(text, parent)
    {
        setWordWrap(true);
        setTextFormat(Qt::PlainText);
        setForegroundRole(QPalette::PlaceholderText);
        apply();
    }

protected:
    void changeEvent(QEvent* event) override
    {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::ApplicationFontChange)
            apply();
    }

private:
    void apply() { setFont(theme::font(theme::Type::Caption, parentWidget()->font())); }
};

/// A hairline between two settings.
class Separator final : public QWidget {
public:
    explicit Separator(QWidget* parent) : QWidget(parent) { setFixedHeight(1); }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), theme::colors(palette()).border); }
};

}

QLabel* makeCaption(const QString& text, QWidget* parent) { return new Caption(text, parent); }

SettingsCard::SettingsCard(QWidget* parent) : ColoredView(parent), m_column(new QVBoxLayout(this))
{
    setRadius(theme::kRadiusCard);
    setBordered(true);
    m_column->setContentsMargins(theme::kSpaceL, theme::kSpaceXs, theme::kSpaceL, theme::kSpaceXs);
    m_column->setSpacing(0);
}

void SettingsCard::addSetting(const QString& name, const QString& sentence, QWidget* control, Lasts lasts, Place place)
{
    if (m_column->count() > 0)
        m_column->addWidget(new Separator(this));
    auto* title = new QLabel(name, this);
    title->setBuddy(control);
    title->setWordWrap(true);
    auto* words = new QVBoxLayout;
    words->setSpacing(theme::kSpaceXs / 2);
    words->addWidget(title);
    QString description = sentence;
    if (lasts == Lasts::UntilRestart)
        description += QLatin1Char(' ') + tr("Until Vantoro is started again.");
    words->addWidget(makeCaption(description, this));
    control->setAccessibleName(withoutMnemonic(name));
    control->setAccessibleDescription(description);
    auto* row = new QBoxLayout(place == Place::Below ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    row->setContentsMargins(0, theme::kSpaceM, 0, theme::kSpaceM);
    row->setSpacing(place == Place::Below ? theme::kSpaceS : theme::kSpaceL);
    row->addLayout(words, 1);
    row->addWidget(control, 0, place == Place::Below ? Qt::Alignment() : Qt::AlignVCenter);
    m_column->addLayout(row);
}

}
