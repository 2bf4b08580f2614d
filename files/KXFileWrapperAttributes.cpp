#include "files/KXFileWrapper.h"
#include "files/SystemError.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantoro {
namespace {

bool isAllowed(const QString& path, int access)
{
    const QByteArray native = QFile::encodeName(KXFileWrapper::absolutePath(path));
    return ::faccessat(AT_FDCWD, native.constData(), access, AT_EACCESS) == 0;
}

QString typeOf(mode_t mode)
{
    if (S_ISDIR(mode))
        return FileAttribute::kTypeDirectory;
    if (S_ISREG(mode))
        return FileAttribute::kTypeRegular;
    return S_ISLNK(mode) ? FileAttribute::kTypeSymbolicLink : FileAttribute::kTypeOther;
}

QDateTime dateOf(const struct statx_timestamp& time)
{
    return QDateTime::fromMSecsSinceEpoch(time.tv_sec * 1000 + time.tv_nsec / 1'000'000);
}

}

bool KXFileWrapper::isNotError(const QString* error) { return !error || error->isEmpty(); }

bool KXFileWrapper::existsItemAtPath(const QString& path) { return isAllowed(path, F_OK); }

bool KXFileWrapper::isDirectoryItemAtPath(const QString& path, QString* error)
{
    return attributeOfItemAtPath(path, FileAttribute::kType, error) == FileAttribute::kTypeDirectory;
}

bool KXFileWrapper::isFileItemAtPath(const QString& path, QString* error)
{
    return attributeOfItemAtPath(path, FileAttribute::kType, error) == FileAttribute::kTypeRegular;
}

bool KXFileWrapper::isEmptyItemAtPath(const QString& path, QString* error)
{
    if (isDirectoryItemAtPath(path, error))
        return listItemsInDirectoryAtPath(path, false).isEmpty();
    return sizeOfFileAtPath(path, error) == 0.0;
}

bool KXFileWrapper::isReadableItemAtPath(const QString& path) { return isAllowed(path, R_OK); }

bool KXFileWrapper::isWritableItemAtPath(const QString& path) { return isAllowed(path, W_OK); }

bool KXFileWrapper::isExecutableItemAtPath(const QString& path) { return isAllowed(path, X_OK); }

QVariantMap KXFileWrapper::attributesOfItemAtPath(const QString& path, QString* error)
{
    clearError(error);
    const QByteArray native = QFile::encodeName(absolutePath(path));
    struct statx status = {};
    if (::statx(AT_FDCWD, native.constData(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS | STATX_BTIME, &status) != 0) {
        keepSystemError(error);
        return {};
    }
    QVariantMap attributes{{FileAttribute::kType, typeOf(status.stx_mode)},
                           {FileAttribute::kSize, static_cast<qint64>(status.stx_size)},
                           {FileAttribute::kModificationDate, dateOf(status.stx_mtime)},
                           {FileAttribute::kPermissions, static_cast<uint>(status.stx_mode & 07777)},
                           {FileAttribute::kOwner, status.stx_uid},
                           {FileAttribute::kGroup, status.stx_gid},
                           {FileAttribute::kReferences, static_cast<qint64>(status.stx_nlink)},
                           {FileAttribute::kNumber, static_cast<quint64>(status.stx_ino)}};
    if (status.stx_mask & STATX_BTIME)
        attributes.insert(FileAttribute::kCreationDate, dateOf(status.stx_btime));
    return attributes;
}

QVariant KXFileWrapper::attributeOfItemAtPath(const QString& path, const QString& key, QString* error)
{
    return attributesOfItemAtPath(path, error).value(key);
}

QDateTime KXFileWrapper::creationDateOfItemAtPath(const QString& path, QString* error)
{
    return attributeOfItemAtPath(path, FileAttribute::kCreationDate, error).toDateTime();
}

QDateTime KXFileWrapper::modificationDateOfItemAtPath(const QString& path, QString* error)
{
    return attributeOfItemAtPath(path, FileAttribute::kModificationDate, error).toDateTime();
}

}
