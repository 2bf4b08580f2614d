#pragma once

#include "platform/XADEntryTable.h"

#include "engine/io/cancel.h"
#include "engine/io/secret.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vantoro {

/// What an archive says of one entry.
struct XADDataForkDictionary {
    std::optional<qint64> fileSize; ///< XADFileSize, in bytes
    QDateTime lastModificationDate; ///< XADLastModificationDate; invalid when not stored
    bool isEncrypted = false;
    bool isLink = false;
};

/// Goes along with a listing; both are used on the thread that lists, `cancel` may be set from any.
struct XADListingWatch {
    std::function<void(qsizetype entries)> counted; ///< how many entries are known so far, some twenty times a second
    CancelToken cancel; ///< ends the listing with XADException::kBreak
};

/// Goes along with an extraction of entries; called on the thread that extracts.
struct XADExtractionWatch {
    std::function<void(double fraction, const QString& entry)> progressed; ///< 0 to 1, some twenty times a second
    std::function<void(const QString& entry, int error)> failed; ///< the others go on
};

/// What a status line says of an archive.
struct XADArchiveSummary {
    QString format; ///< as people name it: "Zip", "tar in gz"
    qsizetype entries = 0;
    qint64 totalSize = 0; ///< sum of the entries' sizes as far as the archive tells them, in bytes
    qint64 packedSize = 0; ///< of the archive itself, all volumes together
    qsizetype volumes = 1;
    bool isEncrypted = false;
    bool hasEncryptedNames = false;
    bool isSolid = false;
    QString nameEncoding; ///< IANA name of what the names were found to be in; empty where they needed no finding
    QString comment;
    QString damage; ///< what is wrong with the archive as a whole although it was listed, as a sentence; mostly empty
};

/// An archive opened for looking into: its listing, the data of single entries, the extraction of single entries.
/// One thread at a time.
class XADArchive {
public:
    /// Opens and lists. Null with `error` set when the file cannot be read as an archive. An archive that names its
    /// entries only to who knows the password comes without entries: see needsPasswordToList().
    static std::unique_ptr<XADArchive> initWithFile(const QString& path, int* error = nullptr,
                                                    const XADListingWatch& watch = {});
    virtual ~XADArchive() = default;

    virtual qsizetype numberOfEntries() const = 0;
    /// A relative path with '/' between its parts and none of them ".." or empty, so that it may be joined to a folder.
    /// An entry whose name cannot be made so is called "entry N".
    /// The same listing without a copy; shared, so that it lasts as long as somebody shows it.
    virtual std::shared_ptr<const XADEntryTable> entryTable() const = 0;
    virtual QString nameOfEntry(qsizetype index) const = 0;
    virtual bool entryIsDirectory(qsizetype index) const = 0;
    virtual XADDataForkDictionary dataForkParserDictionaryForEntry(qsizetype index) const = 0;
    /// The folder that holds every entry; empty when there is none.
    virtual QString commonTopDirectory() const = 0;
    virtual XADArchiveSummary summary() const = 0;
    virtual bool isEncrypted() const = 0;
    virtual bool needsPasswordToList() const = 0;
    /// Where the listing ended early: the code of XADException that says why; 0 for a whole listing.
    virtual int listingError() const = 0;

    /// Opens and lists again where the names were encrypted.
    virtual void setPassword(const Secret& password) = 0;
    /// The entry's data, whole and checked; nothing for folders, bad indices, wrong passwords, damage, and entries
    /// larger than `limit` bytes: where the archive tells the size, those are refused before anything is decoded.
    /// `error` becomes a code of XADException: XADException::kTooLarge for the limit.
    virtual std::optional<QByteArray> contentsOfEntry(qsizetype index, qint64 limit = qint64{256} << 20,
                                                      int* error = nullptr)
        = 0;
    /// Whether the entry's data can be had with the password: decodes its first `enough` bytes and keeps none.
    virtual bool canReadEntry(qsizetype index, qint64 enough) = 0;
    /// Ends a reading or extraction that runs in another thread; the next one works again. Any thread.
    virtual void stop() = 0;
    /// Extracts into the folder, beneath it the entry's own folders; existing files are not touched. 0, or a code of
    /// XADException.
    virtual int extractEntry(qsizetype index, const QString& folder) = 0;
    /// The same for many entries in one pass. The first failure's code, or that of what ended it all: kBreak after
    /// stop().
    virtual int extractEntries(std::vector<quint64> indices, const QString& folder,
                               const XADExtractionWatch& watch = {})
        = 0;
};

}
