#include "app/ShortcutsWindow.h"

#include "widgets/ColoredView.h"
#include "widgets/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

namespace vantoro {
namespace {

constexpr QSize kUsualSize(520, 600);

/// The name of a key, drawn as one.
class KeyCap final : public QLabel {
public:
    KeyCap(const QString& name, QWidget* parent) : QLabel(name, parent)
    {
        setFont(theme::font(theme::Type::Caption, font()));
        setAlignment(Qt::AlignCenter);
        setContentsMargins(theme::kSpaceS, theme::kSpaceXs / 2, theme::kSpaceS, theme::kSpaceXs);
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        const auto colors = theme::colors(palette());
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme::mix(colors.border, colors.text, 0.2));
        painter.drawRoundedRect(rect(), 5, 5);
        painter.setBrush(palette().color(QPalette::Button));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -2), 4, 4);
        painter.end();
        QLabel::paintEvent(event);
    }
};

}

ShortcutsWindow::ShortcutsWindow(const std::vector<ShortcutRow>& everywhere, const std::vector<ShortcutRow>& pages)
    : AppWindow(Escape::Closes)
{
    setObjectName(QStringLiteral("shortcutsWindow"));
    setWindowTitle(tr("Keyboard Shortcuts"));
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(theme::kSpaceXl, theme::kSpaceL, theme::kSpaceXl, theme::kSpaceXl);
    column->setSpacing(theme::kSpaceS);
    addGroup(column, tr("In every window"), everywhere);
    column->addSpacing(theme::kSpaceM);
    addGroup(column, tr("On the pages"), pages);
    column->addStretch(1);
    fillWith(content);
    resizeWithinScreen(kUsualSize);
}

void ShortcutsWindow::addGroup(QVBoxLayout* column, const QString& heading, const std::vector<ShortcutRow>& rows)
{
    auto* title = new QLabel(heading, this);
    title->setFont(theme::font(theme::Type::BodyStrong, font()));
    column->addWidget(title);
    auto* card = ColoredView::card(this);
    auto* lines = new QVBoxLayout(card);
    lines->setContentsMargins(theme::kSpaceL, theme::kSpaceS, theme::kSpaceL, theme::kSpaceS);
    lines->setSpacing(0);
    for (const ShortcutRow& row : rows) {
        auto* line = new QHBoxLayout;
        line->setContentsMargins(0, theme::kSpaceS, 0, theme::kSpaceS);
        line->setSpacing(theme::kSpaceS);
        auto* text = new QLabel(row.text, card);
        text->setWordWrap(true);
        line->addWidget(text, 1);
        for (const QKeySequence& keys : row.keys)
            line->addWidget(new KeyCap(keys.toString(QKeySequence::NativeText), card));
        lines->addLayout(line);
    }
    column->addWidget(card);
}

}
