#include "files/CSURLCache.h"

#include "platform/DefaultsStore.h"
#include "platform/PathNames.h"

#include <QVariantMap>

namespace vantoro {
namespace {
const QString kCachedBookmarks = QStringLiteral("cachedBookmarks");
}

CSURLCache* CSURLCache::defaultCache()
{
    if (!isSandboxed())
        return nullptr;
    static CSURLCache cache;
    return &cache;
}

CSURLCache::CSURLCache()
{
    const QVariantMap stored = DefaultsStore::standard().objectForKey(kCachedBookmarks).toMap();
    for (auto bookmark = stored.begin(); bookmark != stored.end(); ++bookmark)
        m_cachedbookmarks[bookmark.key()] = bookmark.value().toByteArray();
    addURLProvider(this);
}

void CSURLCache::addURLProvider(CSURLProvider* provider) { m_providers.push_back(provider); }

void CSURLCache::removeURLProvider(CSURLProvider* provider) { std::erase(m_providers, provider); }

void CSURLCache::cacheSecurityScopedURL(const SecurityScopedURL& url)
{
    if (url.url().isEmpty()) {
        qWarning("WAR: Attempted to cache a nil URL!");
        return;
    }
    const QString path = url.path();
    if (m_cachedbookmarks.contains(path))
        return;
    const auto bookmark = url.bookmarkData();
    if (!bookmark) {
        qWarning("WAR: Failed to create security-scoped bookmark of URL \"%s\"!", qUtf8Printable(url.url().toString()));
        return;
    }
    const auto isCovered = [&](const auto& item) { return pathLiesInside(item.first, path); };
    std::erase_if(m_cachedbookmarks, isCovered);
    std::erase_if(m_cachedurls, isCovered);
    m_cachedbookmarks[path] = *bookmark;
    m_cachedurls[path] = url;
    store();
}

void CSURLCache::store() const
{
    QVariantMap bookmarks;
    for (const auto& [path, bookmark] : m_cachedbookmarks)
        bookmarks[path] = bookmark;
    DefaultsStore::standard().setObject(kCachedBookmarks, bookmarks);
}

std::optional<SecurityScopedURL> CSURLCache::securityScopedURLAllowingAccessToURL(const QUrl& url)
{
    return securityScopedURLAllowingAccessToPath(url.toLocalFile());
}

std::optional<SecurityScopedURL> CSURLCache::securityScopedURLAllowingAccessToPath(const QString& path)
{
    const QString resolved = resolvingSymlinks(path);
    if (resolved.isNull())
        return std::nullopt;
    for (CSURLProvider* provider : m_providers) {
        for (const QString& candidate : provider->availablePaths()) {
            if (!pathLiesInside(resolved, candidate))
                continue;
            if (auto url = provider->securityScopedURLForPath(candidate))
                return url;
        }
    }
    return std::nullopt;
}

QStringList CSURLCache::availablePaths() const
{
    QStringList paths;
    for (const auto& [path, bookmark] : m_cachedbookmarks)
        paths += path;
    return paths;
}

std::optional<SecurityScopedURL> CSURLCache::securityScopedURLForPath(const QString& path)
{
    if (const auto known = m_cachedurls.find(path); known != m_cachedurls.end())
        return known->second;
    const auto bookmark = m_cachedbookmarks.find(path);
    if (bookmark == m_cachedbookmarks.end())
        return std::nullopt;
    auto url = SecurityScopedURL::URLByResolvingBookmarkData(bookmark->second);
    if (url)
        m_cachedurls[path] = *url;
    return url;
}

}
