#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <atomic>
#include <optional>

namespace vantoro {

/// Small services on files, sizes and dates. Any thread.
class KXUtilities {
public:
    static bool isFolder(const QString& path);
    /// Names of the direct entries; nothing when the folder cannot be read.
    static std::optional<QStringList> contentsOfFolder(const QString& path);
    /// Full paths of everything below the folder, folders included, in the file system's order. Links are not followed.
    static QStringList allFilesAtPath(const QString& path);
    /// Bytes of the item itself (a link's own size); 0 when it cannot be told.
    static qint64 fileSizeForPath(const QString& path);
    /// Sum over everything below the folder, the folders' own sizes included; 0 when it does not exist. Ends early,
    /// with what was summed up by then, once `stop` is set.
    static qint64 folderSizeForPath(const QString& path, const std::atomic<bool>* stop = nullptr);
    /// "1024 B", "1.00 KB" …; each unit begins one byte above the full unit.
    static QString sizeFormatForNumber(qint64 bytes);
    /// Whether the extension means an image that can be decoded.
    static bool isImageForPath(const QString& path);
    /// The first four bytes, big-endian; 0 for shorter data.
    static quint32 NSDataToUInt(const QByteArray& data);
    /// "2026-01-31", with the year of the week.
    static QString stringShortFromDate(const QDateTime& date);
    /// "2026/01/31 14:05", with the year of the week.
    static QString stringLongFromDate(const QDateTime& date);
    static bool isDarkMode();
    /// A free path in the temporary folder; nothing is created.
    static QString createTmpFolderWithName(const QString& name);
    /// The path itself when nothing is there, else "name(0).ext", "name(1).ext" … whichever is free first.
    static QString createFolderDifWithPath(const QString& path);
};

}
