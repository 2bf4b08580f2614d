#include "platform/SecurityScopedURL.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <sys/stat.h>

namespace vantoro {
namespace {

/// Tells whether a path still names the item that it named before; empty when it names none.
QString identityOf(const QString& path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    return QStringLiteral("%1:%2").arg(status.st_dev).arg(status.st_ino);
}

}

SecurityScopedURL SecurityScopedURL::fileURLWithPath(const QString& path)
{
    return SecurityScopedURL(QUrl::fromLocalFile(path));
}

bool SecurityScopedURL::startAccessingSecurityScopedResource() const { return QFileInfo::exists(path()); }

// What the document portal shares with a sandbox keeps its path across runs, so that the path is all there is to keep.
std::optional<QByteArray> SecurityScopedURL::bookmarkData() const
{
    const QString identity = identityOf(path());
    if (identity.isEmpty())
        return std::nullopt;
    const QJsonObject bookmark{{QStringLiteral("url"), QString::fromLatin1(m_url.toEncoded())},
                               {QStringLiteral("identity"), identity}};
    return QJsonDocument(bookmark).toJson(QJsonDocument::Compact);
}

std::optional<SecurityScopedURL> SecurityScopedURL::URLByResolvingBookmarkData(const QByteArray& data, bool* isStale)
{
    const QJsonObject bookmark = QJsonDocument::fromJson(data).object();
    const QUrl url = QUrl::fromEncoded(bookmark.value(QStringLiteral("url")).toString().toLatin1());
    const QString identity = identityOf(url.toLocalFile());
    if (!url.isLocalFile() || identity.isEmpty())
        return std::nullopt;
    if (isStale)
        *isStale = identity != bookmark.value(QStringLiteral("identity")).toString();
    return SecurityScopedURL(url);
}

bool isSandboxed()
{
    return qEnvironmentVariableIsSet("APP_SANDBOX_CONTAINER_ID") || QFile::exists(QStringLiteral("/.flatpak-info"));
}

}
