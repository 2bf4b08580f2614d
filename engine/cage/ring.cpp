#include "engine/cage/ring.h"

#include <algorithm>

namespace vantoro::cage {

namespace {

constexpr std::size_t kWakeAfter = 128 << 10; // bytes gathered before the reader is woken
constexpr unsigned kPause = 100; // milliseconds between two looks at a silent ring

constexpr std::size_t rounded(std::size_t length) { return (length + 7) & ~std::size_t{7}; }
constexpr std::size_t placeOf(std::uint64_t counter) { return static_cast<std::size_t>(counter % kRingCapacity); }

}

std::size_t RingWriter::freeBytes()
{
    m_tail = m_state.tail.load(std::memory_order_acquire);
    return kRingCapacity - static_cast<std::size_t>(m_written - m_tail);
}

void RingWriter::waitForRoom(std::size_t needed)
{
    if (kRingCapacity - static_cast<std::size_t>(m_written - m_tail) >= needed)
        return;
    while (freeBytes() < needed) {
        wakeReader();
        const auto signal = m_state.tailSignal.load();
        m_state.writerWaits.store(1);
        if (freeBytes() < needed)
            waitOn(m_state.tailSignal, signal, kPause);
        m_state.writerWaits.store(0);
    }
}

Bytes RingWriter::reserve(std::size_t least)
{
    const auto needed = sizeof(RecordHeader) + rounded(std::min(least, kMaxPayload));
    auto untilEnd = kRingCapacity - placeOf(m_written);
    if (untilEnd < needed) {
        waitForRoom(untilEnd);
        const RecordHeader pad{static_cast<std::uint32_t>(RecordType::Pad),
                               static_cast<std::uint32_t>(untilEnd - sizeof(RecordHeader))};
        std::memcpy(m_bytes + placeOf(m_written), &pad, sizeof pad);
        m_written += untilEnd;
        m_state.head.store(m_written, std::memory_order_release);
        untilEnd = kRingCapacity;
    }
    waitForRoom(needed);
    // As much as is free in one piece helps the decoder; the rest comes back with commit().
    const auto room = std::min({freeBytes(), untilEnd, sizeof(RecordHeader) + kMaxPayload}) - sizeof(RecordHeader);
    return {m_bytes + placeOf(m_written) + sizeof(RecordHeader), room & ~std::size_t{7}};
}

void RingWriter::commit(RecordType type, std::size_t length)
{
    const RecordHeader header{static_cast<std::uint32_t>(type), static_cast<std::uint32_t>(length)};
    std::memcpy(m_bytes + placeOf(m_written), &header, sizeof header);
    m_written += sizeof header + rounded(length);
    // Visible at once, so that nothing whole is lost with a worker that dies; a wake-up each would cost too much.
    m_state.head.store(m_written, std::memory_order_release);
    if (m_written - m_signalled >= kWakeAfter)
        wakeReader();
}

void RingWriter::put(RecordType type, ConstBytes payload)
{
    assert(payload.size() <= kMaxPayload);
    const auto room = reserve(payload.size());
    std::copy(payload.begin(), payload.end(), room.begin());
    commit(type, payload.size());
}

void RingWriter::putEntry(const Entry& entry)
{
    const EntryEncoder encoder(entry);
    encoder.write(reserve(encoder.size()));
    commit(RecordType::Entry, encoder.size());
}

void RingWriter::wakeReader()
{
    m_signalled = m_written;
    m_state.headSignal.fetch_add(1);
    if (m_state.readerWaits.load() != 0)
        wake(m_state.headSignal);
}

Result<std::optional<RingReader::Record>> RingReader::next()
{
    constexpr Error kLie{ErrorCode::Corrupt, "cage: the ring does not add up"};
    while (true) {
        if (m_head == m_taken) {
            const auto claim = m_state.head.load(std::memory_order_acquire);
            if (claim < m_taken || claim - m_taken > kRingCapacity || claim % 8 != 0)
                return kLie;
            m_head = claim;
        }
        const auto head = m_head;
        if (head == m_taken)
            return std::optional<Record>();
        const auto place = placeOf(m_taken);
        RecordHeader header; // read once: the worker may change the memory behind our back
        std::memcpy(&header, m_bytes + place, sizeof header);
        const auto whole = sizeof header + rounded(header.length);
        if (whole > head - m_taken || whole > kRingCapacity - place)
            return kLie;
        m_pending = whole;
        if (header.type == static_cast<std::uint32_t>(RecordType::Pad)) {
            release();
            continue;
        }
        if (header.type > static_cast<std::uint32_t>(RecordType::Info) || header.type == 0)
            return kLie;
        return std::optional(
            Record{static_cast<RecordType>(header.type), ConstBytes(m_bytes + place + sizeof header, header.length)});
    }
}

void RingReader::release()
{
    m_taken += m_pending;
    m_pending = 0;
    // Records are given back together, also to a writer that waits: a wake-up for each would cost more than they do.
    // What is left over is given back by wait().
    if (m_taken - m_given < kRingCapacity / 8)
        return;
    m_given = m_taken;
    m_state.tail.store(m_taken, std::memory_order_release);
    m_state.tailSignal.fetch_add(1);
    if (m_state.writerWaits.load() != 0)
        wake(m_state.tailSignal);
}

void RingReader::wait(unsigned milliseconds)
{
    m_given = m_taken;
    m_state.tail.store(m_taken, std::memory_order_release);
    m_state.tailSignal.fetch_add(1);
    if (m_state.writerWaits.load() != 0)
        wake(m_state.tailSignal);
    const auto signal = m_state.headSignal.load();
    m_state.readerWaits.store(1);
    if (m_state.head.load(std::memory_order_acquire) == m_taken)
        waitOn(m_state.headSignal, signal, milliseconds);
    m_state.readerWaits.store(0);
}

void RingReader::interrupt()
{
    m_state.headSignal.fetch_add(1);
    wake(m_state.headSignal);
}

}
