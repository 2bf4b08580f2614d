#pragma once

#include <QByteArray>
#include <QUrl>

#include <optional>

namespace vantoro {

/// The URL of a file or folder that the user let the program use. Outside a sandbox every path may be used and starting
/// access does nothing.
class SecurityScopedURL {
public:
    SecurityScopedURL() = default;
    explicit SecurityScopedURL(QUrl url) : m_url(std::move(url)) {}
    static SecurityScopedURL fileURLWithPath(const QString& path);

    const QUrl& url() const { return m_url; }
    QString path() const { return m_url.toLocalFile(); }
    /// False when the item cannot be reached.
    bool startAccessingSecurityScopedResource() const;
    void stopAccessingSecurityScopedResource() const {}

    /// Data that a later run turns into the same URL again; nothing when the item is out of reach.
    std::optional<QByteArray> bookmarkData() const;
    /// `isStale`: still good, but should be made anew (the item has moved).
    static std::optional<SecurityScopedURL> URLByResolvingBookmarkData(const QByteArray& data, bool* isStale = nullptr);

private:
    QUrl m_url;
};

/// Whether the process runs confined: the environment variable APP_SANDBOX_CONTAINER_ID is set, or it is a Flatpak.
bool isSandboxed();

}
