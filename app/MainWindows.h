#pragma once

#include "app/AppHosts.h"
#include "app/MainPages.h"
#include "app/PagesHost.h"

#include <QObject>

#include <memory>

namespace vantoro {

class AppCommands;
class AppDelegate;
class HowToUseWindow;
class InformationWindow;
class KXArchiveContentsViewController;
class KXMainWinController;
class KXPackViewController;
class SettingsWindow;
class ShortcutsWindow;
class TwoPageWindow;

/// The program's windows on the screen, each made when it is first shown, with the pages of its own.
class MainWindows final : public QObject, public MainWindowsHost {
    Q_OBJECT
public:
    MainWindows();
    ~MainWindows() override;
    /// Before the first call that shows a window; both outlive their use.
    void connectTo(AppDelegate& delegate, AppCommands& commands);
    /// Takes all windows away, with what their pages still do; before what they are connected to goes.
    void closeAll();

    void showTwoPageWindow() override;
    void hideTwoPageWindow() override;
    bool isTwoPageWindowVisible() const override;
    void showSinglePageWindow() override;
    void hideSinglePageWindow() override;
    bool isSinglePageWindowVisible() const override;
    void setTableViewEnable(bool enable) override;
    void showPrefsWindow() override;
    void showHowToUseWindow() override;
    void showShortcutsWindow() override;
    void showInfoWindow() override;
    void browseArchive(const QString& path) override;
    void compressFiles(const QStringList& paths) override;
    void chooseArchive() override;
    void chooseFilesToCompress() override;
    bool extractShownArchive() override;
    void quit() override;

    /// A window that a panel can belong to: the main window in use; null while none is shown.
    QWidget* visibleWindow() const;

private:
    TwoPageWindow& twoPageWindow();
    KXMainWinController& mainWinController();
    KXBaseViewCter* makePage(int index, QWidget* parent);
    void takeFiles(const QStringList& paths, int shownPage, KXBaseViewCter* page);
    /// Shows the main window in use with this page.
    KXBaseViewCter* showPage(int index);
    KXArchiveContentsViewController* browser() { return asBrowser(showPage(kBrowserPage)); }
    static KXArchiveContentsViewController* asBrowser(KXBaseViewCter* page);
    static KXPackViewController* asPacker(KXBaseViewCter* page);
    template <class Window, class... Arguments> void show(std::unique_ptr<Window>& window, Arguments&&... arguments);

    AppDelegate* m_delegate = nullptr;
    AppCommands* m_commands = nullptr;
    PagesHost m_host;
    std::unique_ptr<TwoPageWindow> m_mainWindowController;
    std::unique_ptr<KXMainWinController> m_mainWinController;
    std::unique_ptr<SettingsWindow> m_prefswindow;
    std::unique_ptr<InformationWindow> m_infoWindow;
    std::unique_ptr<HowToUseWindow> m_howtousWindow;
    std::unique_ptr<ShortcutsWindow> m_shortcutsWindow;
};

}
