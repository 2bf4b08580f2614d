#include "app/StatusMenu.h"

#include "app/AppDelegate.h"
#include "app/AppHosts.h"
#include "app/PopViewController.h"
#include "app/Popover.h"
#include "app/TrayPresence.h"

#include "widgets/Icons.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMenu>
#include <QSystemTrayIcon>

namespace vantoro {
namespace {

constexpr QColor kTemplate(128, 132, 138); // at least 3.4:1 on white and on near-black

}

StatusMenu::StatusMenu(AppDelegate& delegate, MainWindowsHost& windows) : m_delegate(delegate), m_windows(windows) {}

StatusMenu::~StatusMenu() { closePopover(); }

void StatusMenu::createWhenPossible()
{
    auto* tray = new TrayPresence(this);
    connect(tray, &TrayPresence::found, this, [this, tray] {
        tray->deleteLater();
        setStatusMenu();
    });
    tray->watch();
}

void StatusMenu::setStatusMenu()
{
    if (m_statusItem)
        return;
    m_popViewController = std::make_unique<PopViewController>(m_delegate, m_windows);
    m_menu.reset(m_popViewController->makeMenu(nullptr));
    m_eventMonitor = EventMonitor::eventMonitorWithEventMask(kLeftMouseDownMask | kRightMouseDownMask,
                                                             [this](const GlobalEvent&) { closePopover(); });
    connect(m_popViewController.get(), &PopViewController::chosen, this, &StatusMenu::closePopover);
    m_statusItem = std::make_unique<QSystemTrayIcon>(templateIcon());
    m_statusItem->setToolTip(tr("Vantoro"));
    m_statusItem->setContextMenu(m_menu.get());
    connect(m_statusItem.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
            statusItemAction();
    });
    m_statusItem->show();
}

QIcon StatusMenu::templateIcon()
{
    QIcon icon;
    for (const int edge : {16, 22, 24, 32, 48, 64})
        icon.addPixmap(icons::glyph(QStringLiteral("stIconTemplate"), kTemplate, edge, 1));
    return QIcon::fromTheme(QStringLiteral("org.vantoro.vantoro-symbolic"), icon);
}

bool StatusMenu::isShown() const { return m_popover && m_popover->isVisible(); }

void StatusMenu::closePopover()
{
    if (isShown())
        m_popover->hide();
}

QRect StatusMenu::statusButtonFrame() const
{
    const QRect frame = m_statusItem->geometry();
    if (frame.isValid())
        return frame;
    if (QGuiApplication::platformName() == QLatin1String("wayland"))
        return {};
    return {QCursor::pos(), QSize(1, 1)}; // where the item was clicked
}

void StatusMenu::statusItemAction()
{
    if (isShown() || (m_popover && m_popover->hasJustClosed()))
        return closePopover();
    const QRect frame = statusButtonFrame();
    if (!frame.isValid())
        return m_delegate.showMianWindow(); // the item's menu has the rest
    if (!m_popover) {
        m_popover = std::make_unique<Popover>(m_popViewController.get());
        connect(m_popover.get(), &Popover::closed, this, [this] { m_eventMonitor->stopMonitor(); });
    }
    m_popover->showRelativeTo(frame);
    m_eventMonitor->startMonitor();
}

}
