#pragma once

#include "platform/XADString.h"

#include "engine/io/cancel.h"
#include "engine/io/secret.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace vantoro {

class XADSimpleUnarchiver;

/// What an entry says of itself while it is extracted.
struct XADEntryDictionary {
    XADString fileName; ///< XADFileNameKey
    bool isResourceFork = false; ///< XADIsResourceForkKey
    quint64 index = 0;
};

struct XADProgress {
    quint64 written = 0; ///< bytes of unpacked data
    quint64 writtenTotal = 0; ///< 0 when not known
    double fraction = 0; ///< 0 to 1, by bytes where known
    QString currentName;
    quint64 entries = 0; ///< finished
    quint64 entriesTotal = 0; ///< 0 when not known
};

/// The archive grows out of proportion, or there is no room for it.
struct XADSizeQuestion {
    enum class Kind { Ratio, Space, Crowd };
    Kind kind = Kind::Ratio;
    quint64 expected = 0; ///< bytes, or entries for Crowd
    quint64 available = 0; ///< bytes, for Space
    quint64 packed = 0; ///< size of the archive
};

/// Asked and told by an unarchiver, on the thread that called it.
class XADSimpleUnarchiverDelegate {
public:
    virtual ~XADSimpleUnarchiverDelegate() = default;
    virtual bool extractionShouldStopForSimpleUnarchiver(XADSimpleUnarchiver*) = 0;
    /// Null stops the extraction.
    virtual QString encodingNameForXADString(XADSimpleUnarchiver*, const XADString& string) = 0;
    /// Answer with setPassword(); no password stops the extraction. `attempt` above 0: the one before was wrong.
    virtual void simpleUnarchiverNeedsPassword(XADSimpleUnarchiver*, unsigned attempt) = 0;
    virtual void willExtractEntryWithDictionary(XADSimpleUnarchiver*, const XADEntryDictionary& entry) = 0;
    virtual void extractionProgress(XADSimpleUnarchiver*, const XADProgress& progress) = 0;
    /// `error` is never 0: entries that came out well are not told one by one.
    virtual void didExtractEntryWithDictionary(XADSimpleUnarchiver*, const XADEntryDictionary& entry, int error) = 0;
    /// Whether to go on.
    virtual bool allowsSize(XADSimpleUnarchiver*, const XADSizeQuestion& question) = 0;
};

/// What is known of an archive's files and of the archive as a whole.
class XADArchiveParser {
public:
    QString filename; ///< path of the file that was opened
    QString currentFilename; ///< path of the volume at hand; null when not known
    QStringList allFilenames; ///< paths of all volumes
    bool caresAboutPasswordEncoding = false;
    bool volumeScanningFailed = false; ///< property XADVolumeScanningFailedKey
    QString missingVolume; ///< bare name of the part that is not there
};

/// Extracts one archive. Made on any thread, then used by one thread at a time.
class XADSimpleUnarchiver {
public:
    /// Null with `error` set when no reader knows the file. An archive that is known but cannot be read yet (encrypted
    /// names, a missing volume, damage) is made all the same and tells at parse(). Copies of `stop` share its flag.
    static std::unique_ptr<XADSimpleUnarchiver> simpleUnarchiverForPath(const QString& path, const CancelToken& stop,
                                                                        int* error = nullptr);
    virtual ~XADSimpleUnarchiver() = default;

    virtual void setDelegate(XADSimpleUnarchiverDelegate* delegate) = 0;
    virtual void setCopiesArchiveModificationTimeToEnclosingDirectory(bool) = 0;
    virtual void setCopiesArchiveModificationTimeToSoloItems(bool) = 0;
    virtual void setResetsDateForSoloItems(bool) = 0;
    virtual void setRemovesEnclosingDirectoryForSoloItems(bool) = 0;
    /// Null: entries go straight into the destination.
    virtual void setEnclosingDirectoryName(const QString& name) = 0;
    virtual QString enclosingDirectoryName() const = 0;
    /// With an enclosing directory name: the private folder to unpack into, made by unarchive(). Without: the
    /// destination itself.
    virtual void setDestination(const QString& destination) = 0;
    virtual void addIndexFilter(quint64 index) = 0;
    virtual void setPassword(const Secret& password) = 0;
    /// For passwords in archives whose ciphers see bytes; without effect where they are defined as Unicode.
    virtual void setPasswordEncodingName(const QString& name) = 0;

    /// 0, 13 when stopped, or another code of XADException.
    virtual int parse() = 0;
    virtual int unarchive() = 0;

    virtual bool wasSoloItem() const = 0;
    virtual QString createdItem() const = 0;
    /// What was changed without loss, one sentence each (shortened names …).
    virtual QStringList notes() const = 0;
    virtual quint64 extractedBytes() const = 0;

    /// From any thread; grows while the archive is read (more volumes may be found on the way).
    virtual XADArchiveParser archiveParser() const = 0;
    virtual XADArchiveParser outerArchiveParser() const = 0;

    /// The path itself when it is free, else the first free "name 1.ext", "name 2.ext" … beside it.
    static QString findUniquePathForOriginalPath(const QString& path);
};

}
