#include "files/Exceptions.h"
#include "files/KXFileWrapper.h"

#include "platform/PathNames.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace vantoro {
namespace {

constexpr mode_t kOwnerOnly = 0700;

QString inOwnFolder(QStandardPaths::StandardLocation location)
{
    return QStandardPaths::writableLocation(location) + QStringLiteral("/vantoro");
}

QString stateFolder()
{
    const QString given = qEnvironmentVariable("XDG_STATE_HOME");
    return (QDir::isAbsolutePath(given) ? given : QDir::homePath() + QStringLiteral("/.local/state"))
        + QStringLiteral("/vantoro");
}

QString resourceFolder()
{
    const QString programs
        = QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QDir::currentPath();
    const QString shared = QDir::cleanPath(programs + QStringLiteral("/../share/vantoro"));
    return QFileInfo(shared).isDir() ? shared : programs;
}

/// Whether there is now a folder that belongs to this user and that nobody else may look into.
bool makePrivate(const QString& folder)
{
    const QByteArray path = QFile::encodeName(folder);
    if (::mkdir(path.constData(), kOwnerOnly) != 0 && errno != EEXIST)
        return false;
    struct stat status = {};
    if (::lstat(path.constData(), &status) != 0 || !S_ISDIR(status.st_mode) || status.st_uid != ::geteuid())
        return false;
    return (status.st_mode & 07777) == kOwnerOnly || ::chmod(path.constData(), kOwnerOnly) == 0;
}

/// In the user's caches; where those cannot be written, a new folder in the system's temporary one for this run.
QString privateFolder()
{
    const QString caches = KXFileWrapper::pathForCachesDirectory();
    const QString folder = caches + QStringLiteral("/temporary");
    if (QDir().mkpath(caches) && makePrivate(folder))
        return folder;
    QByteArray made = QFile::encodeName(QDir::tempPath() + QStringLiteral("/vantoro-XXXXXX"));
    if (!::mkdtemp(made.data()))
        qWarning("ERR: there is no folder for temporary files: %s", qUtf8Printable(qt_error_string(errno)));
    return QFile::decodeName(made);
}

QString joined(const QString& folder, const QString& path) { return QDir::cleanPath(folder + QLatin1Char('/') + path); }

}

void KXFileWrapper::assertPath(const QString& path)
{
    const QString source = QStringLiteral("KXFileWrapper");
    if (path.isNull())
        throw AssertionFailure(source, QStringLiteral("Invalid path. Path cannot be nil."));
    if (path.isEmpty())
        throw AssertionFailure(source, QStringLiteral("Invalid path. Path cannot be empty string."));
}

QStringList KXFileWrapper::absoluteDirectories()
{
    static const QStringList known = [] {
        QStringList folders{pathForApplicationSupportDirectory(), pathForCachesDirectory(),
                            pathForDocumentsDirectory(),          pathForLibraryDirectory(),
                            pathForMainBundleDirectory(),         pathForTemporaryDirectory()};
        std::ranges::stable_sort(folders, std::greater(), &QString::size);
        return folders;
    }();
    return known;
}

std::optional<QString> KXFileWrapper::absoluteDirectoryForPath(const QString& path)
{
    assertPath(path);
    if (path == QLatin1String("/"))
        return std::nullopt;
    for (const QString& folder : absoluteDirectories()) {
        if (path.startsWith(folder))
            return folder;
    }
    return std::nullopt;
}

QString KXFileWrapper::absolutePath(const QString& path)
{
    return absoluteDirectoryForPath(path) ? path : pathForDocumentsDirectoryWithPath(path);
}

QString KXFileWrapper::pathForApplicationSupportDirectory()
{
    static const QString folder = inOwnFolder(QStandardPaths::GenericDataLocation);
    return folder;
}

QString KXFileWrapper::pathForCachesDirectory()
{
    static const QString folder = inOwnFolder(QStandardPaths::GenericCacheLocation);
    return folder;
}

QString KXFileWrapper::pathForDocumentsDirectory()
{
    static const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return folder;
}

QString KXFileWrapper::pathForLibraryDirectory()
{
    static const QString folder = stateFolder();
    return folder;
}

QString KXFileWrapper::pathForMainBundleDirectory()
{
    static const QString folder = resourceFolder();
    return folder;
}

QString KXFileWrapper::pathForTemporaryDirectory()
{
    static const QString folder = privateFolder();
    return folder;
}

QString KXFileWrapper::pathForApplicationSupportDirectoryWithPath(const QString& path)
{
    return joined(pathForApplicationSupportDirectory(), path);
}

QString KXFileWrapper::pathForCachesDirectoryWithPath(const QString& path)
{
    return joined(pathForCachesDirectory(), path);
}

QString KXFileWrapper::pathForDocumentsDirectoryWithPath(const QString& path)
{
    return joined(pathForDocumentsDirectory(), path);
}

QString KXFileWrapper::pathForLibraryDirectoryWithPath(const QString& path)
{
    return joined(pathForLibraryDirectory(), path);
}

QString KXFileWrapper::pathForMainBundleDirectoryWithPath(const QString& path)
{
    return joined(pathForMainBundleDirectory(), path);
}

QString KXFileWrapper::pathForTemporaryDirectoryWithPath(const QString& path)
{
    return joined(pathForTemporaryDirectory(), path);
}

QString KXFileWrapper::pathForPlistNamed(const QString& name)
{
    const bool hasExtension = !pathExtension(name).isEmpty();
    return pathForMainBundleDirectoryWithPath(hasExtension ? name : name + QStringLiteral(".plist"));
}

QUrl KXFileWrapper::urlForItemAtPath(const QString& path) { return QUrl::fromLocalFile(absolutePath(path)); }

}
