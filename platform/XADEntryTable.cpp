#include "platform/XADEntryTable.h"

#include <algorithm>

namespace vantoro {
namespace {

constexpr std::size_t kBlock = 256 << 10; // bytes of names kept together

}

void XADEntryTable::add(Row row, std::string_view name)
{
    row.name = keep(name);
    row.nameLength = static_cast<quint32>(name.size());
    m_rows.push_back(row);
}

void XADEntryTable::setName(qsizetype index, std::string_view name)
{
    Row& row = m_rows[static_cast<std::size_t>(index)];
    row.name = keep(name);
    row.nameLength = static_cast<quint32>(name.size());
}

const char* XADEntryTable::keep(std::string_view name)
{
    if (name.size() > m_room) {
        m_room = std::max(kBlock, name.size());
        m_blocks.push_back(std::make_unique_for_overwrite<char[]>(m_room));
        m_free = m_blocks.back().get();
    }
    char* const start = m_free;
    std::ranges::copy(name, start);
    m_free += name.size();
    m_room -= name.size();
    return start;
}

}
