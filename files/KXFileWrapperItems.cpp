#include "files/Exceptions.h"
#include "files/KXFileWrapper.h"
#include "files/SystemError.h"

#include "platform/PathNames.h"

#include <QFile>

#include <filesystem>
#include <fcntl.h>
#include <unistd.h>

namespace vantoro {
namespace {

namespace fs = std::filesystem;

fs::path nativePath(const QString& path) { return QFile::encodeName(path).toStdString(); }

bool isThere(const QString& path)
{
    std::error_code ignored;
    return fs::exists(fs::symlink_status(nativePath(path), ignored));
}

bool copyItem(const QString& from, const QString& to, QString* error)
{
    std::error_code code;
    fs::copy(nativePath(from), nativePath(to), fs::copy_options::recursive | fs::copy_options::copy_symlinks, code);
    return keepError(error, code);
}

/// Between file systems the item is copied; the original goes only once the copy is whole.
bool moveItem(const QString& from, const QString& to, QString* error)
{
    std::error_code code;
    fs::rename(nativePath(from), nativePath(to), code);
    if (code != std::errc::cross_device_link)
        return keepError(error, code);
    if (!copyItem(from, to, error)) {
        fs::remove_all(nativePath(to), code);
        return false;
    }
    fs::remove_all(nativePath(from), code);
    return keepError(error, code);
}

}

bool KXFileWrapper::createDirectoriesForPath(const QString& path, QString* error)
{
    clearError(error);
    std::error_code code;
    const auto folder = nativePath(absolutePath(path));
    fs::create_directories(folder, code);
    if (!code && !fs::is_directory(folder, code) && !code)
        code = std::make_error_code(std::errc::not_a_directory);
    return keepError(error, code);
}

bool KXFileWrapper::createDirectoriesForFileAtPath(const QString& path, QString* error)
{
    if (path.endsWith(QLatin1Char('/')))
        throw NamedException(QStringLiteral("Invalid path"), QStringLiteral("file path can't have a trailing '/'."));
    return createDirectoriesForPath(deletingLastPathComponent(absolutePath(path)), error);
}

/// Whether something may now be put at the path: nothing is there any more, and its folders exist.
bool KXFileWrapper::pathIsFreeFor(const QString& path, bool overwrite, QString* error)
{
    clearError(error);
    if (isThere(absolutePath(path))) {
        if (!overwrite) {
            keepSystemError(error, EEXIST);
            return false;
        }
        if (!removeItemAtPath(path, error))
            return false;
    }
    return createDirectoriesForFileAtPath(path, error);
}

bool KXFileWrapper::createFileAtPath(const QString& path, QString* error)
{
    return createFileAtPath(path, false, error);
}

bool KXFileWrapper::createFileAtPath(const QString& path, bool overwrite, QString* error)
{
    if (!pathIsFreeFor(path, overwrite, error))
        return false;
    const QByteArray native = QFile::encodeName(absolutePath(path));
    const int file = ::open(native.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (file < 0) {
        keepSystemError(error);
        return false;
    }
    ::close(file);
    return true;
}

bool KXFileWrapper::createFileAtPathWithContent(const QString& path, const QVariant& content, bool overwrite,
                                                QString* error)
{
    return createFileAtPath(path, overwrite, error) && writeFileAtPath(path, content, error) && isNotError(error);
}

bool KXFileWrapper::copyItemAtPath(const QString& path, const QString& toPath, bool overwrite, QString* error)
{
    return pathIsFreeFor(toPath, overwrite, error) && copyItem(absolutePath(path), absolutePath(toPath), error);
}

bool KXFileWrapper::moveItemAtPath(const QString& path, const QString& toPath, bool overwrite, QString* error)
{
    return pathIsFreeFor(toPath, overwrite, error) && moveItem(absolutePath(path), absolutePath(toPath), error);
}

bool KXFileWrapper::renameItemAtPath(const QString& path, const QString& name, QString* error)
{
    if (name.contains(QLatin1Char('/')))
        throw NamedException(QStringLiteral("Invalid name"), QStringLiteral("file name can't contain a '/'."));
    return moveItemAtPath(path, appendingPathComponent(deletingLastPathComponent(absolutePath(path)), name), false,
                          error);
}

bool KXFileWrapper::removeItemAtPath(const QString& path, QString* error)
{
    clearError(error);
    std::error_code code;
    const auto removed = fs::remove_all(nativePath(absolutePath(path)), code);
    if (!code && removed == 0)
        code = std::make_error_code(std::errc::no_such_file_or_directory);
    return keepError(error, code);
}

bool KXFileWrapper::removeItemsAtPaths(const QStringList& paths, QString* error)
{
    clearError(error);
    bool isDone = true;
    QString problem;
    for (const QString& path : paths) {
        if (!removeItemAtPath(path, &problem)) {
            isDone = false;
            if (error)
                *error = problem;
        }
    }
    return isDone;
}

bool KXFileWrapper::removeFilesInDirectoryAtPath(const QString& path, QString* error)
{
    return removeItemsAtPaths(listFilesInDirectoryAtPath(path), error);
}

bool KXFileWrapper::removeFilesInDirectoryAtPathWithExtension(const QString& path, const QString& extension,
                                                              QString* error)
{
    return removeItemsAtPaths(listFilesInDirectoryAtPathWithExtension(path, extension), error);
}

bool KXFileWrapper::removeFilesInDirectoryAtPathWithPrefix(const QString& path, const QString& prefix, QString* error)
{
    return removeItemsAtPaths(listFilesInDirectoryAtPathWithPrefix(path, prefix), error);
}

bool KXFileWrapper::removeFilesInDirectoryAtPathWithSuffix(const QString& path, const QString& suffix, QString* error)
{
    return removeItemsAtPaths(listFilesInDirectoryAtPathWithSuffix(path, suffix), error);
}

/// What the deep listing names, from the bottom up: a folder's own contents are gone before the folder.
bool KXFileWrapper::removeItemsInDirectoryAtPath(const QString& path, QString* error)
{
    QStringList items = listItemsInDirectoryAtPath(path, true);
    std::ranges::sort(items, std::greater());
    return removeItemsAtPaths(items, error);
}

bool KXFileWrapper::emptyCachesDirectory() { return removeFilesInDirectoryAtPath(pathForCachesDirectory()); }

bool KXFileWrapper::emptyTemporaryDirectory() { return removeFilesInDirectoryAtPath(pathForTemporaryDirectory()); }

}
