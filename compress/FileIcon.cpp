#include "compress/FileIcon.h"

#include "files/FileFormats.h"
#include "files/KXUtilities.h"
#include "platform/Workspace.h"
#include "widgets/Icons.h"

#include <QApplication>
#include <QStyle>

namespace vantoro {

QIcon fileIcon(const QString& path)
{
    const QIcon icon = Workspace::shared().iconForFile(path);
    if (!icon.isNull())
        return icon;
    if (KXUtilities::isFolder(path))
        return icons::icon(QStringLiteral("folder"));
    if (hasArchiveExtension(path))
        return icons::forArchive(path);
    return QApplication::style()->standardIcon(QStyle::SP_FileIcon);
}

}
