#pragma once

#include "engine/backends/sevenzip_cab_names.h"
#include "engine/backends/sevenzip_open.h"

#include <bitset>

namespace vantoro::sevenzip {

/// An entry together with the texts that it looks at. Not movable: the views point into it.
struct Item {
    Item() = default;
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;

    Entry entry;
    std::string name, owner, group, linkTarget, method, comment;
};

/// The items of an opened handler as entries: numbered without those that are no files of their own (alternate
/// streams).
class Items {
public:
    /// `files` are the opened file and its volumes.
    Items(const Format& format, Ref<InArchive> handler, std::vector<SourcePtr> files);
    /// Counts and numbers the items. LimitExceeded when there are too many.
    Result<void> load(const Limits& limits, const CancelToken& cancel);

    std::uint64_t count() const { return m_isIdentity ? m_total : m_indices.size(); }
    /// The library's number of an entry.
    std::uint32_t handlerIndex(std::uint64_t entry) const
    {
        return m_isIdentity ? static_cast<std::uint32_t>(entry) : m_indices[static_cast<std::size_t>(entry)];
    }
    /// Nothing for an item that is not an entry.
    std::optional<std::uint64_t> entryIndex(std::uint32_t handlerIndex) const;
    /// Reads all properties of an entry.
    Result<void> fill(std::uint64_t entry, Item& item) const;

    // Single properties, for decisions over many entries.
    bool isEncrypted(std::uint64_t entry) const;
    bool isFolder(std::uint64_t entry) const;
    std::optional<std::uint64_t> size(std::uint64_t entry) const;
    std::optional<std::uint32_t> block(std::uint64_t entry) const;
    std::string method(std::uint64_t entry) const;

private:
    static constexpr std::size_t kKnownProperties = 128;
    bool has(std::uint32_t id) const { return m_known[id]; }
    void read(std::uint32_t item, std::uint32_t id, Variant& value) const;
    std::string text(std::uint32_t item, std::uint32_t id, Variant& value) const;
    void fillTimes(std::uint32_t item, Entry& entry) const;
    void fillKind(std::uint32_t item, Item& target) const;
    void fillName(std::uint32_t item, Item& target) const;
    void fillCabName(Item& target) const;
    std::string reparseTarget(std::uint32_t item) const;

    const Format& m_format;
    Ref<InArchive> m_handler;
    Ref<RawProperties> m_raw;
    std::vector<SourcePtr> m_files;
    mutable std::optional<CabNames> m_cabNames; // read when a name is not ASCII
    std::bitset<kKnownProperties> m_known;
    std::uint32_t m_total = 0;
    bool m_isIdentity = true;
    std::vector<std::uint32_t> m_indices;
};

}
