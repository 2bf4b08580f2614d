#include "files/AppSandboxFileAccess.h"

#include "files/AppSandboxFileAccessOpenSavePanelDelegate.h"
#include "files/CustomePanel.h"

#include "platform/PathNames.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace vantoro {
namespace {

QString existingFolderAbove(QString path)
{
    while (path.size() > 1 && !QFileInfo::exists(path))
        path = deletingLastPathComponent(path);
    return QFileInfo(path).isDir() ? path : deletingLastPathComponent(path);
}

}

std::unique_ptr<AppSandboxFileAccess> AppSandboxFileAccess::fileAccess()
{
    return std::make_unique<AppSandboxFileAccess>();
}

AppSandboxFileAccess::AppSandboxFileAccess()
    : title(QCoreApplication::translate("AppSandboxFileAccess", "Allow Access"))
    , message(QCoreApplication::translate("AppSandboxFileAccess",
                                          "%1 needs to access this path to continue. Click Allow to continue.")
                  .arg(QStringLiteral("Vantoro")))
    , prompt(QCoreApplication::translate("AppSandboxFileAccess", "Allow"))
    , bookmarkPersistanceDelegate(&m_defaultDelegate)
{
}

void AppSandboxFileAccess::accessFilePath(const QString& path, bool persistPermission, AccessBlock block,
                                          Finished finished)
{
    accessFileURL(QUrl::fromLocalFile(path), persistPermission, std::move(block), std::move(finished));
}

void AppSandboxFileAccess::accessFileURL(const QUrl& fileURL, bool persistPermission, AccessBlock block,
                                         Finished finished)
{
    Q_ASSERT_X(block, "AppSandboxFileAccess", "Invalid parameter not satisfying: block");
    const auto insideScope = [block = std::move(block)](const SecurityScopedURL& url, const auto&) {
        url.startAccessingSecurityScopedResource();
        block();
        url.stopAccessingSecurityScopedResource();
    };
    requestAccessPermissionsForFileURL(fileURL, persistPermission, insideScope, std::move(finished));
}

void AppSandboxFileAccess::requestAccessPermissionsForFilePath(const QString& path, bool persistPermission,
                                                               PermissionBlock block, Finished finished)
{
    Q_ASSERT_X(!path.isEmpty(), "AppSandboxFileAccess", "Invalid parameter not satisfying: fileURL");
    requestAccessPermissionsForFileURL(QUrl::fromLocalFile(path), persistPermission, std::move(block),
                                       std::move(finished));
}

void AppSandboxFileAccess::requestAccessPermissionsForFileURL(const QUrl& fileURL, bool persistPermission,
                                                              PermissionBlock block, Finished finished)
{
    Q_ASSERT_X(!fileURL.isEmpty(), "AppSandboxFileAccess", "Invalid parameter not satisfying: fileURL");
    const auto allow = [block = std::move(block), finished](const SecurityScopedURL& url,
                                                            const std::optional<QByteArray>& bookmark) {
        if (block)
            block(url, bookmark);
        if (finished)
            finished(true);
    };
    const QString resolved = resolvingSymlinks(fileURL.toLocalFile());
    const QUrl url = resolved.isNull() ? fileURL : QUrl::fromLocalFile(resolved);
    if (const auto grant = storedGrant(url))
        return allow(grant->url, grant->bookmark);
    if (!isSandboxed())
        return allow(SecurityScopedURL(url), persistPermission ? persistPermissionURL(url) : std::nullopt);
    askPermissionForURL(url, [this, persistPermission, allow, finished](const std::optional<QUrl>& allowed) {
        if (allowed)
            allow(SecurityScopedURL(*allowed), persistPermission ? persistPermissionURL(*allowed) : std::nullopt);
        else if (finished)
            finished(false);
    });
}

std::optional<AppSandboxFileAccess::Grant> AppSandboxFileAccess::storedGrant(const QUrl& url)
{
    const auto bookmark = bookmarkPersistanceDelegate->bookmarkDataForURL(url);
    if (!bookmark)
        return std::nullopt;
    bool isStale = false;
    const auto granted = SecurityScopedURL::URLByResolvingBookmarkData(*bookmark, &isStale);
    if (!isStale)
        return granted ? std::optional(Grant{*granted, *bookmark}) : std::nullopt;
    bookmarkPersistanceDelegate->clearBookmarkDataForURL(url);
    const auto fresh = granted ? persistPermissionURL(granted->url()) : std::nullopt;
    return fresh ? std::optional(Grant{*granted, *fresh}) : std::nullopt;
}

std::optional<QByteArray> AppSandboxFileAccess::persistPermissionPath(const QString& path)
{
    Q_ASSERT_X(!path.isEmpty(), "AppSandboxFileAccess", "Invalid parameter not satisfying: url");
    return persistPermissionURL(QUrl::fromLocalFile(path));
}

std::optional<QByteArray> AppSandboxFileAccess::persistPermissionURL(const QUrl& url)
{
    Q_ASSERT_X(!url.isEmpty(), "AppSandboxFileAccess", "Invalid parameter not satisfying: url");
    const auto bookmark = SecurityScopedURL(url).bookmarkData();
    if (bookmark)
        bookmarkPersistanceDelegate->setBookmarkData(*bookmark, url);
    return bookmark;
}

void AppSandboxFileAccess::askPermissionForURL(const QUrl& url, std::function<void(std::optional<QUrl>)> answer)
{
    Q_ASSERT_X(!url.isEmpty(), "AppSandboxFileAccess", "Invalid parameter not satisfying: url");
    OpenPanel panel = CustomePanel::openPanelWithTitleMessage({.message = message,
                                                               .prompt = prompt,
                                                               .chooseFiles = true,
                                                               .chooseDirectories = true,
                                                               .directory = existingFolderAbove(url.toLocalFile())});
    panel.title = title;
    panel.shouldEnableURL = [limits = AppSandboxFileAccessOpenSavePanelDelegate::initWithFileURL(url)](
                                const QUrl& candidate) { return limits.shouldEnableURL(candidate); };
    PanelService::shared().runOpenPanel(
        panel, Action<PanelResult>(this, [answer = std::move(answer)](const PanelResult& chosen) {
            answer(chosen && !chosen->isEmpty() ? std::optional(chosen->constFirst()) : std::nullopt);
        }));
}

}
