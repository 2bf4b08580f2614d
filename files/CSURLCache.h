#pragma once

#include "platform/SecurityScopedURL.h"

#include <QByteArray>
#include <QStringList>

#include <map>
#include <optional>
#include <vector>

namespace vantoro {

/// Holds grants for some paths.
class CSURLProvider {
public:
    virtual ~CSURLProvider() = default;
    virtual QStringList availablePaths() const = 0;
    /// For exactly one of those paths.
    virtual std::optional<SecurityScopedURL> securityScopedURLForPath(const QString& path) = 0;
};

/// The grants that the user gave by choosing folders in panels; they survive restarts. Main thread.
class CSURLCache final : public CSURLProvider {
public:
    /// Null outside a sandbox, where every path may be used as it is.
    static CSURLCache* defaultCache();

    /// Takes up what earlier runs kept.
    CSURLCache();

    /// Not owned; until removeURLProvider().
    void addURLProvider(CSURLProvider* provider);
    void removeURLProvider(CSURLProvider* provider);

    /// The first grant for a path is kept; grants for paths inside it are dropped.
    void cacheSecurityScopedURL(const SecurityScopedURL& url);
    /// The first grant that covers the path, without access started.
    std::optional<SecurityScopedURL> securityScopedURLAllowingAccessToURL(const QUrl& url);
    std::optional<SecurityScopedURL> securityScopedURLAllowingAccessToPath(const QString& path);

    QStringList availablePaths() const override;
    std::optional<SecurityScopedURL> securityScopedURLForPath(const QString& path) override;

private:
    void store() const;

    std::vector<CSURLProvider*> m_providers;
    std::map<QString, SecurityScopedURL> m_cachedurls;
    std::map<QString, QByteArray> m_cachedbookmarks;
};

}
