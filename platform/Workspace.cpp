#include "platform/Workspace.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <QDBusUnixFileDescriptor>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace vantoro {
namespace {

constexpr int kFileManagerTimeout = 5000; // milliseconds: a file manager may have to start first

/// Folders that other systems show as one file.
constexpr std::array kPackageExtensions{"app", "bundle", "framework", "kext", "mpkg", "pkg", "plugin", "rtfd", "xpc"};

struct Trashed {
    QString original;
    QString inTrash;
};

void putBack(const Trashed& item)
{
    if (item.inTrash.isEmpty() || !QFile::rename(item.inTrash, item.original)) {
        qWarning("WAR: %s stays in the Trash", qUtf8Printable(item.original));
        return;
    }
    const QFileInfo file(item.inTrash);
    QFile::remove(QStringLiteral("%1/../info/%2.trashinfo").arg(file.path(), file.fileName()));
}

/// In a sandbox the home Trash is out of sight: the portal moves the file on the host.
bool moveToTrashByPortal(const QString& path)
{
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0)
        return false;
    auto call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Trash"), QStringLiteral("TrashFile"));
    call << QVariant::fromValue(QDBusUnixFileDescriptor(fd));
    ::close(fd); // the message holds a copy
    const QDBusReply<uint> reply = QDBusConnection::sessionBus().call(call);
    return reply.isValid() && reply.value() == 1;
}

bool moveToTrash(const QString& path, QString* inTrash)
{
    if (QFile::exists(QStringLiteral("/.flatpak-info")))
        return moveToTrashByPortal(path);
    // On a new account Qt cannot make the Trash for want of the folder around it, and then moves the file into folders
    // "files" and "info" of the current folder.
    if (!QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)))
        return false;
    return QFile::moveToTrash(path, inTrash);
}

class DesktopWorkspace final : public Workspace {
public:
    bool openFile(const QString& path) override { return openUrl(QUrl::fromLocalFile(path)); }
    bool openUrl(const QUrl& url) override { return QDesktopServices::openUrl(url); }
    void selectFile(const QString& path) override;
    bool recycle(const QString& folder, const QStringList& names) override;
    QIcon iconForFile(const QString& path) override;
    bool isFilePackage(const QString& path) override;
    bool isWritableFolder(const QString& path) override;
};

void DesktopWorkspace::selectFile(const QString& path)
{
    auto call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded())} << QString();
    auto* watcher
        = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call, kFileManagerTimeout), qApp);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, qApp, [path, watcher] {
        const QDBusPendingReply<> reply = *watcher;
        if (reply.isError())
            QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).path()));
        watcher->deleteLater();
    });
}

bool DesktopWorkspace::recycle(const QString& folder, const QStringList& names)
{
    std::vector<Trashed> done;
    for (const QString& name : names) {
        Trashed item{QDir(folder).filePath(name), {}};
        if (!moveToTrash(item.original, &item.inTrash)) {
            qWarning("WAR: %s cannot be moved to the Trash", qUtf8Printable(item.original));
            std::ranges::for_each(done, putBack);
            return false;
        }
        done.push_back(std::move(item));
    }
    return true;
}

QIcon DesktopWorkspace::iconForFile(const QString& path)
{
    // Of the fallback theme, which every program adds to, only the programs' own icons are certain to be there.
    if (const QString theme = QIcon::themeName(); theme.isEmpty() || theme == QLatin1String("hicolor"))
        return {};
    const QMimeType type = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension);
    for (const QString& name : {type.iconName(), type.genericIconName(), QStringLiteral("package-x-generic")}) {
        if (const QIcon icon = QIcon::fromTheme(name); !icon.isNull())
            return icon;
    }
    return {};
}

bool DesktopWorkspace::isFilePackage(const QString& path)
{
    const QFileInfo info(path);
    return info.isDir()
        && std::ranges::any_of(kPackageExtensions, [suffix = info.suffix().toLower()](const char* extension) {
               return suffix == QLatin1String(extension);
           });
}

bool DesktopWorkspace::isWritableFolder(const QString& path)
{
    return QFileInfo(path).isDir() && ::access(QFile::encodeName(path).constData(), W_OK | X_OK) == 0;
}

Workspace* g_replacement = nullptr; // main thread

}

Workspace& Workspace::shared()
{
    static DesktopWorkspace workspace;
    return g_replacement ? *g_replacement : workspace;
}

void Workspace::setShared(Workspace* workspace) { g_replacement = workspace; }

}
