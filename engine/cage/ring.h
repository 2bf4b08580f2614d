#pragma once

#include "engine/cage/protocol.h"
#include "engine/cage/shared_area.h"

namespace vantoro::cage {

/// The worker's end of a ring: records go in, in order. One thread at a time.
class RingWriter {
public:
    RingWriter(SharedArea& area, unsigned lane) : m_state(area.ring(lane)), m_bytes(area.ringBytes(lane)) {}

    /// Room for a payload of at least `least` bytes in one piece, at most kMaxPayload. Waits for the reader.
    Bytes reserve(std::size_t least);
    /// Makes a record of the first `length` bytes of what reserve() gave.
    void commit(RecordType type, std::size_t length);
    /// `payload`: at most kMaxPayload.
    void put(RecordType type, ConstBytes payload);
    void putEntry(const Entry& entry);
    /// Wakes a reader that sleeps. commit() does it by itself once enough has gathered.
    void wakeReader();
    std::uint64_t refusedEntry() const { return m_state.refused.load(std::memory_order_relaxed); }

    static constexpr std::size_t kMaxPayload = kRingCapacity / 3;
    static_assert(kMaxPayload >= kMaxRecord);

private:
    std::size_t freeBytes();
    void waitForRoom(std::size_t needed);

    RingState& m_state;
    std::byte* m_bytes;
    std::uint64_t m_written = 0; // up to here records are complete
    std::uint64_t m_signalled = 0;
    std::uint64_t m_tail = 0; // as far as the reader was when it was looked at
};

/// The parent's end. Whatever the memory holds, reads stay inside the ring.
class RingReader {
public:
    RingReader(SharedArea& area, unsigned lane) : m_state(area.ring(lane)), m_bytes(area.ringBytes(lane)) {}

    struct Record {
        RecordType type = RecordType::Pad;
        ConstBytes payload; ///< in shared memory: the worker may change it at any time
    };
    /// The next record, if there is one by now. Corrupt when the worker's counters or headers lie.
    Result<std::optional<Record>> next();
    /// Gives the last record's room back to the writer.
    void release();
    /// Waits until something is published or the time is up.
    void wait(unsigned milliseconds);
    /// Ends a wait() on another thread.
    void interrupt();
    void refuseEntry(std::uint64_t number) { m_state.refused.store(number, std::memory_order_relaxed); }
    std::uint64_t taken() const { return m_taken; }

private:
    RingState& m_state;
    std::byte* m_bytes;
    std::uint64_t m_taken = 0;
    std::uint64_t m_head = 0; // as far as the writer was when it was looked at: the counter travels between processors
    std::uint64_t m_pending = 0; // bytes of the record handed out
    std::uint64_t m_given = 0; // tail as the writer knows it
};

}
