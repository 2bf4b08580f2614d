#include "files/AppSandboxFileAccessPersist.h"

#include "platform/DefaultsStore.h"
#include "platform/PathNames.h"

#include <QFileInfo>

namespace vantoro {

QString AppSandboxFileAccessPersist::keyForBookmarkDataForURL(const QUrl& url)
{
    QString path = url.toLocalFile();
    if (!path.endsWith(QLatin1Char('/')) && QFileInfo(path).isDir())
        path += QLatin1Char('/');
    return QStringLiteral("bd_") + QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
}

std::optional<QByteArray> AppSandboxFileAccessPersist::bookmarkDataForURL(const QUrl& url) const
{
    for (QString path = url.toLocalFile(); path.size() > 1; path = deletingLastPathComponent(path)) {
        const QVariant data
            = DefaultsStore::standard().objectForKey(keyForBookmarkDataForURL(QUrl::fromLocalFile(path)));
        if (data.isValid())
            return data.toByteArray();
    }
    return std::nullopt;
}

void AppSandboxFileAccessPersist::setBookmarkData(const QByteArray& data, const QUrl& url)
{
    DefaultsStore::standard().setObject(keyForBookmarkDataForURL(url), data);
}

void AppSandboxFileAccessPersist::clearBookmarkDataForURL(const QUrl& url)
{
    DefaultsStore::standard().removeObjectForKey(keyForBookmarkDataForURL(url));
}

}
