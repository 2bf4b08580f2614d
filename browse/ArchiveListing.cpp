#include "browse/ArchiveListing.h"

#include <QHashFunctions>

#include <algorithm>
#include <bit>
#include <functional>
#include <unordered_map>

namespace vantoro {
namespace {

/// Seeded anew in every run, so that no archive can be made to collide.
std::size_t hashOf(std::string_view name) { return qHashBits(name.data(), name.size(), QHashSeed::globalSeed()); }

}

ArchiveListing::ArchiveListing(std::shared_ptr<const XADEntryTable> table, QString skeletonFolder)
    : m_table(std::move(table))
    , m_skeletonFolder(std::move(skeletonFolder))
{
    const auto entries = m_table ? m_table->count() : 0;
    m_items.reserve(static_cast<std::size_t>(entries));
    const ItemNames& names = *this;
    for (qsizetype i = 0; i < entries; ++i)
        m_items.emplace_back(names, static_cast<quint32>(i), m_table->at(i).isFolder);
    index();
}

void ArchiveListing::index()
{
    m_slots.assign(std::bit_ceil(m_items.size() * 2 + 1), 0);
    std::unordered_map<quint32, quint32> lastOf;
    for (quint32 i = 0; i < m_items.size(); ++i) {
        quint32& slot = m_slots[slotOf(m_table->name(i))];
        if (slot == 0)
            slot = i + 1;
        else
            lastOf[slot - 1] = i;
    }
    m_repeated.assign(lastOf.begin(), lastOf.end());
    std::ranges::sort(m_repeated);
}

/// Where the name stands, or the free slot where it would.
std::size_t ArchiveListing::slotOf(std::string_view name) const
{
    const std::size_t mask = m_slots.size() - 1;
    auto slot = hashOf(name) & mask;
    while (m_slots[slot] != 0 && m_table->name(m_slots[slot] - 1) != name)
        slot = (slot + 1) & mask;
    return slot;
}

qsizetype ArchiveListing::firstNamed(std::string_view name) const
{
    return static_cast<qsizetype>(m_slots[slotOf(name)]) - 1;
}

qsizetype ArchiveListing::lastNamed(std::string_view name) const
{
    const auto first = firstNamed(name);
    if (first < 0 || m_repeated.empty())
        return first;
    const auto repeated
        = std::ranges::lower_bound(m_repeated, static_cast<quint32>(first), {}, &std::pair<quint32, quint32>::first);
    const bool isRepeated = repeated != m_repeated.end() && repeated->first == static_cast<quint32>(first);
    return isRepeated ? repeated->second : first;
}

qsizetype ArchiveListing::indexOfItem(const KXArchiveItem* item) const
{
    const auto* begin = m_items.data();
    const auto* end = begin + m_items.size();
    const std::less<const KXArchiveItem*> before;
    return before(item, begin) || !before(item, end) ? -1 : item - begin;
}

KXArchiveItem* ArchiveListing::itemAtPath(const QString& path) const
{
    const auto start = m_skeletonFolder.size();
    if (path.size() <= start + 1 || !path.startsWith(m_skeletonFolder) || path.at(start) != QLatin1Char('/'))
        return nullptr;
    const auto last = lastNamed(path.mid(start + 1).toStdString());
    return last < 0 ? nullptr : itemAt(last);
}

QString ArchiveListing::itemName(quint32 number) const { return QString::fromUtf8(m_table->name(number)); }

}
