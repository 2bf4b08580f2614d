#pragma once

#include "platform/SecurityScopedURL.h"

#include <QByteArray>
#include <QUrl>

#include <optional>

namespace vantoro {

/// Keeps bookmarks of granted URLs.
class BookmarkStore {
public:
    virtual ~BookmarkStore() = default;
    /// Of the URL, or of the nearest folder above it that has one.
    virtual std::optional<QByteArray> bookmarkDataForURL(const QUrl& url) const = 0;
    virtual void setBookmarkData(const QByteArray& data, const QUrl& url) = 0;
    virtual void clearBookmarkDataForURL(const QUrl& url) = 0;
};

/// In the defaults store, one entry per URL.
class AppSandboxFileAccessPersist final : public BookmarkStore {
public:
    /// "bd_" and the URL's text; a folder's ends with a slash.
    static QString keyForBookmarkDataForURL(const QUrl& url);

    std::optional<QByteArray> bookmarkDataForURL(const QUrl& url) const override;
    void setBookmarkData(const QByteArray& data, const QUrl& url) override;
    void clearBookmarkDataForURL(const QUrl& url) override;
};

}
