#include "app/PopViewController.h"

#include "app/AppDelegate.h"
#include "app/PanelRow.h"

#include "widgets/Icons.h"
#include "widgets/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPainter>

namespace vantoro {
namespace {

constexpr int kWidth = 264;

}

PopViewController::PopViewController(AppDelegate& delegate, MainWindowsHost& windows)
    : m_delegate(delegate)
    , m_windows(windows)
{
    setPalette(theme::lightPalette()); // light above any panel
    auto* icon = new QLabel(this);
    icon->setPixmap(icons::pixmap(QStringLiteral("vantoro"), theme::kIconMedium, devicePixelRatioF()));
    auto* title = new QLabel(tr("Vantoro"), this);
    title->setFont(theme::font(theme::Type::BodyStrong, font()));
    auto* head = new QHBoxLayout;
    head->setContentsMargins(theme::kSpaceM, theme::kSpaceXs, theme::kSpaceM, theme::kSpaceS);
    head->setSpacing(theme::kSpaceM);
    head->addWidget(icon);
    head->addWidget(title, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(theme::kSpaceS, theme::kSpaceS, theme::kSpaceS, theme::kSpaceS);
    column->setSpacing(0);
    column->addLayout(head);
    for (const Row& row : rows()) {
        auto* button = new PanelRow(row.glyph, row.text, this);
        button->setObjectName(row.name);
        connect(button, &QAbstractButton::clicked, this, [this, action = row.action] {
            emit chosen();
            (this->*action)();
        });
        column->addWidget(button);
    }
    setMinimumWidth(kWidth);
}

QList<PopViewController::Row> PopViewController::rows()
{
    return {{QStringLiteral("popExtract"), QStringLiteral("glyph-extract"), tr("Extract Archives…"),
             &PopViewController::toggleExtractTo},
            {QStringLiteral("popMainWindow"), QStringLiteral("glyph-window"), tr("Open Main Window"),
             &PopViewController::toggleMainWindow},
            {QStringLiteral("popSettings"), QStringLiteral("glyph-settings"), tr("Settings"),
             &PopViewController::toggleSettings},
            {QStringLiteral("popHowTo"), QStringLiteral("glyph-help"), tr("How to Use"),
             &PopViewController::toggleHowToUse},
            {QStringLiteral("popQuit"), QStringLiteral("glyph-cancel"), tr("Quit Vantoro"),
             &PopViewController::toggleQuit}};
}

QMenu* PopViewController::makeMenu(QWidget* parent)
{
    auto* menu = new QMenu(parent);
    for (const Row& row : rows())
        connect(menu->addAction(row.text), &QAction::triggered, this, row.action);
    return menu;
}

void PopViewController::toggleExtractTo() { m_delegate.extractToOthers(); }
void PopViewController::toggleMainWindow() { m_delegate.showMianWindow(); }
void PopViewController::toggleSettings() { m_delegate.openPrefsWindow(); }
void PopViewController::toggleHowToUse() { m_windows.showHowToUseWindow(); }
void PopViewController::toggleQuit() { m_windows.quit(); }

void PopViewController::paintEvent(QPaintEvent*)
{
    const auto colors = theme::colors(palette());
    QPainter painter(this);
    painter.fillRect(rect(), colors.surface);
    painter.setPen(colors.border);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}
