#include "app/MainWindows.h"

#include "app/AppCommands.h"
#include "app/AppDelegate.h"
#include "app/AppWindow.h"
#include "app/HowToUseWindow.h"
#include "app/InformationWindow.h"
#include "app/KXMainWinController.h"
#include "app/KXPrefsDefault.h"
#include "app/SettingsWindow.h"
#include "app/ShortcutsWindow.h"
#include "app/TwoPageWindow.h"
#include "app/WindowDrops.h"

#include "browse/KXArchiveContentsViewController.h"
#include "compress/KXPackViewController.h"
#include "extraction/HDAlert.h"

#include <QApplication>
#include <QMenu>

namespace vantoro {

MainWindows::MainWindows()
{
    connect(&m_host, &PagesHost::compressingChanged, this, [this](bool isCompressing) {
        if (m_mainWindowController)
            m_mainWindowController->setTabsEnabled(!isCompressing);
        setTableViewEnable(!isCompressing);
    });
}

MainWindows::~MainWindows() = default;

void MainWindows::connectTo(AppDelegate& delegate, AppCommands& commands)
{
    m_delegate = &delegate;
    m_commands = &commands;
    m_host.setDelegate(delegate);
}

void MainWindows::closeAll()
{
    m_shortcutsWindow.reset();
    m_howtousWindow.reset();
    m_infoWindow.reset();
    m_prefswindow.reset();
    m_mainWinController.reset();
    m_mainWindowController.reset();
}

KXArchiveContentsViewController* MainWindows::asBrowser(KXBaseViewCter* page)
{
    return qobject_cast<KXArchiveContentsViewController*>(page);
}

KXPackViewController* MainWindows::asPacker(KXBaseViewCter* page) { return qobject_cast<KXPackViewController*>(page); }

KXBaseViewCter* MainWindows::makePage(int index, QWidget* parent)
{
    if (index == kCompressPage)
        return new KXPackViewController(m_host, parent);
    return new KXArchiveContentsViewController(m_host, parent);
}

TwoPageWindow& MainWindows::twoPageWindow()
{
    if (m_mainWindowController)
        return *m_mainWindowController;
    m_mainWindowController
        = std::make_unique<TwoPageWindow>([this](int index, QWidget* parent) { return makePage(index, parent); },
                                          [this](QWidget* parent) { return m_commands->makeMenu(parent); });
    auto* drops = new WindowDrops(m_mainWindowController->window());
    connect(drops, &WindowDrops::filesDropped, this, [this](const QStringList& paths) {
        const int shown = m_mainWindowController->shownPage();
        takeFiles(paths, shown, m_mainWindowController->page(shown));
    });
    return *m_mainWindowController;
}

KXMainWinController& MainWindows::mainWinController()
{
    if (m_mainWinController)
        return *m_mainWinController;
    m_mainWinController = std::make_unique<KXMainWinController>(
        [this](int index, QWidget* parent) { return makePage(index, parent); },
        KXMainWinController::Commands{.makeMenu = [this](QWidget* parent) { return m_commands->makeMenu(parent); },
                                      .toggleHowToUse = [this] { showHowToUseWindow(); },
                                      .toggleSettings = [this] { m_delegate->openPrefsWindow(); }});
    auto* drops = new WindowDrops(m_mainWinController->window());
    connect(drops, &WindowDrops::filesDropped, this, [this](const QStringList& paths) {
        takeFiles(paths, m_mainWinController->isShowing(kCompressPage) ? kCompressPage : kBrowserPage,
                  m_mainWinController->tempViewCter());
    });
    return *m_mainWinController;
}

/// What is dropped beside a page: files to compress where that page is shown, else archives as if opened.
void MainWindows::takeFiles(const QStringList& paths, int shownPage, KXBaseViewCter* page)
{
    if (shownPage == kCompressPage) {
        asPacker(page)->addFilesPathWithPasteboard(paths);
        return;
    }
    for (const QString& path : paths)
        m_delegate->applicationOpenFile(path);
}

void MainWindows::showTwoPageWindow() { twoPageWindow().showWindow(kBrowserPage); }

void MainWindows::hideTwoPageWindow()
{
    if (m_mainWindowController)
        m_mainWindowController->window()->hide();
}

bool MainWindows::isTwoPageWindowVisible() const
{
    return m_mainWindowController && m_mainWindowController->window()->isVisible();
}

void MainWindows::showSinglePageWindow() { mainWinController().showWindow(); }

void MainWindows::hideSinglePageWindow()
{
    if (m_mainWinController)
        m_mainWinController->hideWindow();
}

bool MainWindows::isSinglePageWindowVisible() const
{
    return m_mainWinController && m_mainWinController->window()->isVisible();
}

void MainWindows::setTableViewEnable(bool enable)
{
    if (m_mainWinController)
        m_mainWinController->setTableViewEnable(enable);
}

KXBaseViewCter* MainWindows::showPage(int index)
{
    if (KXPrefsDefault::changeViewMode()) {
        mainWinController().next(index);
        mainWinController().showWindow();
        return mainWinController().tempViewCter();
    }
    twoPageWindow().showWindow(index);
    return twoPageWindow().page(twoPageWindow().shownPage());
}

void MainWindows::browseArchive(const QString& path)
{
    auto* page = asBrowser(twoPageWindow().page(kBrowserPage));
    page->setArchivePath(path);
    page->getArchiveContainerWithPath(path);
}

void MainWindows::compressFiles(const QStringList& paths)
{
    if (auto* page = asPacker(showPage(kCompressPage)))
        page->addFilesPathWithPasteboard(paths);
}

void MainWindows::chooseArchive()
{
    if (auto* page = asBrowser(showPage(kBrowserPage)))
        page->addFiles();
}

void MainWindows::chooseFilesToCompress()
{
    if (auto* page = asPacker(showPage(kCompressPage)))
        page->addFiles();
}

bool MainWindows::extractShownArchive()
{
    KXBaseViewCter* page = nullptr;
    if (isTwoPageWindowVisible() && m_mainWindowController->shownPage() == kBrowserPage)
        page = m_mainWindowController->page(kBrowserPage);
    else if (isSinglePageWindowVisible() && m_mainWinController->isShowing(kBrowserPage))
        page = m_mainWinController->tempViewCter();
    auto* browser = asBrowser(page);
    return browser && browser->extractShownArchive();
}

void MainWindows::quit()
{
    const bool isExtracting = m_delegate && m_delegate->isRunning();
    if (!m_host.isCompressing() && !isExtracting)
        return QCoreApplication::quit();
    const auto alert = m_host.isCompressing()
        ? HDAlert::alertWithTitle(tr("Stop compressing and quit?"),
                                  tr("An archive is being written. It will not be kept."), HDAlert::Style::Warning)
        : HDAlert::alertWithTitle(tr("Stop extracting and quit?"),
                                  tr("An archive is being extracted. What is not finished is removed."),
                                  HDAlert::Style::Warning);
    alert->addCommonButtonWithTitle(tr("Go On"), {});
    alert->addButtonWithTitle(tr("Quit"), [](const HDAlertItem&) { QCoreApplication::quit(); });
    if (QWidget* window = visibleWindow())
        alert->show(window);
    else
        alert->show();
}

QWidget* MainWindows::visibleWindow() const
{
    if (isTwoPageWindowVisible())
        return m_mainWindowController->window();
    return isSinglePageWindowVisible() ? m_mainWinController->window() : nullptr;
}

template <class Window, class... Arguments>
void MainWindows::show(std::unique_ptr<Window>& window, Arguments&&... arguments)
{
    if (!window)
        window = std::make_unique<Window>(std::forward<Arguments>(arguments)...);
    window->bringToFront();
}

void MainWindows::showPrefsWindow() { show(m_prefswindow, *m_delegate); }
void MainWindows::showHowToUseWindow() { show(m_howtousWindow); }
void MainWindows::showInfoWindow() { show(m_infoWindow); }
void MainWindows::showShortcutsWindow() { show(m_shortcutsWindow, windowShortcuts(*m_commands), pageShortcuts()); }

}
