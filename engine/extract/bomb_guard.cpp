#include "engine/extract/bomb_guard.h"

#include <algorithm>
#include <cerrno>

#include <sys/statvfs.h>

namespace vantoro {

namespace {
constexpr std::uint64_t kMiB = std::uint64_t{1} << 20;
constexpr std::uint64_t kHarmless = 256 * kMiB; ///< nobody is hurt below
constexpr std::uint64_t kMostRatio = 200; ///< honest archives stay below 120, deflate bombs reach 1032
constexpr std::uint64_t kReserve = 512 * kMiB;
constexpr std::uint64_t kLookEvery = 64 * kMiB;
constexpr std::uint64_t kMostEntries = 1'000'000;
}

BombGuard::BombGuard(int folder, std::uint64_t packedSize, const std::atomic<std::uint64_t>& packedRead, Ask ask)
    : m_folder(folder)
    , m_packedSize(std::max<std::uint64_t>(packedSize, 1))
    , m_packedRead(packedRead)
    , m_ask(std::move(ask))
    , m_mostEntries(kMostEntries)
    , m_nextLook(kLookEvery)
{
    const auto now = space();
    if (now.inodes > 0)
        m_mostEntries = std::min(m_mostEntries, now.inodes / 2);
}

BombGuard::Space BombGuard::space() const
{
    struct statvfs status {};
    if (::fstatvfs(m_folder, &status) != 0)
        return {};
    const auto total = std::uint64_t{status.f_blocks} * status.f_frsize;
    const auto free = std::uint64_t{status.f_bavail} * status.f_frsize;
    // A stick of a few hundred megabytes is not kept empty for the system's sake.
    const auto reserve = std::min(std::max(kReserve, total / 50), total / 10);
    const bool countsInodes = status.f_files > 0 && status.f_favail > 0;
    return {true, free > reserve ? free - reserve : 0, countsInodes ? std::uint64_t{status.f_favail} : 0};
}

bool BombGuard::isOutOfProportion(std::uint64_t bytes, std::uint64_t packed)
{
    return bytes >= kHarmless && bytes / std::max<std::uint64_t>(packed, 1) >= kMostRatio;
}

Result<void> BombGuard::askOnce(bool& isAllowed, const SizeQuestion& question)
{
    const std::lock_guard lock(m_mutex);
    if (!isAllowed && !m_ask(question))
        return Error{ErrorCode::BombRefused, "out of proportion"};
    isAllowed = true;
    return {};
}

Result<void> BombGuard::declared(std::uint64_t bytes, std::uint64_t entries)
{
    if (isOutOfProportion(bytes, m_packedSize))
        TRY(askOnce(m_allowsRatio, {SizeQuestion::Kind::Ratio, bytes, 0, m_packedSize}));
    if (entries > m_mostEntries)
        TRY(askOnce(m_allowsCrowd, {SizeQuestion::Kind::Crowd, entries, 0, m_packedSize}));
    const auto now = space();
    if (now.isKnown && bytes > now.free)
        TRY(askOnce(m_allowsSpace, {SizeQuestion::Kind::Space, bytes, now.free, m_packedSize}));
    return {};
}

Result<void> BombGuard::entered()
{
    if (m_entries.fetch_add(1, std::memory_order_relaxed) + 1 <= m_mostEntries)
        return {};
    return askOnce(m_allowsCrowd, {SizeQuestion::Kind::Crowd, m_entries.load(), 0, m_packedSize});
}

Result<void> BombGuard::wrote(std::uint64_t bytes)
{
    const auto written = m_written.fetch_add(bytes, std::memory_order_relaxed) + bytes;
    // What has been read so far counts: a bomb hides behind padding as easily as not.
    const auto read = m_packedRead.load(std::memory_order_relaxed);
    if (isOutOfProportion(written, read > 0 ? read : m_packedSize))
        TRY(askOnce(m_allowsRatio, {SizeQuestion::Kind::Ratio, written, 0, m_packedSize}));
    if (written >= m_nextLook.load(std::memory_order_relaxed))
        TRY(look(written));
    return {};
}

Result<void> BombGuard::look(std::uint64_t written)
{
    m_nextLook.store(written + kLookEvery, std::memory_order_relaxed);
    const auto now = space();
    const std::lock_guard lock(m_mutex);
    if (now.isKnown && now.free == 0 && !m_allowsSpace)
        return Error{ErrorCode::NoSpace, "the reserve is reached", ENOSPC};
    return {};
}

}
