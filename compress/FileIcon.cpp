#include "compress/FileIcon.h"

#include "files/KXUtilities.h"
#include "platform/Workspace.h"
#include "widgets/Icons.h"

namespace vantoro {

QIcon fileIcon(const QString& path)
{
    const QIcon icon = Workspace::shared().iconForFile(path);
    if (!icon.isNull())
        return icon;
    if (KXUtilities::isFolder(path))
        return icons::icon(QStringLiteral("folder"));
    return icons::forFile(path);
}

}
