#pragma once

#include "app/EventMonitor.h"

#include <QIcon>
#include <QObject>

#include <memory>

class QMenu;
class QSystemTrayIcon;

namespace vantoro {

class AppDelegate;
class MainWindowsHost;
class PopViewController;
class Popover;

/// The program's item in the desktop's tray, and what opens from it. Without a tray it does nothing until one comes.
class StatusMenu final : public QObject {
    Q_OBJECT
public:
    StatusMenu(AppDelegate& delegate, MainWindowsHost& windows);
    ~StatusMenu() override;

    /// Makes the item now, or as soon as the desktop has a tray.
    void createWhenPossible();
    void setStatusMenu();
    /// Opens the panel, or closes it.
    void statusItemAction();
    bool isShown() const;
    /// Of a template: one colour that reads on light panels and on dark ones.
    static QIcon templateIcon();

private:
    void closePopover();
    /// Empty where the desktop does not say where the item is and lets no window be placed.
    QRect statusButtonFrame() const;

    AppDelegate& m_delegate;
    MainWindowsHost& m_windows;
    std::unique_ptr<Popover> m_popover; // its tree holds the next, which therefore goes first
    std::unique_ptr<PopViewController> m_popViewController;
    std::unique_ptr<EventMonitor> m_eventMonitor;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_statusItem;
};

}
