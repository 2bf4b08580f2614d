#include "browse/TemporarySweep.h"

#include "files/KXUtilities.h"
#include "platform/PathNames.h"

#include <QFile>

#include <filesystem>
#include <stdlib.h>

namespace vantoro {
namespace {

const QString kAsidePrefix = QStringLiteral(".swept-");

std::filesystem::path nativePath(const QString& path) { return QFile::encodeName(path).toStdString(); }

template <class Visit> void visitOldFolders(const QString& folder, Visit visit)
{
    const auto names = KXUtilities::contentsOfFolder(folder);
    for (const QString& name : names.value_or(QStringList())) {
        const QString path = appendingPathComponent(folder, name);
        if (!name.contains(QLatin1String("winmail")) && KXUtilities::isFolder(path))
            visit(name, nativePath(path));
    }
}

}

void TemporarySweep::putAside(const QString& folder)
{
    QByteArray aside = QFile::encodeName(appendingPathComponent(folder, kAsidePrefix + QStringLiteral("XXXXXX")));
    if (!::mkdtemp(aside.data()))
        return;
    const std::filesystem::path target = aside.toStdString();
    visitOldFolders(folder, [&](const QString& name, const std::filesystem::path& path) {
        std::error_code ignored;
        if (!name.startsWith(kAsidePrefix))
            std::filesystem::rename(path, target / path.filename(), ignored);
        if (ignored)
            std::filesystem::remove_all(path, ignored);
    });
}

void TemporarySweep::removeAside(const QString& folder)
{
    visitOldFolders(folder, [](const QString& name, const std::filesystem::path& path) {
        std::error_code ignored;
        if (name.startsWith(kAsidePrefix))
            std::filesystem::remove_all(path, ignored);
    });
}

}
