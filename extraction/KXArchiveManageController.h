#pragma once

#include "extraction/SharedSelection.h"
#include "extraction/TaskViewPort.h"

#include "platform/SecurityScopedURL.h"

#include <QObject>

#include <atomic>
#include <thread>
#include <vector>

namespace vantoro {

/// What became of a job, for the sum at the end.
struct ExtractionOutcome {
    QString archive; ///< bare file name
    bool succeeded = false;
    bool cancelled = false; ///< by the user: nobody needs to be told
    QString error; ///< the sentence that was shown when it failed
    QString item; ///< the result's path; the destination when entries went straight into it
    QStringList problems; ///< one sentence per entry that was refused or damaged
    QStringList notes;
    quint64 bytes = 0;
};

/// One extraction: one archive, one thread, one result. All calls are for the main thread but the delegate's, which
/// come on the job's own thread.
class KXArchiveManageController final : public QObject, private XADSimpleUnarchiverDelegate {
    Q_OBJECT
public:
    static std::unique_ptr<KXArchiveManageController> initWithFilename(const QString& filename);
    /// Stops a running extraction, waits for its thread and removes what it left.
    ~KXArchiveManageController() override;

    TaskViewPort* taskView() const { return m_view; }
    /// Not owned; outlives the job's run.
    void setTaskView(TaskViewPort* view) { m_view = view; }
    /// Null until it is settled.
    const QString& destination() const { return m_destination; }
    void setDestination(const QString& destination) { m_destination = destination; }

    /// The path of the archive; of its first volume once it is prepared.
    QString filename() const;
    /// Every volume; empty before prepare().
    QStringList allFilenames() const;
    bool volumeScanningFailed() const;
    bool caresAboutPasswordEncoding() const;
    QString currentArchiveName() const;
    QString localizedDescriptionOfError(int error) const;
    /// Decodes a name with the encoding of the settings, the one that the user picked, or the detected one.
    QString stringForXADPath(const XADString& path) const;

    /// Each is the job's own choice where one was made, and the setting otherwise.
    int folderCreationMode() const;
    bool copyArchiveDateToExtractedFolder() const;
    bool changeDateOfExtractedSingleItems() const;
    bool deleteArchive() const;
    bool openExtractedItem() const;
    /// -1 takes the setting again.
    void setFolderCreationMode(int mode) { m_folderMode = mode; }
    void setCopyArchiveDateToExtractedFolder(int mode) { m_copydateMode = mode; }
    void setChangeDateOfExtractedSingleItems(int mode) { m_changeFileMode = mode; }
    void setDeleteArchive(int mode) { m_removeArchiveMode = mode; }
    void setOpenExctractedItem(int mode) { m_openFolderMode = mode; }
    /// Fixes the entries to extract; empty means all. Without this call the job reads the shared selection when it
    /// runs.
    void setSelectedEntries(EntryIndices indices) { m_selectedEntries = std::move(indices); }

    bool isCancelled() const { return m_stop.isCancelled(); } ///< from any thread
    /// Cannot be taken back.
    void setIsCancelled(bool cancelled);
    void useSecurityScopedURL(const SecurityScopedURL& url);

    /// Opens the archive; may be called again once access to its folder is granted.
    void prepare();
    /// The same on a thread of its own, for archives on slow media.
    void prepareWithFinishAction(Action<KXArchiveManageController*> finishAction);
    /// Starts the extraction; the action is called once, on the main thread, however it ends.
    void runWithFinishAction(Action<KXArchiveManageController*> finishAction);
    void archiveTaskViewCancelled(TaskViewPort* view);
    const ExtractionOutcome& outcome() const { return m_outcome; }

    static void rememberTempDirectory(const QString& path);
    static void forgetTempDirectory(const QString& path);
    static void clearGlobalPassword();

private:
    explicit KXArchiveManageController(const QString& filename);

    bool extractionShouldStopForSimpleUnarchiver(XADSimpleUnarchiver*) override;
    QString encodingNameForXADString(XADSimpleUnarchiver*, const XADString& string) override;
    void simpleUnarchiverNeedsPassword(XADSimpleUnarchiver*, unsigned attempt) override;
    void willExtractEntryWithDictionary(XADSimpleUnarchiver*, const XADEntryDictionary& entry) override;
    void extractionProgress(XADSimpleUnarchiver*, const XADProgress& progress) override;
    void didExtractEntryWithDictionary(XADSimpleUnarchiver*, const XADEntryDictionary& entry, int error) override;
    bool allowsSize(XADSimpleUnarchiver*, const XADSizeQuestion& question) override;

    void takeTemporaryFolder();
    void extractThreadEntry();
    bool extract(); ///< true: the result stands in its place
    void configureUnarchiver();
    bool parseArchive();
    void placeOutput();
    bool unarchive();
    bool moveResultIntoPlace();
    QString askForEncoding(const XADString& string);
    QString describeWithParts(int error) const;
    bool isIntoDestination() const;
    void extractFinished();
    void extractFailed();
    void displayOpenError(const QString& message);
    void recycleArchive();
    void showResult();
    void joinThread();
    void tellFinished();

    TaskViewPort* m_view = nullptr;
    std::unique_ptr<XADSimpleUnarchiver> m_unarchiver;
    const QString m_archivename;
    QString m_destination;
    QString m_tmpdest;
    QString m_final; // of the result; null when entries went straight into the destination
    std::atomic<CharsetId> m_selectedEncoding{kCharsetUnknown};
    Action<KXArchiveManageController*> m_finishAction;
    int m_folderMode = -1;
    int m_copydateMode = -1;
    int m_changeFileMode = -1;
    int m_removeArchiveMode = -1;
    int m_openFolderMode = -1;
    CancelToken m_stop; // isCancelled: the engine polls the same flag
    bool m_isIgnoreAll = false;
    bool m_isErrors = false;
    std::optional<SecurityScopedURL> m_scopedurl;
    std::optional<EntryIndices> m_selectedEntries;
    EntryIndices m_filter; // of this run
    ExtractionOutcome m_outcome;
    std::thread m_thread;
};

}
