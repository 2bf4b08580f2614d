#include "engine/write/source_batch.h"

#include "engine/write/source_reader.h"

namespace vantoro {

namespace {

constexpr std::uint64_t kMostRead = 128 << 10; // of one file
constexpr std::size_t kMostTogether = 256 << 10;
constexpr std::size_t kMostRows = 64;

bool isSmallFile(const SourceItem& item) { return item.kind == EntryKind::File && item.size <= kMostRead; }

/// `into` is as long as the file was when the list was made.
void readRow(SourceBatch::Row& row, Bytes into)
{
    const auto reader = SourceReader::open(*row.item);
    if (!reader) {
        row.error = reader.error();
        return;
    }
    if (reader->size() > into.size())
        return; // it grew
    const auto got = reader->readAt(0, into.first(static_cast<std::size_t>(reader->size())));
    row.isRead = true;
    row.size = reader->size();
    if (got)
        row.data = into.first(*got);
    else
        row.error = got.error();
}

}

void SourceBatch::clear()
{
    m_rows.clear();
    m_wanted = 0;
}

void SourceBatch::add(const SourceItem& item)
{
    m_rows.push_back({&item, {}, false, 0, {}});
    if (isSmallFile(item))
        m_wanted += static_cast<std::size_t>(item.size);
}

bool SourceBatch::isFull() const { return m_wanted >= kMostTogether || m_rows.size() >= kMostRows; }

void SourceBatch::read(const CancelToken& cancel)
{
    if (m_wanted > m_capacity) {
        m_capacity = std::max(m_wanted, kMostTogether + kMostRead);
        m_data = std::make_unique_for_overwrite<std::byte[]>(m_capacity);
    }
    Bytes free(m_data.get(), m_wanted);
    for (auto& row : m_rows) {
        if (cancel.isCancelled())
            return;
        if (!isSmallFile(*row.item))
            continue;
        const auto size = static_cast<std::size_t>(row.item->size);
        readRow(row, free.first(size));
        free = free.subspan(size);
    }
}

}
