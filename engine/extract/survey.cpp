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
    const auto bytes = m_isTar && entry.packedSize ? std::min(*entry.size, *entry.packedSize) : *entry.size;
    m_bytes = bytes > ~m_bytes ? ~std::uint64_t{0} : m_bytes + bytes;
    return {};
}

}
