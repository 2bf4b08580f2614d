#include "extraction/KXArchiveManageController.h"

#include "app/KXPrefsDefault.h"
#include "platform/OrphanedFolders.h"
#include "platform/PathNames.h"
#include "platform/Workspace.h"
#include "platform/XADException.h"
#include "platform/XADPlatform.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace vantoro {
namespace {

constexpr int kIntoDestination = 3; // folder-creation modes
constexpr int kAlwaysEnclosed = 2;

std::atomic<int> g_tempFolderCounter{0};

// Meant for a password that answers for all jobs of the queue; no prompt offers that.
Secret g_globalPassword;
bool g_applyPasswordToAll = false;

int effective(int override, qint64 setting) { return override >= 0 ? override : static_cast<int>(setting); }
bool effective(int override, bool setting) { return override >= 0 ? override != 0 : setting; }

}

std::unique_ptr<KXArchiveManageController> KXArchiveManageController::initWithFilename(const QString& filename)
{
    return std::unique_ptr<KXArchiveManageController>(new KXArchiveManageController(filename));
}

KXArchiveManageController::KXArchiveManageController(const QString& filename) : m_archivename(filename) {}

KXArchiveManageController::~KXArchiveManageController()
{
    if (m_thread.joinable()) {
        setIsCancelled(true);
        if (m_view)
            m_view->closeQuestions();
        joinThread();
        forgetTempDirectory(m_tmpdest);
    }
    if (m_scopedurl)
        m_scopedurl->stopAccessingSecurityScopedResource();
}

void KXArchiveManageController::joinThread()
{
    if (m_thread.joinable())
        m_thread.join();
}

QString KXArchiveManageController::filename() const
{
    return m_unarchiver ? m_unarchiver->outerArchiveParser().filename : m_archivename;
}

QStringList KXArchiveManageController::allFilenames() const
{
    return m_unarchiver ? m_unarchiver->outerArchiveParser().allFilenames : QStringList();
}

bool KXArchiveManageController::volumeScanningFailed() const
{
    return m_unarchiver && m_unarchiver->archiveParser().volumeScanningFailed;
}

bool KXArchiveManageController::caresAboutPasswordEncoding() const
{
    return m_unarchiver && m_unarchiver->archiveParser().caresAboutPasswordEncoding;
}

QString KXArchiveManageController::currentArchiveName() const
{
    const QString current = m_unarchiver ? m_unarchiver->archiveParser().currentFilename : QString();
    return lastPathComponent(current.isNull() ? filename() : current);
}

QString KXArchiveManageController::localizedDescriptionOfError(int error) const
{
    return XADException::describeXADError(error);
}

QString KXArchiveManageController::stringForXADPath(const XADString& path) const
{
    if (const auto setting = static_cast<CharsetId>(KXPrefsDefault::fileEncode()); setting != kCharsetUnknown)
        return path.stringWithEncoding(setting);
    const CharsetId selected = m_selectedEncoding;
    return path.stringWithEncoding(selected != kCharsetUnknown ? selected : path.encoding());
}

int KXArchiveManageController::folderCreationMode() const
{
    return effective(m_folderMode, KXPrefsDefault::creatFolder());
}

bool KXArchiveManageController::copyArchiveDateToExtractedFolder() const
{
    return effective(m_copydateMode, KXPrefsDefault::modifiedDate() == 2);
}

bool KXArchiveManageController::changeDateOfExtractedSingleItems() const
{
    KXPrefsDefault::changeDate(); // the setting is kept and read, but only a job's own choice changes dates
    return effective(m_changeFileMode, false);
}

bool KXArchiveManageController::deleteArchive() const
{
    return effective(m_removeArchiveMode, KXPrefsDefault::removeArchive());
}

bool KXArchiveManageController::openExtractedItem() const
{
    return effective(m_openFolderMode, KXPrefsDefault::openFolder());
}

void KXArchiveManageController::setIsCancelled(bool cancelled)
{
    if (cancelled)
        m_stop.cancel();
}

void KXArchiveManageController::useSecurityScopedURL(const SecurityScopedURL& url)
{
    if (m_scopedurl)
        m_scopedurl->stopAccessingSecurityScopedResource();
    m_scopedurl = url;
    m_scopedurl->startAccessingSecurityScopedResource();
}

void KXArchiveManageController::prepare()
{
    m_unarchiver = XADSimpleUnarchiver::simpleUnarchiverForPath(m_archivename, m_stop);
}

void KXArchiveManageController::prepareWithFinishAction(Action<KXArchiveManageController*> finishAction)
{
    m_finishAction = std::move(finishAction);
    m_thread = std::thread([this, path = m_archivename, stop = m_stop] {
        auto made = std::make_shared<std::unique_ptr<XADSimpleUnarchiver>>(
            XADSimpleUnarchiver::simpleUnarchiverForPath(path, stop));
        performOnMainThread(this, [this, made] {
            joinThread();
            m_unarchiver = std::move(*made);
            tellFinished();
        });
    });
}

void KXArchiveManageController::runWithFinishAction(Action<KXArchiveManageController*> finishAction)
{
    m_finishAction = std::move(finishAction);
    m_view->setCancelAction({this, &KXArchiveManageController::archiveTaskViewCancelled});
    takeTemporaryFolder();
    m_filter = m_selectedEntries.value_or(SharedSelection::indices());
    m_thread = std::thread([this] { extractThreadEntry(); });
}

/// The first free name: another process may be using one.
void KXArchiveManageController::takeTemporaryFolder()
{
    do
        m_tmpdest = appendingPathComponent(m_destination, QStringLiteral(".Vantoro%1").arg(g_tempFolderCounter++));
    while (QFileInfo::exists(m_tmpdest));
}

void KXArchiveManageController::archiveTaskViewCancelled(TaskViewPort*) { setIsCancelled(true); }

void KXArchiveManageController::extractThreadEntry()
{
    const bool succeeded = extract();
    if (!isIntoDestination())
        XADPlatform::removeItemAtPath(m_tmpdest);
    performOnMainThread(this, [this, succeeded] {
        joinThread();
        succeeded ? extractFinished() : extractFailed();
    });
}

bool KXArchiveManageController::extract()
{
    if (!m_unarchiver) {
        displayOpenError(tr("DO NOT support unarchive this archive due to the format error."));
        return false;
    }
    configureUnarchiver();
    if (!parseArchive())
        return false;
    placeOutput();
    return unarchive() && moveResultIntoPlace();
}

void KXArchiveManageController::configureUnarchiver()
{
    const bool copyDate = copyArchiveDateToExtractedFolder();
    const bool soloDate = changeDateOfExtractedSingleItems();
    m_unarchiver->setDelegate(this);
    m_unarchiver->setCopiesArchiveModificationTimeToEnclosingDirectory(copyDate);
    m_unarchiver->setCopiesArchiveModificationTimeToSoloItems(copyDate && soloDate);
    m_unarchiver->setResetsDateForSoloItems(!copyDate && soloDate);
    for (const quint64 index : m_filter)
        m_unarchiver->addIndexFilter(index);
}

bool KXArchiveManageController::parseArchive()
{
    const int result = m_unarchiver->parse();
    if (result == 0)
        return true;
    if (result == XADException::kBreak)
        return false;
    const QString message = tr("ERROR happened while reading the contents of the file \"%1\": %2")
                                .arg(currentArchiveName(), describeWithParts(result));
    m_outcome.error = message;
    if (!m_view->displayError(message, &m_isIgnoreAll))
        return false;
    m_isErrors = true;
    return true;
}

void KXArchiveManageController::placeOutput()
{
    const int mode = folderCreationMode();
    if (mode == kIntoDestination) {
        m_unarchiver->setDestination(m_destination);
        m_unarchiver->setEnclosingDirectoryName(QString());
        return;
    }
    m_unarchiver->setDestination(m_tmpdest);
    m_unarchiver->setRemovesEnclosingDirectoryForSoloItems(mode != kAlwaysEnclosed);
    rememberTempDirectory(m_tmpdest);
}

bool KXArchiveManageController::unarchive()
{
    const int result = m_unarchiver->unarchive();
    m_outcome.bytes = m_unarchiver->extractedBytes();
    m_outcome.notes = m_unarchiver->notes();
    if (result != 0 && result != XADException::kBreak) {
        displayOpenError(tr("ERROR happened while extracting the contents of the file \"%1\": %2")
                             .arg(currentArchiveName(), describeWithParts(result)));
    }
    return result == 0;
}

bool KXArchiveManageController::isIntoDestination() const
{
    return !m_unarchiver || m_unarchiver->enclosingDirectoryName().isNull();
}

/// On the job's thread, so that the row can still say why the result did not get there.
bool KXArchiveManageController::moveResultIntoPlace()
{
    const QString item = m_unarchiver->createdItem();
    if (isIntoDestination() || item.isEmpty())
        return true;
    QString target = appendingPathComponent(m_destination, lastPathComponent(item));
    if (!m_unarchiver->wasSoloItem() && Workspace::shared().isFilePackage(item))
        target = deletingPathExtension(target); // our own folder must not look like a program
    m_final = XADPlatform::moveItemAtPath(item, target);
    if (!m_final.isNull())
        return true;
    displayOpenError(
        tr("ERROR happened while extracting the contents of the file \"%1\": %2")
            .arg(currentArchiveName(), tr("the result could not be moved into the folder \"%1\"").arg(m_destination)));
    return false;
}

QString KXArchiveManageController::describeWithParts(int error) const
{
    const QString missing = m_unarchiver->archiveParser().missingVolume;
    const QString description = localizedDescriptionOfError(error);
    return missing.isEmpty() ? description : QStringLiteral("%1 (%2)").arg(description, missing);
}

void KXArchiveManageController::displayOpenError(const QString& message)
{
    m_outcome.error = message;
    m_view->displayOpenError(message);
}

void KXArchiveManageController::extractFinished()
{
    forgetTempDirectory(m_tmpdest);
    m_outcome.succeeded = true;
    m_outcome.item = m_final.isNull() ? m_destination : m_final;
    if (deleteArchive() && !m_isErrors)
        recycleArchive();
    showResult();
    tellFinished();
}

void KXArchiveManageController::extractFailed()
{
    forgetTempDirectory(m_tmpdest);
    tellFinished();
}

/// The owner may drop the job in answer.
void KXArchiveManageController::tellFinished()
{
    m_outcome.archive = lastPathComponent(m_archivename);
    m_outcome.cancelled = isCancelled();
    const auto action = std::exchange(m_finishAction, {});
    action(this);
}

/// All volumes beside the archive, together; those elsewhere stay.
void KXArchiveManageController::recycleArchive()
{
    const QString folder = deletingLastPathComponent(m_archivename);
    QStringList names;
    for (const QString& volume : allFilenames()) {
        if (deletingLastPathComponent(volume) == folder)
            names += lastPathComponent(volume);
    }
    if (!Workspace::shared().recycle(folder, names))
        m_outcome.notes += tr("The archive could not be moved to the Trash.");
}

void KXArchiveManageController::showResult()
{
    Workspace& workspace = Workspace::shared();
    if (!openExtractedItem()) {
        static const QRegularExpression mailDownload(QStringLiteral("/Library/Mail Downloads/[^/]+$"));
        if (m_final.contains(mailDownload))
            workspace.selectFile(m_final);
        return;
    }
    if (m_final.isNull())
        workspace.openFile(m_destination);
    else if (QFileInfo(m_final).isDir() && !workspace.isFilePackage(m_final))
        workspace.openFile(m_final);
    else
        workspace.selectFile(m_final);
}

void KXArchiveManageController::rememberTempDirectory(const QString& path) { OrphanedFolders::remember(path); }
void KXArchiveManageController::forgetTempDirectory(const QString& path) { OrphanedFolders::forget(path); }

void KXArchiveManageController::clearGlobalPassword()
{
    g_globalPassword = {};
    g_applyPasswordToAll = false;
}

}
