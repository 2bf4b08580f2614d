#include "engine/cage/shared_area.h"

#include <cerrno>
#include <climits>
#include <ctime>
#include <new>
#include <utility>

#include <fcntl.h>
#include <linux/futex.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace vantoro::cage {

namespace {

constexpr std::size_t kHeaderSize = 4096;
constexpr std::size_t kLaneSize = kRingFront + kRingCapacity;

Result<std::byte*> map(int fd, std::size_t size)
{
    void* memory = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    if (memory == MAP_FAILED)
        return Error{ErrorCode::OutOfMemory, "cage: mapping the shared area", errno};
    return static_cast<std::byte*>(memory);
}

}

Result<SharedArea> SharedArea::create(unsigned lanes)
{
    const int fd = ::memfd_create("vantoro-cage", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    if (fd < 0)
        return Error{ErrorCode::Internal, "cage: memfd_create", errno};
    const auto size = kHeaderSize + lanes * kLaneSize;
    if (::ftruncate(fd, static_cast<off_t>(size)) != 0
        || ::fcntl(fd, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) != 0) {
        const int reason = errno;
        ::close(fd);
        return Error{ErrorCode::Internal, "cage: sizing the shared area", reason};
    }
    const auto memory = map(fd, size);
    if (!memory) {
        ::close(fd);
        return memory.error();
    }
    // Fresh memfd pages are zero, which is the state that the atomics start from.
    return SharedArea(fd, *memory, size, lanes);
}

Result<SharedArea> SharedArea::attach(int fd)
{
    const auto size = ::lseek(fd, 0, SEEK_END);
    if (size < static_cast<off_t>(kHeaderSize + kLaneSize))
        return Error{ErrorCode::Internal, "cage: shared area is too small"};
    const auto memory = TRY(map(fd, static_cast<std::size_t>(size)));
    const auto lanes = (static_cast<std::size_t>(size) - kHeaderSize) / kLaneSize;
    return SharedArea(fd, memory, static_cast<std::size_t>(size), static_cast<unsigned>(lanes));
}

SharedArea::SharedArea(SharedArea&& other) noexcept
    : m_fd(std::exchange(other.m_fd, -1))
    , m_memory(std::exchange(other.m_memory, nullptr))
    , m_size(other.m_size)
    , m_lanes(other.m_lanes)
{
}

SharedArea::~SharedArea()
{
    if (m_memory)
        ::munmap(m_memory, m_size);
    if (m_fd >= 0)
        ::close(m_fd);
}

RingState& SharedArea::ring(unsigned lane) const
{
    return *std::launder(reinterpret_cast<RingState*>(m_memory + kHeaderSize + lane * kLaneSize));
}

std::byte* SharedArea::ringBytes(unsigned lane) const { return m_memory + kHeaderSize + lane * kLaneSize + kRingFront; }

void waitOn(std::atomic<std::uint32_t>& word, std::uint32_t seen, unsigned milliseconds)
{
    const timespec limit{static_cast<time_t>(milliseconds / 1000), static_cast<long>(milliseconds % 1000) * 1'000'000};
    // Not FUTEX_PRIVATE: the word lies in memory of two processes, for which std::atomic::wait does not care.
    ::syscall(SYS_futex, &word, FUTEX_WAIT, seen, &limit, nullptr, 0);
}

void wake(std::atomic<std::uint32_t>& word) { ::syscall(SYS_futex, &word, FUTEX_WAKE, INT_MAX, nullptr, nullptr, 0); }

}
