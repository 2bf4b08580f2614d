// The road of one job: settled in the setup queue, run in the extraction queue.
#include "app/AppDelegate.h"

#include "app/KXPrefsDefault.h"

#include "files/CSURLCache.h"
#include "files/CustomePanel.h"
#include "platform/PathNames.h"
#include "platform/Workspace.h"

#include <QDir>

#include <algorithm>

namespace vantoro {
namespace {

/// Answers of the row whose destination cannot be written to.
enum NotWritableResponse { kStop = 0, kExtractToDesktop = 1, kExtractElsewhere = 2 };

OpenPanel destinationPanel(const QString& folder)
{
    return CustomePanel::openPanelWithTitleMessage(
        {.message = AppDelegate::tr("Please select the extracted destination"),
         .prompt = AppDelegate::tr("Extract"),
         .chooseFiles = false,
         .chooseDirectories = true,
         .createDirectories = true,
         .directory = folder});
}

void cacheGrant(const QUrl& url)
{
    if (CSURLCache* cache = CSURLCache::defaultCache())
        cache->cacheSecurityScopedURL(SecurityScopedURL(url));
}

std::optional<SecurityScopedURL> grantFor(const QString& path)
{
    CSURLCache* cache = CSURLCache::defaultCache();
    return cache ? cache->securityScopedURLAllowingAccessToPath(path) : std::nullopt;
}

}

void AppDelegate::addArchiveController(std::unique_ptr<KXArchiveManageController> archive)
{
    KXArchiveManageController* job = archive.get();
    TaskListPort& list = m_taskWindow.taskLists();
    TaskViewPort* view = list.makeTaskView();
    view->setCancelAction({this, &AppDelegate::cancelArchiveTaskViewBeforeSetup});
    view->setArchiveController(job);
    view->setupWaitView();
    list.addTaskView(view);
    job->setTaskView(view);
    m_archivecontrollerArray.push_back(std::move(archive));
    if (m_archivecontrollerArray.size() == 1)
        emit runningChanged(true);
    m_taskWindow.bringToFront();
    m_setuptasks.taskWithTarget(this).call(&AppDelegate::setupExtractArchiveController, job);
}

void AppDelegate::setupExtractArchiveController(KXArchiveManageController* archive)
{
    if (archive->isCancelled()) {
        dropArchiveController(archive);
        m_setuptasks.finishCurrentTask();
        return;
    }
    archive->taskView()->setCancelAction({});
    if (archive->destination().isNull())
        archive->setDestination(m_selectedDestinaion);
    checkDestPathForArchiveController(archive);
}

void AppDelegate::checkDestPathForArchiveController(KXArchiveManageController* archive)
{
    checkDestPath(archive, Attempt::First);
}

void AppDelegate::checkDestPathForArchiveControllerAgain(KXArchiveManageController* archive)
{
    checkDestPath(archive, Attempt::Second);
}

void AppDelegate::checkDestPath(KXArchiveManageController* archive, Attempt attempt)
{
    const QString panelFolder
        = KXPrefsDefault::extractToCurrent() ? archive->destination() : KXPrefsDefault::lastDestination();
    if (archive->destination().isNull())
        return lauchOpenPanel(archive, panelFolder);
    if (attempt == Attempt::First) {
        if (const auto grant = grantFor(archive->destination()))
            archive->useSecurityScopedURL(*grant);
    }
    if (Workspace::shared().isWritableFolder(archive->destination()))
        return prepareArchiveController(archive);
    if (attempt == Attempt::First)
        return lauchOpenPanel(archive, panelFolder);
    archive->taskView()->displayNotWritableErrorWithResponseAction(
        {this, &AppDelegate::archiveTaskViewNotWritableResponse});
}

void AppDelegate::lauchOpenPanel(KXArchiveManageController* archive, const QString& path)
{
    m_panels.runOpenPanel(destinationPanel(path), Action<PanelResult>(this, [this, archive](const PanelResult& result) {
                              archiveDestinationPanelDidEnd(archive, result);
                          }));
}

void AppDelegate::archiveDestinationPanelDidEnd(KXArchiveManageController* archive, const PanelResult& result)
{
    using Step = Action<KXArchiveManageController*>;
    if (!result || result->isEmpty())
        return Step(this, &AppDelegate::cancelSetupForArchiveController).later(archive);
    const QUrl chosen = result->constFirst();
    cacheGrant(chosen);
    m_selectedDestinaion = chosen.toLocalFile();
    KXPrefsDefault::setLastDestination(m_selectedDestinaion);
    archive->setDestination(m_selectedDestinaion);
    Step(this, &AppDelegate::checkDestPathForArchiveControllerAgain).later(archive);
}

void AppDelegate::archiveTaskViewNotWritableResponse(TaskViewPort* view, int response)
{
    KXArchiveManageController* archive = view->archiveController();
    switch (response) {
    case kExtractElsewhere:
        archive->setDestination(QString());
        return checkDestPathForArchiveController(archive);
    case kExtractToDesktop: {
        const QString desktop = KXPrefsDefault::desktopDirectory();
        QDir().mkpath(desktop); // a new account has none yet
        archive->setDestination(desktop);
        return checkDestPathForArchiveController(archive);
    }
    case kStop:
        return cancelSetupForArchiveController(archive);
    default:
        return;
    }
}

void AppDelegate::prepareArchiveController(KXArchiveManageController* archive)
{
    archive->prepareWithFinishAction({this, &AppDelegate::archiveControllerPrepared});
}

void AppDelegate::archiveControllerPrepared(KXArchiveManageController* archive)
{
    // Outside a sandbox no grant can bring back a volume that is not there; the job says which one it misses.
    if (!archive->volumeScanningFailed() || !CSURLCache::defaultCache())
        return finishSetupForArchiveController(archive);
    if (const auto grant = grantFor(deletingLastPathComponent(archive->filename()))) {
        archive->useSecurityScopedURL(*grant);
        archive->prepareWithFinishAction({this, &AppDelegate::finishSetupForArchiveController});
        return;
    }
    askForVolumes(archive);
}

void AppDelegate::askForVolumes(KXArchiveManageController* archive)
{
    const QString folder = deletingLastPathComponent(archive->filename());
    m_panels.runOpenPanel(
        destinationPanel(folder), Action<PanelResult>(this, [this, archive](const PanelResult& result) {
            if (!result || result->isEmpty()) {
                Action<KXArchiveManageController*>(this, &AppDelegate::cancelSetupForArchiveController).later(archive);
                return;
            }
            cacheGrant(result->constFirst());
            archive->prepareWithFinishAction({this, &AppDelegate::finishSetupForArchiveController});
        }));
}

void AppDelegate::finishSetupForArchiveController(KXArchiveManageController* archive)
{
    archive->taskView()->updateWaitView();
    archive->taskView()->setCancelAction({this, &AppDelegate::cancelArchiveTaskViewBeforeExtract});
    m_extracttasks.taskWithTarget(this).call(&AppDelegate::beginExtractForArchiveController, archive);
    m_setuptasks.finishCurrentTask();
}

void AppDelegate::cancelSetupForArchiveController(KXArchiveManageController* archive)
{
    removeTaskView(archive);
    dropArchiveController(archive);
    m_setuptasks.finishCurrentTask();
    m_taskWindow.orderOut(); // also when other jobs remain
}

void AppDelegate::cancelArchiveTaskViewBeforeSetup(TaskViewPort* view)
{
    KXArchiveManageController* archive = view->archiveController();
    archive->setIsCancelled(true);
    removeTaskView(archive);
}

void AppDelegate::cancelArchiveTaskViewBeforeExtract(TaskViewPort* view) { cancelArchiveTaskViewBeforeSetup(view); }

void AppDelegate::beginExtractForArchiveController(KXArchiveManageController* archive)
{
    if (archive->isCancelled()) {
        dropArchiveController(archive);
        m_extracttasks.finishCurrentTask();
        return;
    }
    archive->taskView()->setupProgressViewInPreparingMode();
    archive->runWithFinishAction({this, &AppDelegate::archiveControllerFinished});
}

void AppDelegate::archiveControllerFinished(KXArchiveManageController* archive)
{
    m_outcomes.push_back(archive->outcome());
    removeTaskView(archive);
    dropArchiveController(archive);
    m_extracttasks.finishCurrentTask();
}

void AppDelegate::removeTaskView(KXArchiveManageController* archive)
{
    m_taskWindow.taskLists().removeTaskView(archive->taskView());
    archive->setTaskView(nullptr);
}

/// The job may be the caller's caller: it goes in a later turn of the main loop.
void AppDelegate::dropArchiveController(KXArchiveManageController* archive)
{
    const auto job
        = std::ranges::find(m_archivecontrollerArray, archive, &std::unique_ptr<KXArchiveManageController>::get);
    if (job == m_archivecontrollerArray.end())
        return;
    job->release()->deleteLater();
    m_archivecontrollerArray.erase(job);
    if (m_archivecontrollerArray.empty())
        emit runningChanged(false);
}

void AppDelegate::setupQueueEmpty(KXTaskQueueObject*)
{
    if (m_extracttasks.isEmpty())
        allQueuesEmpty();
    m_selectedDestinaion = QString();
}

void AppDelegate::extractQueueEmpty(KXTaskQueueObject*)
{
    if (m_setuptasks.isEmpty())
        allQueuesEmpty();
    KXArchiveManageController::clearGlobalPassword();
}

void AppDelegate::allQueuesEmpty()
{
    const bool windowWasActive = m_taskWindow.isActive();
    m_taskWindow.orderOut();
    if (!m_outcomes.empty())
        emit extractionsFinished(std::exchange(m_outcomes, {}), windowWasActive);
}

}
