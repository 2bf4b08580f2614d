#pragma once

#include "engine/io/secret.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <memory>
#include <optional>

namespace vantoro {

/// What an archive says of one entry.
struct XADDataForkDictionary {
    std::optional<qint64> fileSize; ///< XADFileSize, in bytes
    QDateTime lastModificationDate; ///< XADLastModificationDate; invalid when not stored
    bool isEncrypted = false;
    bool isLink = false;
};

/// An archive opened for looking into: its listing, the data of single entries, the extraction of single entries.
/// One thread at a time.
class XADArchive {
public:
    /// Opens and lists. Null with `error` set when the file cannot be read as an archive. An archive that names its
    /// entries only to who knows the password comes without entries: see needsPasswordToList().
    static std::unique_ptr<XADArchive> initWithFile(const QString& path, int* error = nullptr);
    virtual ~XADArchive() = default;

    virtual qsizetype numberOfEntries() const = 0;
    /// A relative path with '/' between its parts and none of them ".." or empty, so that it may be joined to a folder.
    /// An entry whose name cannot be made so is called "entry N".
    virtual QString nameOfEntry(qsizetype index) const = 0;
    virtual bool entryIsDirectory(qsizetype index) const = 0;
    virtual XADDataForkDictionary dataForkParserDictionaryForEntry(qsizetype index) const = 0;
    /// The folder that holds every entry; empty when there is none.
    virtual QString commonTopDirectory() const = 0;
    virtual bool isEncrypted() const = 0;
    virtual bool needsPasswordToList() const = 0;
    /// Where the listing ended early: the code of XADException that says why; 0 for a whole listing.
    virtual int listingError() const = 0;

    /// Opens and lists again where the names were encrypted.
    virtual void setPassword(const Secret& password) = 0;
    /// The entry's data, whole and checked; nothing for folders, bad indices, wrong passwords, damage, and entries
    /// larger than `limit` bytes.
    virtual std::optional<QByteArray> contentsOfEntry(qsizetype index, qint64 limit = qint64{256} << 20) = 0;
    /// Extracts into the folder, beneath it the entry's own folders; existing files are not touched. 0, or a code of
    /// XADException.
    virtual int extractEntry(qsizetype index, const QString& folder) = 0;
};

}
