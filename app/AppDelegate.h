#pragma once

#include "app/AppHosts.h"

#include "extraction/KXArchiveManageController.h"
#include "extraction/KXTaskQueueObject.h"
#include "platform/Panels.h"

#include <QObject>

#include <memory>
#include <vector>

namespace vantoro {

/// Where an archive that is handed in goes; others act as Current.
enum class DestinationType {
    Current = 1, ///< the folder of the archive
    Desktop = 2, ///< the Desktop folder of the settings
    Ask = 3,
};

/// The application's controller: takes every file that comes from outside, decides whether it is shown or extracted,
/// and drives each extraction through two queues that take one job at a time. Main thread.
class AppDelegate final : public QObject {
    Q_OBJECT
public:
    /// The hosts outlive the controller. `panels` shows the sheets of the task window.
    AppDelegate(TaskWindowHost& taskWindow, MainWindowsHost& mainWindows, PanelService& panels);
    /// Stops what runs and waits for it.
    ~AppDelegate() override;

    // The launch, in this order.
    void awakeFromNib();
    void applicationDidFinishLaunching();

    // From outside. Every path but the browser's own empties the shared selection first.
    /// Shown in the contents browser or extracted, as the settings say.
    void applicationOpenFile(const QString& path);
    /// The program was started again without a file.
    void applicationShouldHandleReopen();
    void extractToCurrentFolderWithPasteboard(const QStringList& filenames);
    void extractToDesktopWithPasteboard(const QStringList& filenames);
    void extractToOthersWithPasteboard(const QStringList& filenames);
    /// Extracts to a place that the caller named.
    void extractPaths(const QStringList& paths, DestinationType type);
    void extractPathsIntoFolder(const QStringList& paths, const QString& folder);
    /// Shows the compression page, which takes the files.
    void compressFiles(const QStringList& paths);

    // From the contents browser.
    void unarchiveZip(const QString& path);
    /// Only these entries; the list itself becomes the shared selection.
    void unarchiveZip(const QString& path, std::shared_ptr<const EntryIndices> numArray);
    void unarchiveZip(const QString& path, int index);

    void createArchiveForPaths(const QStringList& paths, DestinationType type);
    void createArchiveForUrls(const QList<QUrl>& urls, DestinationType type);
    void createArchiveForPath(const QString& path, DestinationType type);
    void addArchiveController(std::unique_ptr<KXArchiveManageController> archive);

    void showMianWindow();
    void setMainTableViewEnable(bool enable);
    void openPrefsWindow();
    bool isRunning() const { return !m_archivecontrollerArray.empty(); }
    const QString& archivePath() const { return m_archivePath; }
    const QString& archiveExtension() const { return m_archiveExtension; }
    bool opened() const { return m_opened; }

    // Menu and toggles.
    void extractToCurrentFolder();
    void extractToDesktop();
    void extractToOthers();
    void toggleChangeViewMode(bool isOn);
    void tooggleQuickLook(bool isOn);
    void toggleOpenWindow() { showMianWindow(); }
    void openSupportBoard();
    void toggleHomePage();

signals:
    void runningChanged(bool isRunning);
    /// Nothing is left to do; the outcomes of everything since that last was so, in order.
    void extractionsFinished(const std::vector<vantoro::ExtractionOutcome>& outcomes, bool windowWasActive);

private:
    enum class Attempt { First, Second };

    DestinationType outsideDestinationType() const;
    QString destPathForFileName(const QString& filename, DestinationType type) const;
    bool isCoveredByLiveJob(const QString& path) const;
    void createArchive(const QString& path, const QString& destination);
    void bringHiddenTasksBack();
    void selectAndUnarchiveFilesWithDestination(DestinationType type);
    void clearTempFolders();

    void setupExtractArchiveController(KXArchiveManageController* archive);
    void checkDestPathForArchiveController(KXArchiveManageController* archive);
    void checkDestPathForArchiveControllerAgain(KXArchiveManageController* archive);
    void checkDestPath(KXArchiveManageController* archive, Attempt attempt);
    void lauchOpenPanel(KXArchiveManageController* archive, const QString& path);
    void archiveDestinationPanelDidEnd(KXArchiveManageController* archive, const PanelResult& result);
    void archiveTaskViewNotWritableResponse(TaskViewPort* view, int response);
    void prepareArchiveController(KXArchiveManageController* archive);
    void archiveControllerPrepared(KXArchiveManageController* archive);
    void askForVolumes(KXArchiveManageController* archive);
    void finishSetupForArchiveController(KXArchiveManageController* archive);
    void cancelSetupForArchiveController(KXArchiveManageController* archive);
    void cancelArchiveTaskViewBeforeSetup(TaskViewPort* view);
    void cancelArchiveTaskViewBeforeExtract(TaskViewPort* view);
    void beginExtractForArchiveController(KXArchiveManageController* archive);
    void archiveControllerFinished(KXArchiveManageController* archive);
    void setupQueueEmpty(KXTaskQueueObject* queue);
    void extractQueueEmpty(KXTaskQueueObject* queue);
    void allQueuesEmpty();
    void removeTaskView(KXArchiveManageController* archive);
    void dropArchiveController(KXArchiveManageController* archive);

    TaskWindowHost& m_taskWindow;
    MainWindowsHost& m_mainWindows;
    PanelService& m_panels;
    KXTaskQueueObject m_setuptasks;
    KXTaskQueueObject m_extracttasks;
    std::vector<std::unique_ptr<KXArchiveManageController>> m_archivecontrollerArray;
    QString m_selectedDestinaion;
    bool m_opened = false;
    QString m_archivePath;
    QString m_archiveExtension;
    EntryIndices m_numArray; // nothing fills it
    std::vector<ExtractionOutcome> m_outcomes;
};

}
