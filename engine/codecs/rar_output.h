#pragma once

#include "engine/codecs/rar_codec.h"
#include "engine/codecs/rar_filters.h"

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <memory>

namespace vantoro {

/// The part of the window that a hot loop keeps in registers: copy it, work, put it back. Before every symbol
/// `position < stop` must hold; a symbol may then write up to kMaxMatch bytes.
struct RarCursor {
    std::uint8_t* base = nullptr;
    std::size_t position = 0;
    std::size_t stop = 0;
    std::size_t size = 0; ///< of the ring
    std::size_t reach = 0; ///< the largest distance
    bool hasWrapped = false;

    static constexpr std::size_t kMaxMatch = 0x1100;

    void put(std::uint8_t value) { base[position++] = value; }

    /// One or two bytes.
    void put(std::uint8_t first, std::uint8_t second, std::size_t count)
    {
        base[position] = first;
        base[position + 1] = second;
        position += count;
    }

    /// A distance of 0 or beyond what was written gives zeros: old archives rely on it.
    void copy(std::uint64_t distance, std::size_t length)
    {
        const auto available = hasWrapped ? reach : std::min(position, reach);
        // Before the ring's start lies its end.
        const auto source = static_cast<std::size_t>(position - distance + (distance > position ? size : 0));
        if (distance - 1 >= available || source + length > size) [[unlikely]] {
            position = copyRarely(*this, distance, length);
            return;
        }
        copyWide(base + position, base + source, length, distance);
        position += length;
    }

private:
    /// Gives the new position. Takes a copy: nobody may know where a loop's cursor is, if it is to stay in registers.
    static std::size_t copyRarely(RarCursor cursor, std::uint64_t distance, std::size_t length);
    /// May write up to 31 bytes behind the end: they are never yet reachable, and there is slack.
    static void copyWide(std::uint8_t* to, const std::uint8_t* from, std::size_t length, std::uint64_t distance)
    {
        const auto* const end = to + length;
        if (distance < 16) [[unlikely]] {
            copyNear(to, from, end, static_cast<unsigned>(distance));
            return;
        }
        do {
            std::memcpy(to, from, 16);
            std::memcpy(to + 16, from + 16, 16);
            to += 32;
            from += 32;
        } while (to < end);
    }
    static void copyNear(std::uint8_t* to, const std::uint8_t* from, const std::uint8_t* end, unsigned distance)
    {
        if (distance == 1) {
            std::memset(to, *from, static_cast<std::size_t>(end - to));
            return;
        }
        while (to < end)
            *to++ = *from++;
    }
};

/// History and output of a rar codec: a ring of decoded bytes, the queue of filters, the entry's sink.
class RarOutput {
public:
    /// Starts an entry. A solid one keeps the history.
    Result<void> begin(const RarCodecEntry& entry, ByteSink& sink);
    RarCursor& cursor() { return m_cursor; }
    /// To be called when the cursor's position has reached its stop (or before): hands on what is complete and sets
    /// the next stop. isFull() tells whether there is one.
    Result<void> flush();
    bool isFull() const { return m_isFull; }
    /// Bytes of this entry decoded so far.
    std::uint64_t produced() const { return m_passed + (m_cursor.position - m_flushed); }
    /// A filter for the bytes [start, start + length) of the entry as they were decoded.
    Result<void> addFilter(std::uint64_t start, std::uint64_t length, std::unique_ptr<RarFilter> filter);
    /// Forgets the filters that have not run yet; their blocks stay as they are.
    Result<void> dropFilters();
    /// Hands on the rest; a filter whose block is not complete is dropped.
    Result<void> finish();

private:
    struct Queued {
        std::uint64_t start = 0, length = 0;
        std::unique_ptr<RarFilter> filter;
    };
    struct FreeMemory {
        void operator()(std::uint8_t* memory) const { std::free(memory); }
    };

    Result<void> reserve(std::uint64_t window);
    Result<void> pass(ConstBytes block);
    Result<void> runFilters();
    Result<void> emit(ConstBytes block);
    void setStop();

    RarCursor m_cursor;
    std::unique_ptr<std::uint8_t[], FreeMemory> m_memory;
    std::uint64_t m_capacity = 0; // the largest window that fits m_memory
    std::size_t m_flushed = 0; // what lies before was passed on
    std::uint64_t m_passed = 0; // decoded bytes of the entry that went through pass()
    std::uint64_t m_emitted = 0; // bytes of the entry after filters
    std::uint64_t m_size = 0; // of the entry
    std::uint64_t m_end = 0; // of its decoded bytes: differs from m_size where filters change lengths
    bool m_isFull = false;
    std::deque<Queued> m_filters;
    unsigned m_chained = 0; // filters queued last that share their start
    std::vector<std::uint8_t> m_block; // of the first filter, as far as it has come
    ByteSink* m_sink = nullptr;
    CancelToken m_cancel;
};

}
