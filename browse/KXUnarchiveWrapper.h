#pragma once

#include "browse/ArchiveListing.h"
#include "platform/XADArchive.h"

#include "engine/io/cancel.h"

#include <functional>

namespace vantoro {

/// Why an entry's data could not be had.
struct ReadProblem {
    enum class Kind { None, TooLarge, WrongPassword, Stopped, Failed };
    Kind kind = Kind::None;
    QString message; ///< a line for the user that names the entry; empty for None and Stopped
};

/// Told of a listing's progress, on the thread that lists.
struct ListingWatch {
    std::function<void(qsizetype entries)> listed; ///< entries found so far
    std::function<void(qsizetype made, qsizetype entries)> placed; ///< placeholders made so far
    CancelToken cancel; ///< any thread
};

/// One archive opened for browsing: its entries as items, and a skeleton of empty folders and files in the temporary
/// folder of the application that mirrors them. Not a thread's own, but one call at a time; stop() alone may be called
/// from anywhere at any time.
class KXUnarchiveWrapper {
public:
    /// Opens and lists; meant for a background thread. `archive()` is null when the file cannot be opened.
    static std::unique_ptr<KXUnarchiveWrapper> initWithPath(const QString& archivePath, const ListingWatch& watch = {});
    ~KXUnarchiveWrapper();

    XADArchive* archive() const { return m_archive.get(); }
    /// Why there is no archive, or why its listing ended early: a code of XADException; kBreak after a cancel.
    int openingError() const { return m_openingError; }
    const QString& archivePath() const { return m_archivePath; }
    /// The skeleton folder joined with the archive's common top folder, once it was listed.
    const QString& tmpArchivePath() const { return m_tmpArchivePath; }
    /// `archiveContents`, `archiveIndexContents` and `archiveDictionary` in one; never null, empty before listing.
    const std::shared_ptr<const ArchiveListing>& archiveContents() const { return m_contents; }
    const std::optional<Secret>& password() const { return m_password; }

    /// Both steps below. False when it was cancelled.
    bool obtainArchiveContents();
    /// First step: sweeps the temporary folder and fills the contents. A tree may be built and shown after it.
    void listContents();
    /// Second step, which may run beside the reading of entries: makes the placeholders, some 100,000 a second, and
    /// removes what was swept. What cannot be made is left out, as a name that is
    /// too long: the tree shows it all the same. False when it was cancelled.
    bool buildSkeleton();
    /// Entries without a placeholder after buildSkeleton().
    const std::vector<quint32>& entriesWithoutPlaceholder() const { return m_unplaced; }

    /// First entry of that name; -1 when there is none.
    qsizetype indexOfName(const QString& name) const { return m_contents->indexOfName(name); }
    /// No more than previewLimit() bytes; nothing, and why, for entries that are larger: where the archive tells their
    /// size before anything is decoded.
    std::optional<QByteArray> itemDataForName(const QString& name, ReadProblem* problem = nullptr);
    std::optional<QByteArray> itemDataForItem(const KXArchiveItem* item, ReadProblem* problem = nullptr);
    /// A sixteenth of the machine's memory, at least 16 MiB and at most 256 MiB.
    static qint64 previewLimit();
    bool crypted() const;
    /// The archive shows its entries only after setPassword() and another obtainArchiveContents().
    bool needsPasswordToList() const;
    bool checkPassword(const KXArchiveItem* item);
    /// Nothing clears only the copy here: the archive keeps the last password that it was given.
    void setPassword(const std::optional<Secret>& password);
    /// Ends a reading or extraction that runs in another thread; the next works again.
    void stop();

    /// 0 where the archive does not tell it.
    qint64 getSizeForItem(const KXArchiveItem* item) const;
    /// "2026/01/31 14:05"; empty where the archive does not tell it.
    QString getModifiedDateForItem(const KXArchiveItem* item) const;

private:
    KXUnarchiveWrapper(const QString& archivePath, const ListingWatch& watch);
    std::optional<QByteArray> dataOfEntry(qsizetype index, ReadProblem* problem);

    const QString m_archivePath;
    const ListingWatch m_watch;
    int m_openingError = 0;
    std::unique_ptr<XADArchive> m_archive;
    std::optional<Secret> m_password;
    QString m_tmpArchivePath;
    std::shared_ptr<const ArchiveListing> m_contents;
    std::vector<quint32> m_unplaced;
};

}
