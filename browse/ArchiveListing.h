#pragma once

#include "browse/KXArchiveItem.h"
#include "platform/XADEntryTable.h"

#include <vector>

namespace vantoro {

/// The entries of one archive as items, in the archive's order, and the ways to find them again. It plays the parts of
/// `archiveContents` (count, itemAt), `archiveIndexContents` (indexOfName) and `archiveDictionary` (itemAtPath) in 28
/// bytes an entry. The items' data and images change; the rest is fixed and may be read from any thread.
class ArchiveListing final : private ItemNames {
public:
    /// `table` may be null: no entries.
    ArchiveListing(std::shared_ptr<const XADEntryTable> table, QString skeletonFolder);
    ArchiveListing(const ArchiveListing&) = delete;
    ArchiveListing& operator=(const ArchiveListing&) = delete;

    qsizetype count() const { return static_cast<qsizetype>(m_items.size()); }
    bool isEmpty() const { return m_items.empty(); }
    /// The index lies within count().
    KXArchiveItem* itemAt(qsizetype index) const { return &m_items[static_cast<std::size_t>(index)]; }
    /// By identity; -1 for items that are not of this listing (implied folders).
    qsizetype indexOfItem(const KXArchiveItem* item) const;
    bool contains(const KXArchiveItem* item) const { return indexOfItem(item) >= 0; }
    /// The first entry of that name; -1 when there is none.
    qsizetype indexOfName(const QString& name) const { return firstNamed(name.toStdString()); }
    qsizetype firstNamed(std::string_view name) const;
    /// The last entry of that name: the one that a path stands for.
    qsizetype lastNamed(std::string_view name) const;
    /// Whether a name comes more than once.
    bool hasRepeatedNames() const { return !m_repeated.empty(); }
    /// The last entry whose placeholder has this path; null when there is none.
    KXArchiveItem* itemAtPath(const QString& path) const;
    /// Null where the archive could not be opened.
    const XADEntryTable* table() const { return m_table.get(); }
    QString skeletonFolder() const override { return m_skeletonFolder; }

private:
    std::string_view relativePath(quint32 number) const override { return m_table->name(number); }
    QString itemName(quint32 number) const override;
    std::size_t slotOf(std::string_view name) const;
    void index();

    const std::shared_ptr<const XADEntryTable> m_table;
    const QString m_skeletonFolder;
    mutable std::vector<KXArchiveItem> m_items; // never resized: items are known by their address
    std::vector<quint32> m_slots; // first entry of each name, by its hash; one more than its index, 0 is free
    std::vector<std::pair<quint32, quint32>> m_repeated; // first and last entry of names that come again, sorted
};

}
