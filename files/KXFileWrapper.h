#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariant>

#include <optional>

namespace vantoro {

/// Keys of attributesOfItemAtPath().
namespace FileAttribute {
inline const QString kType = QStringLiteral("FileType"); ///< QString: one of the four kinds below
inline const QString kSize = QStringLiteral("FileSize"); ///< qint64, in bytes
inline const QString kCreationDate = QStringLiteral("FileCreationDate"); ///< QDateTime; where the file system keeps it
inline const QString kModificationDate = QStringLiteral("FileModificationDate"); ///< QDateTime
inline const QString kPermissions = QStringLiteral("FilePosixPermissions"); ///< uint, without the type
inline const QString kOwner = QStringLiteral("FileOwnerAccountID"); ///< uint
inline const QString kGroup = QStringLiteral("FileGroupOwnerAccountID"); ///< uint
inline const QString kReferences = QStringLiteral("FileReferenceCount"); ///< qint64
inline const QString kNumber = QStringLiteral("FileSystemFileNumber"); ///< quint64

inline const QString kTypeDirectory = QStringLiteral("FileTypeDirectory");
inline const QString kTypeRegular = QStringLiteral("FileTypeRegular");
inline const QString kTypeSymbolicLink = QStringLiteral("FileTypeSymbolicLink");
inline const QString kTypeOther = QStringLiteral("FileTypeUnknown");
}

/// The general file library. No state but six folders found once; any thread.
///
/// Every path is made absolute by absolutePath() first, with two exceptions that say so. Where a path or an argument
/// makes no sense, an exception of files/Exceptions.h is thrown; what the system refuses comes back as false or
/// nothing, with a sentence for the log in `error` where there is one. An `error` that is passed is cleared first.
class KXFileWrapper {
public:
    // Paths: KXFileWrapperPaths.cpp
    /// Throws AssertionFailure for a null or an empty path.
    static void assertPath(const QString& path);
    /// The six known folders, the longest path first.
    static QStringList absoluteDirectories();
    /// The first known folder whose path the given one begins with; nothing for "/".
    static std::optional<QString> absoluteDirectoryForPath(const QString& path);
    /// The path itself inside a known folder; every other path, "/etc" too, is taken to lie in the documents folder.
    static QString absolutePath(const QString& path);
    static QString pathForApplicationSupportDirectory();
    static QString pathForApplicationSupportDirectoryWithPath(const QString& path);
    static QString pathForCachesDirectory();
    static QString pathForCachesDirectoryWithPath(const QString& path);
    static QString pathForDocumentsDirectory();
    static QString pathForDocumentsDirectoryWithPath(const QString& path);
    /// The application's state folder.
    static QString pathForLibraryDirectory();
    static QString pathForLibraryDirectoryWithPath(const QString& path);
    /// The program's resources: beside its share folder, or the folder that it runs from.
    static QString pathForMainBundleDirectory();
    static QString pathForMainBundleDirectoryWithPath(const QString& path);
    static QString pathForPlistNamed(const QString& name);
    /// A folder of this application and this user alone, made on first use (mode 0700).
    static QString pathForTemporaryDirectory();
    static QString pathForTemporaryDirectoryWithPath(const QString& path);
    static QUrl urlForItemAtPath(const QString& path);

    // Kinds and attributes: KXFileWrapperAttributes.cpp
    static bool isNotError(const QString* error);
    static bool existsItemAtPath(const QString& path);
    static bool isDirectoryItemAtPath(const QString& path, QString* error = nullptr);
    static bool isFileItemAtPath(const QString& path, QString* error = nullptr);
    /// A file of no bytes, or a folder whose listing is empty.
    static bool isEmptyItemAtPath(const QString& path, QString* error = nullptr);
    static bool isReadableItemAtPath(const QString& path);
    static bool isWritableItemAtPath(const QString& path);
    static bool isExecutableItemAtPath(const QString& path);
    /// By the keys above; of a link itself, not of its target. Empty on failure.
    static QVariantMap attributesOfItemAtPath(const QString& path, QString* error = nullptr);
    static QVariant attributeOfItemAtPath(const QString& path, const QString& key, QString* error = nullptr);
    static QDateTime creationDateOfItemAtPath(const QString& path, QString* error = nullptr);
    static QDateTime modificationDateOfItemAtPath(const QString& path, QString* error = nullptr);

    // Listings: KXFileWrapperListing.cpp. Absolute paths in the file system's order; what contains ".DS_Store" anywhere
    // is left out, and an unreadable folder is empty.
    /// Names of the direct contents, hidden ones too; the path is taken as it is given.
    static QStringList itemsInDirectoryAtPath(const QString& path);
    static QStringList listItemsInDirectoryAtPath(const QString& path, bool deep);
    static QStringList listDirectoriesInDirectoryAtPath(const QString& path, bool deep = false);
    static QStringList listFilesInDirectoryAtPath(const QString& path, bool deep = false);
    /// Letter case and dots in `extension` do not count.
    static QStringList listFilesInDirectoryAtPathWithExtension(const QString& path, const QString& extension,
                                                               bool deep = false);
    static QStringList listFilesInDirectoryAtPathWithPrefix(const QString& path, const QString& prefix,
                                                            bool deep = false);
    /// The name may end so with its extension or without it.
    static QStringList listFilesInDirectoryAtPathWithSuffix(const QString& path, const QString& suffix,
                                                            bool deep = false);

    // Making, copying, moving, removing: KXFileWrapperItems.cpp
    static bool createDirectoriesForPath(const QString& path, QString* error = nullptr);
    /// Throws NamedException "Invalid path" for a path that ends with a slash.
    static bool createDirectoriesForFileAtPath(const QString& path, QString* error = nullptr);
    /// False, with the item left as it is, where there is one and `overwrite` is not set. Throws as writeFileAtPath().
    static bool createFileAtPath(const QString& path, QString* error = nullptr);
    static bool createFileAtPath(const QString& path, bool overwrite, QString* error = nullptr);
    static bool createFileAtPathWithContent(const QString& path, const QVariant& content, bool overwrite = false,
                                            QString* error = nullptr);
    static bool copyItemAtPath(const QString& path, const QString& toPath, bool overwrite = false,
                               QString* error = nullptr);
    static bool moveItemAtPath(const QString& path, const QString& toPath, bool overwrite = false,
                               QString* error = nullptr);
    /// Throws NamedException "Invalid name" for a name with a slash.
    static bool renameItemAtPath(const QString& path, const QString& name, QString* error = nullptr);
    static bool removeItemAtPath(const QString& path, QString* error = nullptr);
    /// Goes on after a failure; true only when nothing failed.
    static bool removeItemsAtPaths(const QStringList& paths, QString* error = nullptr);
    static bool removeFilesInDirectoryAtPath(const QString& path, QString* error = nullptr);
    static bool removeFilesInDirectoryAtPathWithExtension(const QString& path, const QString& extension,
                                                          QString* error = nullptr);
    static bool removeFilesInDirectoryAtPathWithPrefix(const QString& path, const QString& prefix,
                                                       QString* error = nullptr);
    static bool removeFilesInDirectoryAtPathWithSuffix(const QString& path, const QString& suffix,
                                                       QString* error = nullptr);
    static bool removeItemsInDirectoryAtPath(const QString& path, QString* error = nullptr);
    /// The folder's own files; folders stay.
    static bool emptyCachesDirectory();
    static bool emptyTemporaryDirectory();

    // Contents: KXFileWrapperContent.cpp
    /// Writes at once or not at all: lists and maps as property lists, bytes, text as UTF-8, everything else that
    /// QVariant can store as a data stream. Throws NamedException "Invalid content" for a null value and
    /// "Invalid content type" for what cannot be stored.
    static bool writeFileAtPath(const QString& path, const QVariant& content, QString* error = nullptr);
    /// UTF-8; nothing for bytes that are none.
    static std::optional<QString> readFileAtPath(const QString& path, QString* error = nullptr);
    static std::optional<QString> readFileAtPathAsString(const QString& path, QString* error = nullptr);
    static std::optional<QByteArray> readFileAtPathAsData(const QString& path, QString* error = nullptr);
    static std::optional<QByteArray> readFileAtPathAsMutableData(const QString& path, QString* error = nullptr);
    static std::optional<QVariantList> readFileAtPathAsArray(const QString& path);
    static std::optional<QVariantList> readFileAtPathAsMutableArray(const QString& path);
    static std::optional<QVariantMap> readFileAtPathAsDictionary(const QString& path);
    static std::optional<QVariantMap> readFileAtPathAsMutableDictionary(const QString& path);
    /// A list or a map.
    static std::optional<QVariant> readFileAtPathAsJSON(const QString& path, QString* error = nullptr);

    // Sizes and dates: KXFileWrapperSizes.cpp. Bytes, as doubles.
    static std::optional<double> sizeOfItemAtPath(const QString& path, QString* error = nullptr);
    static std::optional<double> sizeOfFileAtPath(const QString& path, QString* error = nullptr);
    /// The folder's own size and that of all items of its deep listing.
    static std::optional<double> sizeOfDirectoryAtPath(const QString& path, QString* error = nullptr);
    /// "   2 KB", "1.50 MB": no decimals up to kilobytes. Throws NamedException "Invalid size" past terabytes.
    static QString sizeFormatted(double size);
    static std::optional<QString> sizeFormattedOfItemAtPath(const QString& path, QString* error = nullptr);
    static std::optional<QString> sizeFormattedOfFileAtPath(const QString& path, QString* error = nullptr);
    static std::optional<QString> sizeFormattedOfDirectoryAtPath(const QString& path, QString* error = nullptr);
    /// KXUtilities::sizeFormatForNumber().
    static QString sizeFormatWithNumber(qint64 bytes);
    /// "2026-01-31 14:05:59", with the year of the week.
    static QString stringLongFromDate(const QDateTime& date);
    static QString getCurrentTimes();

    // Extended attributes: KXFileWrapperXattr.cpp. The path is taken as it is given, links are followed. A key without
    // a name space is one of the user's: "comment" is "user.comment".
    static QVariantMap xattrOfItemAtPath(const QString& path);
    /// Nothing when it is missing or no text.
    static std::optional<QString> xattrOfItemAtPathGetValueForKey(const QString& path, const QString& key);
    static bool xattrOfItemAtPathHasValueForKey(const QString& path, const QString& key);
    static bool xattrOfItemAtPathRemoveValueForKey(const QString& path, const QString& key);
    /// Stores as many bytes of the UTF-8 text as it has characters: text outside ASCII is cut short, deliberately.
    /// False for a null value.
    static bool xattrOfItemAtPathSetValueForKey(const QString& path, const QString& value, const QString& key);

    // Pictures: KXFileWrapperImages.cpp
    /// "PixelWidth", "PixelHeight", and maps of the stored tags: "{Exif}", "{TIFF}", "{GPS}", "{IPTC}". Nothing for
    /// what is no file or no picture.
    static std::optional<QVariantMap> metadataOfImageAtPath(const QString& path);
    static std::optional<QVariantMap> exifDataOfImageAtPath(const QString& path);
    static std::optional<QVariantMap> tiffDataOfImageAtPath(const QString& path);

private:
    static bool pathIsFreeFor(const QString& path, bool overwrite, QString* error);
};

}
