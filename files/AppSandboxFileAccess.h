#pragma once

#include "files/AppSandboxFileAccessPersist.h"

#include "platform/Panels.h"

#include <QObject>
#include <QPointer>

#include <functional>

namespace vantoro {

/// Asks the user to grant a path, keeps the grant, and runs work inside it. Outside a sandbox every grant is there
/// without a question. The panel answers in a later turn of the main loop, so results come through `finished`; the work
/// is dropped when this object goes. Main thread.
class AppSandboxFileAccess final : public QObject {
public:
    /// With the bookmark made of the URL, if one could be made.
    using PermissionBlock
        = std::function<void(const SecurityScopedURL& url, const std::optional<QByteArray>& bookmark)>;
    using AccessBlock = std::function<void()>;
    using Finished = std::function<void(bool allowed)>;

    static std::unique_ptr<AppSandboxFileAccess> fileAccess();
    AppSandboxFileAccess();

    QString title, message, prompt; ///< of the panel
    /// In use instead of the default one; not owned, outlives this object.
    BookmarkStore* bookmarkPersistanceDelegate = nullptr;

    void accessFilePath(const QString& path, bool persistPermission, AccessBlock block, Finished finished = {});
    void accessFileURL(const QUrl& fileURL, bool persistPermission, AccessBlock block, Finished finished = {});
    void requestAccessPermissionsForFilePath(const QString& path, bool persistPermission, PermissionBlock block,
                                             Finished finished = {});
    void requestAccessPermissionsForFileURL(const QUrl& fileURL, bool persistPermission, PermissionBlock block,
                                            Finished finished = {});
    std::optional<QByteArray> persistPermissionPath(const QString& path);
    std::optional<QByteArray> persistPermissionURL(const QUrl& url);
    /// The panel; answers with the URL that the user allowed.
    void askPermissionForURL(const QUrl& url, std::function<void(std::optional<QUrl>)> answer);

private:
    struct Grant {
        SecurityScopedURL url;
        QByteArray bookmark;
    };
    /// A stored grant that still resolves; a stale one is made anew first.
    std::optional<Grant> storedGrant(const QUrl& url);

    AppSandboxFileAccessPersist m_defaultDelegate;
};

}
