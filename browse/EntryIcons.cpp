#include "browse/EntryIcons.h"

#include "browse/KXArchiveItem.h"

#include "platform/Workspace.h"
#include "widgets/Icons.h"

#include <QFileInfo>

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

QString archiveImage(const QString& path)
{
    const QString name = rootImageName(path);
    return name == QLatin1String("archive") ? QStringLiteral("archive-generic") : QStringLiteral("archive-") + name;
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
        icon = icons::forFile(path);
    constexpr qsizetype kKept = 4096; // an archive may hold any number of endings
    if (m_byExtension.size() >= kKept)
        m_byExtension.clear();
    return *m_byExtension.insert(key, icon);
}

}
