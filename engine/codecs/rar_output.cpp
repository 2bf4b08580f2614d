#include "engine/codecs/rar_output.h"

#include <algorithm>
#include <cstdlib>

namespace vantoro {

namespace {

constexpr std::size_t kFlush = 128 << 10; // stays in the processor's cache until it is passed on
constexpr std::size_t kSlack = RarCursor::kMaxMatch + 64; // matches run over the ring's end before it wraps
constexpr std::size_t kMaxFilters = 8192;
constexpr unsigned kMaxChain = 64; // filters over one block
constexpr std::uint64_t kGenerous = 64 << 20; // a larger window is given back when it is not needed any more

ConstBytes bytesOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const std::byte*>(data), size};
}

}

std::size_t RarCursor::copyRarely(RarCursor cursor, std::uint64_t distance, std::size_t length)
{
    const auto available = cursor.hasWrapped ? cursor.reach : std::min(cursor.position, cursor.reach);
    auto* const to = cursor.base + cursor.position;
    if (distance - 1 >= available) {
        std::memset(to, 0, length);
    } else if (distance <= cursor.position) { // near the ring's end: what runs over it is moved later
        copyWide(to, to - distance, length, distance);
    } else {
        auto from = cursor.position + cursor.size - static_cast<std::size_t>(distance);
        for (std::size_t i = 0; i < length; ++i) {
            to[i] = cursor.base[from++];
            if (from == cursor.size)
                from = 0;
        }
    }
    return cursor.position + length;
}

Result<void> RarOutput::reserve(std::uint64_t window)
{
    if (window <= m_capacity)
        return {};
    // A ring larger than the window: bytes behind the position are overwritten before they fall out of reach.
    const auto size = TRY(checkedCast<std::size_t>(window)) + kSlack + kFlush;
    // calloc leaves large memory untouched until it is used: a small archive may claim a huge window.
    std::unique_ptr<std::uint8_t[], FreeMemory> memory(static_cast<std::uint8_t*>(std::calloc(size + kSlack, 1)));
    if (!memory)
        return Error{ErrorCode::OutOfMemory, "rar: dictionary"};
    const auto kept = m_cursor.hasWrapped ? m_cursor.reach : std::min(m_cursor.position, m_cursor.reach);
    for (std::size_t i = 0; i < kept; ++i)
        memory[i] = m_memory[(m_cursor.position + m_cursor.size - kept + i) % m_cursor.size];
    m_memory = std::move(memory);
    m_capacity = window;
    m_cursor = {m_memory.get(), kept, kept, size, static_cast<std::size_t>(window), false};
    return {};
}

Result<void> RarOutput::begin(const RarCodecEntry& entry, ByteSink& sink)
{
    if (!entry.isSolid) {
        if (m_capacity > kGenerous && entry.window < m_capacity / 4) {
            m_memory.reset();
            m_capacity = 0;
        }
        m_cursor.position = 0;
        m_cursor.reach = 0;
        m_cursor.hasWrapped = false;
    }
    TRY(reserve(entry.window));
    m_cursor.reach = std::max(m_cursor.reach, static_cast<std::size_t>(entry.window));
    m_flushed = m_cursor.position;
    m_passed = 0;
    m_emitted = 0;
    m_size = entry.size.value_or(~std::uint64_t{0});
    m_end = m_size;
    m_isFull = m_size == 0;
    m_filters.clear();
    m_block.clear();
    m_sink = &sink;
    m_cancel = entry.cancel;
    setStop();
    return {};
}

void RarOutput::setStop()
{
    const auto left = m_end - produced();
    const auto room = std::min(m_cursor.size - m_cursor.position, kFlush);
    m_cursor.stop = m_cursor.position + static_cast<std::size_t>(std::min<std::uint64_t>(room, left));
}

Result<void> RarOutput::flush()
{
    TRY(m_cancel.check());
    TRY(pass(bytesOf(m_cursor.base + m_flushed, m_cursor.position - m_flushed)));
    if (m_cursor.position >= m_cursor.size) {
        const auto over = m_cursor.position - m_cursor.size;
        std::memcpy(m_cursor.base, m_cursor.base + m_cursor.size, over);
        m_cursor.position = over;
        m_cursor.hasWrapped = true;
    }
    m_flushed = m_cursor.position;
    // Filters may have made the output shorter than what was decoded: then there is more to come.
    if (m_passed >= m_end && m_end != ~std::uint64_t{0}) {
        const auto delivered = m_emitted + m_block.size();
        if (delivered < m_size)
            m_end = m_passed + (m_size - delivered);
    }
    m_isFull = m_passed >= m_end;
    m_end = std::max(m_end, m_passed);
    setStop();
    return {};
}

Result<void> RarOutput::addFilter(std::uint64_t start, std::uint64_t length, std::unique_ptr<RarFilter> filter)
{
    if (m_filters.size() >= kMaxFilters)
        return Error{ErrorCode::Corrupt, "rar: too many filters"};
    if (!m_filters.empty() && start < m_filters.back().start)
        return Error{ErrorCode::Corrupt, "rar: filters out of order"};
    m_chained = !m_filters.empty() && start == m_filters.back().start ? m_chained + 1 : 0;
    if (m_chained > kMaxChain)
        return Error{ErrorCode::Corrupt, "rar: too many filters for one block"};
    m_filters.push_back({start, length, std::move(filter)});
    return {};
}

Result<void> RarOutput::pass(ConstBytes block)
{
    while (!block.empty()) {
        auto count = block.size();
        if (m_filters.empty()) {
            m_passed += count;
            return emit(block);
        }
        const auto& filter = m_filters.front();
        if (m_passed < filter.start) {
            count = static_cast<std::size_t>(std::min<std::uint64_t>(count, filter.start - m_passed));
            TRY(emit(block.first(count)));
            m_passed += count;
        } else {
            const auto missing = filter.length - m_block.size();
            count = static_cast<std::size_t>(std::min<std::uint64_t>(count, missing));
            const auto* const data = reinterpret_cast<const std::uint8_t*>(block.data());
            m_block.insert(m_block.end(), data, data + count);
            m_passed += count;
            if (m_block.size() == filter.length)
                TRY(runFilters());
        }
        block = block.subspan(count);
    }
    return {};
}

Result<void> RarOutput::runFilters()
{
    const auto start = m_filters.front().start;
    do { // further filters over the same block work on the result of the one before
        auto filter = std::move(m_filters.front().filter);
        m_filters.pop_front();
        TRY(filter->run(m_block, m_emitted));
    } while (!m_filters.empty() && m_filters.front().start == start && m_filters.front().length == m_block.size());
    if (!m_filters.empty() && m_filters.front().start < m_passed)
        return Error{ErrorCode::Corrupt, "rar: filters overlap"};
    TRY(emit(bytesOf(m_block.data(), m_block.size())));
    m_block.clear();
    return {};
}

Result<void> RarOutput::emit(ConstBytes block)
{
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(block.size(), m_size - m_emitted));
    m_emitted += count;
    if (count == 0)
        return {};
    return m_sink->write(block.first(count));
}

Result<void> RarOutput::dropFilters()
{
    m_filters.clear();
    const auto rest = emit(bytesOf(m_block.data(), m_block.size()));
    m_block.clear();
    return rest;
}

Result<void> RarOutput::finish()
{
    TRY(pass(bytesOf(m_cursor.base + m_flushed, m_cursor.position - m_flushed)));
    m_flushed = m_cursor.position;
    return dropFilters();
}

}
