#include "browse/EntryIcons.h"

#include "browse/KXArchiveItem.h"

#include "platform/Workspace.h"
#include "widgets/Icons.h"

#include <QFileInfo>
#include <QMimeDatabase>

#include <array>

namespace vantoro {
namespace {

struct ImageRule {
    const char* extension;
    const char* image;
};

/// Tried in this order. The second rule for "bz" can never hold; it is kept, so that a .bz archive shows "bz".
constexpr std::array kRootImages{
    ImageRule{"tar", "tar"},   ImageRule{"xar", "xar"},  ImageRule{"zip", "zip"}, ImageRule{"exe", "exe"},
    ImageRule{"rar", "rar"},   ImageRule{"jar", "jar"},  ImageRule{"apk", "apk"}, ImageRule{"7z", "7z"},
    ImageRule{"bin", "bin"},   ImageRule{"z", "z"},      ImageRule{"cbz", "cbz"}, ImageRule{"bz", "bz"},
    ImageRule{"lzma", "lzma"}, ImageRule{"xz", "xz"},    ImageRule{"gz", "gz"},   ImageRule{"bz", "bz2"},
    ImageRule{"gzip", "gz"},   ImageRule{"bzip", "bz2"}, ImageRule{"tbz", "tbz"}, ImageRule{"7zip", "7z"},
};

struct TypeRule {
    const char* type; // a MIME type or the beginning of one
    const char* image;
};

constexpr std::array kFileImages{
    TypeRule{"image/", "file-image"},
    TypeRule{"audio/", "file-audio"},
    TypeRule{"video/", "file-video"},
    TypeRule{"font/", "file-font"},
    TypeRule{"application/pdf", "file-pdf"},
    TypeRule{"application/json", "file-code"},
    TypeRule{"application/xml", "file-code"},
    TypeRule{"application/javascript", "file-code"},
    TypeRule{"application/x-shellscript", "file-code"},
    TypeRule{"application/x-sharedlib", "file-program"},
    TypeRule{"application/x-executable", "file-program"},
    TypeRule{"application/x-ms-dos-executable", "file-program"},
    TypeRule{"application/x-msdownload", "file-program"},
    TypeRule{"text/x-", "file-code"},
    TypeRule{"text/html", "file-code"},
    TypeRule{"text/css", "file-code"},
    TypeRule{"text/", "file-text"},
    TypeRule{"application/msword", "file-text"},
    TypeRule{"application/rtf", "file-text"},
    TypeRule{"application/vnd.oasis.opendocument.text", "file-text"},
    TypeRule{"application/vnd.openxmlformats-officedocument.wordprocessingml", "file-text"},
};

QString archiveImage(const QString& path)
{
    const QString name = rootImageName(path);
    return name == QLatin1String("archive") ? QStringLiteral("archive-generic") : QStringLiteral("archive-") + name;
}

QString ownImage(const QString& path)
{
    const QMimeType type = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension);
    for (const auto& rule : kFileImages) {
        if (type.name().startsWith(QLatin1String(rule.type)))
            return QString::fromLatin1(rule.image);
    }
    const bool isArchive = type.genericIconName() == QLatin1String("package-x-generic");
    return isArchive ? archiveImage(path) : QStringLiteral("file-generic");
}

}

QString rootImageName(const QString& archivePath)
{
    const QString extension = QFileInfo(archivePath).suffix().toLower();
    for (const auto& rule : kRootImages) {
        if (extension == QLatin1String(rule.extension))
            return QString::fromLatin1(rule.image);
    }
    return QStringLiteral("archive");
}

QIcon rootIcon(const QString& archivePath) { return icons::icon(archiveImage(archivePath)); }

QIcon EntryIcons::iconForItem(KXArchiveItem& item)
{
    QIcon icon = item.itemImage();
    if (icon.isNull()) {
        icon = iconForPath(item.itemPath(), item.isFolder());
        item.setItemImage(icon);
    }
    return icon;
}

QIcon EntryIcons::iconForPath(const QString& path, bool isFolder)
{
    if (isFolder)
        return QIcon::fromTheme(QStringLiteral("folder"), icons::icon(QStringLiteral("folder")));
    const QString extension = QFileInfo(path).suffix();
    const QString key = extension.isEmpty() ? QFileInfo(path).fileName() : extension;
    const auto known = m_byExtension.constFind(key);
    if (known != m_byExtension.constEnd())
        return *known;
    QIcon icon = Workspace::shared().iconForFile(path);
    if (icon.isNull())
        icon = icons::icon(ownImage(path));
    constexpr qsizetype kKept = 4096; // an archive may hold any number of endings
    if (m_byExtension.size() >= kKept)
        m_byExtension.clear();
    return *m_byExtension.insert(key, icon);
}

}
