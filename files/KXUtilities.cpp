#include "files/KXUtilities.h"

#include "files/DateText.h"
#include "platform/Appearance.h"
#include "platform/PathNames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QMimeDatabase>

#include <algorithm>
#include <filesystem>
#include <sys/stat.h>

namespace vantoro {
namespace {

/// Until `visit` answers false.
template <class Visit> void visitSubpaths(const QString& folder, Visit visit)
{
    namespace fs = std::filesystem;
    std::error_code error;
    fs::recursive_directory_iterator entry(QFile::encodeName(folder).toStdString(),
                                           fs::directory_options::skip_permission_denied, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        if (!visit(entry->path()))
            return;
    }
}

bool somethingExistsAt(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

QString scaled(float bytes, float unit, const char* name)
{
    return QString::asprintf("%.2f %s", static_cast<double>(bytes / unit), name);
}

}

bool KXUtilities::isFolder(const QString& path) { return QFileInfo(path).isDir(); }

std::optional<QStringList> KXUtilities::contentsOfFolder(const QString& path)
{
    const QDir folder(path);
    if (!folder.exists() || !folder.isReadable())
        return std::nullopt;
    return folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted);
}

QStringList KXUtilities::allFilesAtPath(const QString& path)
{
    QStringList paths;
    visitSubpaths(path, [&](const auto& entry) {
        paths += QFile::decodeName(QByteArray::fromStdString(entry.string()));
        return true;
    });
    return paths;
}

qint64 KXUtilities::fileSizeForPath(const QString& path)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_size : 0;
}

qint64 KXUtilities::folderSizeForPath(const QString& path, const std::atomic<bool>* stop)
{
    qint64 sum = 0;
    visitSubpaths(path, [&](const auto& entry) {
        struct stat status = {};
        if (::lstat(entry.c_str(), &status) == 0)
            sum += status.st_size;
        return !(stop && stop->load(std::memory_order_relaxed));
    });
    return sum;
}

QString KXUtilities::sizeFormatForNumber(qint64 bytes)
{
    constexpr float kKilo = 1024;
    constexpr float kMega = kKilo * 1024;
    constexpr float kGiga = kMega * 1024;
    const auto size = static_cast<float>(bytes);
    if (size > kGiga)
        return scaled(size, kGiga, "GB");
    if (bytes >= 1048577)
        return scaled(size, kMega, "MB");
    if (bytes >= 1025)
        return scaled(size, kKilo, "KB");
    return QStringLiteral("%1 B").arg(std::max<qint64>(bytes, 0));
}

bool KXUtilities::isImageForPath(const QString& path)
{
    const QMimeType type = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension);
    if (!type.isValid() || type.isDefault())
        return false;
    const auto readable = QImageReader::supportedMimeTypes();
    return std::ranges::any_of(readable,
                               [&](const QByteArray& image) { return type.inherits(QString::fromLatin1(image)); });
}

quint32 KXUtilities::NSDataToUInt(const QByteArray& data)
{
    if (data.size() < 4)
        return 0;
    quint32 value = 0;
    for (int i = 0; i < 4; ++i)
        value = value << 8 | static_cast<unsigned char>(data.at(i));
    return value;
}

QString KXUtilities::stringShortFromDate(const QDateTime& date) { return dateText(date, QStringLiteral("-MM-dd")); }

QString KXUtilities::stringLongFromDate(const QDateTime& date)
{
    return dateText(date, QStringLiteral("/MM/dd HH:mm"));
}

bool KXUtilities::isDarkMode() { return desktopColorScheme() == ColorScheme::Dark; }

QString KXUtilities::createTmpFolderWithName(const QString& name)
{
    return createFolderDifWithPath(appendingPathComponent(QDir::tempPath(), name));
}

QString KXUtilities::createFolderDifWithPath(const QString& path)
{
    if (!somethingExistsAt(path))
        return path;
    const QString folder = deletingLastPathComponent(path);
    const QString stem = deletingPathExtension(lastPathComponent(path));
    const QString extension = pathExtension(path);
    for (int k = 0;; ++k) {
        const QString number = QStringLiteral("(%1)").arg(k);
        QString name = QString(stem).remove(number) + number;
        if (!extension.isEmpty())
            name += QLatin1Char('.') + extension;
        const QString candidate = folder.isEmpty() ? name : appendingPathComponent(folder, name);
        if (!somethingExistsAt(candidate))
            return candidate;
    }
}

}
