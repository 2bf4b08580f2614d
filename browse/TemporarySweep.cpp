#include "browse/TemporarySweep.h"

#include "files/KXUtilities.h"
#include "platform/PathNames.h"

#include <QFile>

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <stdlib.h>
#include <string_view>
#include <unistd.h>

namespace vantoro {
namespace {

const QString kAsidePrefix = QStringLiteral(".swept-");

std::filesystem::path nativePath(const QString& path) { return QFile::encodeName(path).toStdString(); }

/// A folder with all that it holds, never through a link. Skeletons are not deep, so that a handle a level does.
void removeTree(int parent, const char* name, const CancelToken& cancel)
{
    const int handle = ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    DIR* const entries = handle < 0 ? nullptr : ::fdopendir(handle);
    if (!entries)
        return;
    while (const dirent* entry = cancel.isCancelled() ? nullptr : ::readdir(entries)) {
        const std::string_view child = entry->d_name;
        if (child == "." || child == "..")
            continue;
        if (::unlinkat(handle, entry->d_name, 0) != 0 && (errno == EISDIR || errno == EPERM))
            removeTree(handle, entry->d_name, cancel);
    }
    ::closedir(entries);
    ::unlinkat(parent, name, AT_REMOVEDIR);
}

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

void TemporarySweep::removeAside(const QString& folder, const CancelToken& cancel)
{
    visitOldFolders(folder, [&](const QString& name, const std::filesystem::path& path) {
        if (name.startsWith(kAsidePrefix))
            removeTree(AT_FDCWD, path.c_str(), cancel);
    });
}

}
