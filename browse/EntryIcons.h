#pragma once

#include <QHash>
#include <QIcon>
#include <QString>

namespace vantoro {

class KXArchiveItem;

/// The name of the image for an archive by its path's extension, letter case ignored: "zip", "gz", "archive" …
QString rootImageName(const QString& archivePath);
/// That image.
QIcon rootIcon(const QString& archivePath);

/// The icons of entries: the desktop's, and the project's own where the desktop has none. Main thread.
class EntryIcons {
public:
    /// Remembered in the item.
    QIcon iconForItem(KXArchiveItem& item);
    QIcon iconForPath(const QString& path, bool isFolder);

private:
    QHash<QString, QIcon> m_byExtension; // asking the desktop's theme costs more than painting
};

}
