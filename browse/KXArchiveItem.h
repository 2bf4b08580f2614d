#pragma once

#include <QByteArray>
#include <QIcon>
#include <QString>

#include <memory>
#include <optional>
#include <string_view>

namespace vantoro {

/// Where items that belong to a listing or a tree find their names: an item of a million has no strings of its own.
class ItemNames {
public:
    virtual ~ItemNames() = default;
    /// UTF-8, relative to the skeleton folder; lasts as long as this.
    virtual std::string_view relativePath(quint32 number) const = 0;
    virtual QString itemName(quint32 number) const = 0;
    virtual QString skeletonFolder() const = 0;
};

/// One entry for browsing, or a folder that entries only imply. Its address is its identity.
class KXArchiveItem {
public:
    /// An item that stands for itself.
    static std::unique_ptr<KXArchiveItem> initWithPath(const QString& path, const QString& name, bool isFolder);
    /// An item of a listing or a tree, which outlives it.
    KXArchiveItem(const ItemNames& names, quint32 number, bool isFolder);
    KXArchiveItem(KXArchiveItem&&) noexcept;
    KXArchiveItem& operator=(KXArchiveItem&&) noexcept;
    ~KXArchiveItem();

    bool isFolder() const { return m_isFolder; }
    /// The placeholder's full path in the skeleton.
    QString itemPath() const;
    /// Entries: the archive's name for it, with '/' between the parts. Implied folders: the last part.
    QString itemName() const;
    /// In UTF-8, from the skeleton folder on; empty for the folder itself and for items that stand for themselves.
    std::string_view relativePath() const { return m_names ? m_names->relativePath(m_number) : std::string_view(); }
    /// What a row shows: the last part of itemPath().
    QString fileName() const;

    /// The entry's data once they were read for a preview.
    const std::optional<QByteArray>& data() const;
    void setData(std::optional<QByteArray> data);
    /// The icon last shown for the item.
    QIcon itemImage() const;
    void setItemImage(const QIcon& image);

private:
    struct Kept;
    KXArchiveItem() = default;
    Kept& kept();

    const ItemNames* m_names = nullptr;
    std::unique_ptr<Kept> m_kept; // only where there is something to keep
    quint32 m_number = 0;
    bool m_isFolder = false;
};

}
