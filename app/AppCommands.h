#pragma once

#include <QKeySequence>
#include <QObject>

#include <span>
#include <vector>

class QAction;
class QMenu;
class QWidget;

namespace vantoro {

class AppDelegate;
class MainWindowsHost;

enum class Command {
    OpenArchive,
    NewArchive,
    Extract,
    ExtractToDesktop,
    ExtractBeside,
    ShowFirst,
    SidePanelWindow,
    ShowMainWindow,
    Settings,
    HowToUse,
    Shortcuts,
    Support,
    HomePage,
    Information,
    CloseWindow,
    Quit,
};

/// What the program can be told, in one place: every window takes the shortcuts, the windows' menu and the list of
/// shortcuts show the texts. Main thread.
class AppCommands final : public QObject {
    Q_OBJECT
public:
    /// Both outlive the commands.
    AppCommands(AppDelegate& delegate, MainWindowsHost& windows);
    ~AppCommands() override;

    QAction* action(Command command) const { return m_actions[static_cast<std::size_t>(command)]; }
    /// The menu of a main window; `parent` owns it.
    QMenu* makeMenu(QWidget* parent);
    /// From now on each window of the program gets the shortcuts when it is first shown.
    void followWindows();
    /// Sets the toggles to what the settings hold.
    void setPrefsAttributes();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void perform(Command command, bool isOn);

    AppDelegate& m_delegate;
    MainWindowsHost& m_windows;
    std::vector<QAction*> m_actions;
};

/// For the list of shortcuts: one line.
struct ShortcutRow {
    QString text;
    QList<QKeySequence> keys;
};
/// Those of the commands, then those that the pages and lists understand.
std::vector<ShortcutRow> windowShortcuts(const AppCommands& commands);
std::vector<ShortcutRow> pageShortcuts();

}
