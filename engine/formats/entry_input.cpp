#include "engine/formats/entry_input.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::size_t kBuffer = 256 << 10;
constexpr std::size_t kLeastAhead = 4 << 10;
constexpr std::size_t kDirect = 64 << 10; // from this length on data go straight to the receiver

}

EntryInput::EntryInput(SourcePtr source, std::atomic<std::uint64_t>* counter, CancelToken cancel)
    : m_source(std::move(source))
    , m_counter(counter)
    , m_cancel(std::move(cancel))
    , m_buffer(kBuffer)
    , m_ahead(kLeastAhead)
{
}

EntryInput::EntryInput(StreamPtr stream, CancelToken cancel)
    : m_stream(std::move(stream))
    , m_cancel(std::move(cancel))
    , m_buffer(kBuffer)
    , m_ahead(kBuffer)
{
}

Result<std::size_t> EntryInput::readInto(Bytes into)
{
    TRY(m_cancel.check());
    const auto at = m_position + (m_end - m_begin);
    if (!m_stream) {
        const auto got = TRY(m_source->readAt(at, into));
        if (m_counter)
            m_counter->fetch_add(got, std::memory_order_relaxed);
        return got;
    }
    auto got = m_stream->read(into);
    const auto verified = m_stream->verifiedBytes();
    if (verified > m_verified && verified >= at)
        m_trusted = m_entries; // every entry that has ended lies before `at`
    m_verified = verified;
    return got;
}

Result<void> EntryInput::refill()
{
    std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
    m_end -= m_begin;
    m_begin = 0;
    const auto room = Bytes(m_buffer).subspan(m_end);
    m_end += TRY(readInto(room.first(std::min(room.size(), m_ahead))));
    m_ahead = std::min(m_ahead * 2, kBuffer);
    return {};
}

Result<ConstBytes> EntryInput::peek(std::size_t count)
{
    while (m_end - m_begin < count) {
        const auto before = m_end - m_begin;
        TRY(refill());
        if (m_end - m_begin == before)
            break;
    }
    return ConstBytes(m_buffer).subspan(m_begin, std::min(count, m_end - m_begin));
}

void EntryInput::consume(std::size_t count)
{
    m_begin += count;
    m_position += count;
}

Result<void> EntryInput::skip(std::uint64_t count)
{
    while (count > 0) {
        if (m_begin == m_end) {
            if (m_source) {
                const auto left = m_source->size() - std::min(m_position, m_source->size());
                const auto part = std::min(count, left);
                m_position += part;
                if (m_counter)
                    m_counter->fetch_add(part, std::memory_order_relaxed);
                if (part < count)
                    return Error{ErrorCode::Truncated, "the data end too early"};
                if (part > kLeastAhead)
                    m_ahead = kLeastAhead;
                return {};
            }
            TRY(refill());
            if (m_begin == m_end)
                return Error{ErrorCode::Truncated, "the data end too early"};
        }
        const auto part = static_cast<std::size_t>(std::min<std::uint64_t>(count, m_end - m_begin));
        consume(part);
        count -= part;
    }
    return {};
}

Result<void> EntryInput::deliver(LaneReceiver& lane, std::uint64_t count, Result<void>& fault)
{
    while (count > 0) {
        if (m_begin < m_end) {
            const auto part = static_cast<std::size_t>(std::min<std::uint64_t>(count, m_end - m_begin));
            const auto block = ConstBytes(m_buffer).subspan(m_begin, part);
            consume(part);
            count -= part;
            TRY(lane.data(block));
            continue;
        }
        if (count >= kDirect) {
            std::uint64_t done = 0;
            const auto taken = deliverDirectly(lane, count, done, fault);
            count -= done;
            TRY(taken);
        } else if (auto filled = refill(); !filled) {
            fault = filled;
        } else if (m_begin == m_end) {
            fault = Error{ErrorCode::Truncated, "the data end too early"};
        }
        if (!fault)
            return {};
    }
    return {};
}

/// Nothing is buffered: stored bytes may be copied by the kernel, a stream decodes into the receiver's own memory.
Result<void> EntryInput::deliverDirectly(LaneReceiver& lane, std::uint64_t count, std::uint64_t& done,
                                         Result<void>& fault)
{
    if (m_source) {
        constexpr std::uint64_t kAtOnce = 8 << 20; // so that progress moves and the stop flag is asked
        const auto part = std::min(count, kAtOnce);
        TRY(m_cancel.check());
        const auto copied = lane.copy(*m_source, m_position, part, nullptr);
        if (!copied && copied.error().code != ErrorCode::Io && copied.error().code != ErrorCode::Truncated)
            return copied;
        fault = copied;
        if (!copied)
            return {};
        m_position += part;
        if (m_counter)
            m_counter->fetch_add(part, std::memory_order_relaxed);
        done = part;
        return {};
    }
    const auto room = lane.room(kDirect);
    const auto got = readInto(room.first(static_cast<std::size_t>(std::min<std::uint64_t>(room.size(), count))));
    if (!got)
        fault = got.error();
    else if (*got == 0)
        fault = Error{ErrorCode::Truncated, "the data end too early"};
    else {
        m_position += *got;
        done = *got;
        TRY(lane.data(room.first(*got)));
    }
    return {};
}

Result<void> EntryInput::drain()
{
    do {
        m_position += m_end - m_begin;
        m_begin = m_end = 0;
        TRY(refill());
    } while (m_begin < m_end);
    return {};
}

void EntryInput::entryEnded()
{
    ++m_entries;
    if (m_verified >= m_position)
        m_trusted = m_entries;
}

}
