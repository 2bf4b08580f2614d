#pragma once

#include "engine/io/bytes.h"

#include <atomic>

namespace vantoro::cage {

/// State of one ring, at the front of its part of the shared memory. The counters only grow; the ring's place of a
/// counter is the counter modulo the capacity. The parent reads `head` as a claim.
struct RingState {
    alignas(64) std::atomic<std::uint64_t> head; ///< written by the worker: bytes published
    std::atomic<std::uint32_t> headSignal; ///< futex word: changes with every publication
    std::atomic<std::uint32_t> readerWaits;
    alignas(64) std::atomic<std::uint64_t> tail; ///< written by the parent: bytes taken
    std::atomic<std::uint32_t> tailSignal;
    std::atomic<std::uint32_t> writerWaits;
    std::atomic<std::uint64_t> refused; ///< parent: drop what is left of the entry with this number, counted from 1
};

struct AreaHeader {
    alignas(64) std::atomic<std::uint64_t> packedBytesRead; ///< worker's progress
};

constexpr unsigned kMaxLanes = 16;
constexpr std::size_t kRingCapacity = 2 << 20; ///< a multiple of the page size
constexpr std::size_t kRingFront = 4096; ///< bytes that hold the state

/// Memory that both processes map: a sealed memfd, so that neither can shrink it under the other.
class SharedArea {
public:
    /// In the parent.
    static Result<SharedArea> create(unsigned lanes);
    /// In the worker, over the descriptor that it got. The size tells the number of lanes.
    static Result<SharedArea> attach(int fd);
    SharedArea(SharedArea&& other) noexcept;
    SharedArea& operator=(SharedArea&&) = delete;
    SharedArea(const SharedArea&) = delete;
    ~SharedArea();

    int fd() const { return m_fd; }
    unsigned lanes() const { return m_lanes; }
    AreaHeader& header() const { return *reinterpret_cast<AreaHeader*>(m_memory); }
    RingState& ring(unsigned lane) const;
    std::byte* ringBytes(unsigned lane) const;

private:
    SharedArea(int fd, std::byte* memory, std::size_t size, unsigned lanes)
        : m_fd(fd)
        , m_memory(memory)
        , m_size(size)
        , m_lanes(lanes)
    {
    }
    int m_fd;
    std::byte* m_memory;
    std::size_t m_size;
    unsigned m_lanes;
};

/// Waits until `word` is no longer `seen`, another process wakes us, or the time is up.
void waitOn(std::atomic<std::uint32_t>& word, std::uint32_t seen, unsigned milliseconds);
void wake(std::atomic<std::uint32_t>& word);

}
