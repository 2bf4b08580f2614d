// The launch, the files that come in, and the windows.
#include "app/AppDelegate.h"

#include "app/KXPrefsDefault.h"

#include "files/CustomePanel.h"
#include "files/FileFormats.h"
#include "platform/OrphanedFolders.h"
#include "platform/PathNames.h"
#include "platform/Workspace.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace vantoro {
namespace {

const QUrl kSupportPage(QStringLiteral("https://vantoro.org/support"));
const QUrl kHomePage(QStringLiteral("https://vantoro.org/"));

}

AppDelegate::AppDelegate(TaskWindowHost& taskWindow, MainWindowsHost& mainWindows, PanelService& panels)
    : m_taskWindow(taskWindow)
    , m_mainWindows(mainWindows)
    , m_panels(panels)
{
    m_setuptasks.setFinishAction({this, &AppDelegate::setupQueueEmpty});
    m_extracttasks.setFinishAction({this, &AppDelegate::extractQueueEmpty});
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::awakeFromNib() { clearTempFolders(); }

void AppDelegate::clearTempFolders() { OrphanedFolders::sweep(); }

/// These settings last until the next launch, whatever they were changed to.
void AppDelegate::applicationDidFinishLaunching()
{
    KXPrefsDefault::setAutoThreshold(80);
    KXPrefsDefault::setExtractToFolder(3);
    KXPrefsDefault::setFileEncode(0);
    KXPrefsDefault::setDesktop(KXPrefsDefault::desktopDirectory());
    KXPrefsDefault::setRemoveArchive(false);
    KXPrefsDefault::setCreateFolder(1);
    KXPrefsDefault::setChangeDate(false);
    KXPrefsDefault::setModifiedDate(1);
    KXPrefsDefault::setChangeViewMode(false);
    if (KXPrefsDefault::listArchive())
        showMianWindow();
}

/// Files from outside go beside the archive or wherever the user says; the "kExtractDestion" setting is read all the
/// same, as it always was.
DestinationType AppDelegate::outsideDestinationType() const
{
    KXPrefsDefault::extractToFolder();
    return KXPrefsDefault::extractToCurrent() ? DestinationType::Current : DestinationType::Ask;
}

void AppDelegate::applicationOpenFile(const QString& path)
{
    if (path.isNull())
        return;
    QString opened = path;
    if (KXPrefsDefault::listArchive() && !KXPrefsDefault::changeViewMode()) {
        showMianWindow();
        m_mainWindows.browseArchive(path);
    } else {
        SharedSelection::clear();
        opened = resolvingSymlinks(path);
        if (opened.isNull())
            return;
        createArchiveForPath(opened, outsideDestinationType());
    }
    m_archivePath = opened;
    m_archiveExtension = pathExtension(opened);
}

void AppDelegate::applicationShouldHandleReopen()
{
    showMianWindow();
    bringHiddenTasksBack();
}

/// A job may wait there for an answer.
void AppDelegate::bringHiddenTasksBack()
{
    if (isRunning() && !m_taskWindow.isVisible())
        m_taskWindow.bringToFront();
}

// The three services have one rule: the settings decide where to, and every file is taken, whatever its extension.
void AppDelegate::extractToCurrentFolderWithPasteboard(const QStringList& filenames)
{
    m_opened = true;
    SharedSelection::clear();
    const auto archives = std::ranges::count_if(filenames, hasArchiveExtension);
    qInfo("INFO: service with %lld files, %lld of them archives by name", static_cast<long long>(filenames.size()),
          static_cast<long long>(archives));
    createArchiveForPaths(filenames,
                          KXPrefsDefault::extractToCurrent() ? DestinationType::Current : DestinationType::Ask);
}

void AppDelegate::extractToDesktopWithPasteboard(const QStringList& filenames)
{
    extractToCurrentFolderWithPasteboard(filenames);
}

void AppDelegate::extractToOthersWithPasteboard(const QStringList& filenames)
{
    extractToCurrentFolderWithPasteboard(filenames);
}

void AppDelegate::extractPaths(const QStringList& paths, DestinationType type)
{
    SharedSelection::clear();
    createArchiveForPaths(paths, type);
}

void AppDelegate::extractPathsIntoFolder(const QStringList& paths, const QString& folder)
{
    SharedSelection::clear();
    QDir().mkpath(folder); // where that fails, the job asks for another place
    for (const QString& path : paths)
        createArchive(path, folder);
}

void AppDelegate::compressFiles(const QStringList& paths) { m_mainWindows.compressFiles(paths); }

void AppDelegate::unarchiveZip(const QString& path)
{
    m_numArray.clear();
    m_opened = true;
    if (const QString resolved = resolvingSymlinks(path); !resolved.isNull())
        createArchiveForPath(resolved, outsideDestinationType());
}

void AppDelegate::unarchiveZip(const QString& path, std::shared_ptr<const EntryIndices> numArray)
{
    m_opened = true;
    const QString resolved = resolvingSymlinks(path);
    if (resolved.isNull())
        return;
    SharedSelection::set(std::move(numArray));
    createArchiveForPath(resolved, outsideDestinationType());
}

void AppDelegate::unarchiveZip(const QString& path, int)
{
    m_opened = true;
    if (const QString resolved = resolvingSymlinks(path); !resolved.isNull())
        createArchiveForPath(resolved, outsideDestinationType());
}

void AppDelegate::createArchiveForPaths(const QStringList& paths, DestinationType type)
{
    for (const QString& path : paths)
        createArchiveForPath(path, type);
}

void AppDelegate::createArchiveForUrls(const QList<QUrl>& urls, DestinationType type)
{
    for (const QUrl& url : urls)
        createArchiveForPath(url.toLocalFile(), type);
}

void AppDelegate::createArchiveForPath(const QString& path, DestinationType type)
{
    createArchive(path, destPathForFileName(path, type));
}

QString AppDelegate::destPathForFileName(const QString& filename, DestinationType type) const
{
    switch (type) {
    case DestinationType::Desktop:
        if (KXPrefsDefault::desktop() == KXPrefsDefault::desktopDirectory())
            QDir().mkpath(KXPrefsDefault::desktop()); // a new account has none yet
        return KXPrefsDefault::desktop();
    case DestinationType::Ask:
        return {};
    case DestinationType::Current:
        break;
    }
    return deletingLastPathComponent(filename);
}

bool AppDelegate::isCoveredByLiveJob(const QString& path) const
{
    return std::ranges::any_of(m_archivecontrollerArray, [&](const auto& job) {
        return !job->isCancelled() && (job->filename() == path || job->allFilenames().contains(path));
    });
}

void AppDelegate::createArchive(const QString& path, const QString& destination)
{
    if (isCoveredByLiveJob(path))
        return bringHiddenTasksBack();
    auto archive = KXArchiveManageController::initWithFilename(path);
    archive->setDestination(destination);
    // Fixed now: what is chosen for a later archive must not reach a job that still waits for its turn.
    archive->setSelectedEntries(SharedSelection::indices());
    addArchiveController(std::move(archive));
}

void AppDelegate::showMianWindow()
{
    if (KXPrefsDefault::changeViewMode())
        m_mainWindows.showSinglePageWindow();
    else
        m_mainWindows.showTwoPageWindow();
}

void AppDelegate::setMainTableViewEnable(bool enable)
{
    if (m_mainWindows.isSinglePageWindowVisible())
        m_mainWindows.setTableViewEnable(enable);
}

void AppDelegate::openPrefsWindow() { m_mainWindows.showPrefsWindow(); }

// The commands' names and their destinations differ on purpose.
void AppDelegate::extractToCurrentFolder() { selectAndUnarchiveFilesWithDestination(DestinationType::Desktop); }
void AppDelegate::extractToDesktop() { selectAndUnarchiveFilesWithDestination(DestinationType::Current); }
void AppDelegate::extractToOthers()
{
    selectAndUnarchiveFilesWithDestination(KXPrefsDefault::extractToCurrent() ? DestinationType::Current
                                                                              : DestinationType::Ask);
}

void AppDelegate::selectAndUnarchiveFilesWithDestination(DestinationType type)
{
    if (!m_mainWindows.isTwoPageWindowVisible())
        showMianWindow();
    const OpenPanel panel = CustomePanel::openPanelWithTitleMessage({.message = tr("Select archives to extract"),
                                                                     .prompt = tr("Select"),
                                                                     .chooseFiles = true,
                                                                     .multipleSelection = true});
    m_panels.runOpenPanel(panel, Action<PanelResult>(this, [this, type](const PanelResult& chosen) {
                              if (!chosen)
                                  return;
                              SharedSelection::clear();
                              createArchiveForUrls(*chosen, type);
                          }));
}

void AppDelegate::toggleChangeViewMode(bool isOn)
{
    if (isOn)
        m_mainWindows.hideTwoPageWindow();
    else
        m_mainWindows.hideSinglePageWindow();
    KXPrefsDefault::setChangeViewMode(isOn);
    showMianWindow();
}

void AppDelegate::tooggleQuickLook(bool isOn) { KXPrefsDefault::setListArchive(isOn); }
void AppDelegate::openSupportBoard() { Workspace::shared().openUrl(kSupportPage); }
void AppDelegate::toggleHomePage() { Workspace::shared().openUrl(kHomePage); }

}
