#include "engine/extract/survey.h"

#include <algorithm>

namespace vantoro {

bool Survey::isChosen(std::uint64_t index)
{
    if (!m_selection)
        return true;
    while (m_nextChosen < m_selection->size() && (*m_selection)[m_nextChosen] < index)
        ++m_nextChosen;
    return m_nextChosen < m_selection->size() && (*m_selection)[m_nextChosen] == index;
}

/// How much of the declared size can come at all: a size that lies is damage of one entry, not a reason to ask.
std::uint64_t Survey::believable(const Entry& entry) const
{
    constexpr std::uint64_t kMostDeflate = 1032; // bytes out of one
    constexpr std::uint64_t kSmall = 4096;
    const auto size = *entry.size;
    if (!entry.packedSize)
        return size;
    const auto packed = *entry.packedSize;
    if (packed > m_packedSize)
        return 0; // beyond the end of the archive
    const bool isStored = m_isTar || entry.method.ends_with("Stored");
    const bool isDeflated = entry.method.ends_with("Deflate");
    if (!isStored && !isDeflated)
        return size;
    return std::min(size, isStored ? packed : packed * kMostDeflate + kSmall);
}

Result<void> Survey::visit(const Entry& entry)
{
    TRY(m_cancel.check());
    ++m_listed;
    if (EntryNames::isUndeclared(entry.name, entry.nameCharset)) {
        m_detector.add(entry.name);
        if (m_firstOpenName.empty() && !isValidUtf8(entry.name))
            m_firstOpenName = entry.name;
    }
    if (!isChosen(entry.index))
        return {};
    ++m_chosen;
    if (entry.kind != EntryKind::File && entry.kind != EntryKind::ResourceFork)
        return {};
    if (!entry.size) {
        m_declaresAllSizes = false;
        return {};
    }
    const auto bytes = believable(entry);
    m_bytes = bytes > ~m_bytes ? ~std::uint64_t{0} : m_bytes + bytes;
    return {};
}

}
