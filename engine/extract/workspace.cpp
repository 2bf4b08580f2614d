#include "engine/extract/workspace.h"

#include "engine/extract/safe_name.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace vantoro {

namespace {

constexpr const char* kRootName = ".root";
constexpr unsigned kMostNumbers = 1'000'000;

/// Where a descriptor leads, so that the path holds whatever becomes of the current folder.
std::string absolutePath(int fd, const std::string& otherwise)
{
    std::array<char, PATH_MAX> path;
    const auto length = ::readlink(("/proc/self/fd/" + std::to_string(fd)).c_str(), path.data(), path.size());
    if (length <= 0 || static_cast<std::size_t>(length) == path.size() || path[0] != '/')
        return otherwise;
    return {path.data(), static_cast<std::size_t>(length)};
}

Result<UniqueFd> duplicate(int fd)
{
    UniqueFd copy(::fcntl(fd, F_DUPFD_CLOEXEC, 3));
    if (!copy)
        return destinationError(errno, "dup");
    return copy;
}

struct Flush {
    std::mutex mutex;
    std::condition_variable ended;
    UniqueFd folder;
    bool isDone = false;
    Result<void> outcome;
};

}

Workspace::Workspace(UniqueFd destination, HiddenFolder hidden, UniqueFd root, std::string resultPath)
    : m_destination(std::move(destination))
    , m_hidden(std::move(hidden))
    , m_root(std::move(root))
    , m_resultPath(std::move(resultPath))
{
}

Result<Workspace> Workspace::create(const ExtractOptions& options, Ending ending)
{
    UniqueFd destination;
    if (ending == Ending::InDestination)
        destination = TRY(openDestination(options.destination.c_str()));
    auto hidden = ending == Ending::InHiddenFolder
        ? HiddenFolder::createAt(options.hiddenFolderPath)
        : HiddenFolder::create(destination.get(), absolutePath(destination.get(), options.destination));
    if (!hidden)
        return hidden.error();
    if (::mkdirat(hidden->fd(), kRootName, 0777) != 0)
        return destinationError(errno, "make the root folder");
    auto root = TRY(openFolderForReading(hidden->fd(), kRootName));
    Workspace workspace(std::move(destination), std::move(*hidden), std::move(root),
                        ending == Ending::InDestination ? options.destination : options.hiddenFolderPath);
    TRY(workspace.inspect());
    return workspace;
}

Result<void> Workspace::inspect()
{
    struct stat status {};
    struct statfs system {};
    if (::fstat(m_root.get(), &status) != 0 || ::fstatfs(m_root.get(), &system) != 0)
        return destinationError(errno, "look at the root folder");
    m_umask = ~status.st_mode & 0777U; // of the process, without touching it
    m_isInMemory = system.f_type == TMPFS_MAGIC || system.f_type == RAMFS_MAGIC;
    return {};
}

Result<UniqueFd> Workspace::root() const { return duplicate(m_root.get()); }

bool Workspace::tellsNamesApart() const
{
    const auto differ = [this](const char* made, const char* other) {
        struct stat status {};
        if (::mkdirat(m_hidden.fd(), made, 0700) != 0)
            return false;
        const bool isOther = ::fstatat(m_hidden.fd(), other, &status, AT_SYMLINK_NOFOLLOW) != 0;
        ::unlinkat(m_hidden.fd(), made, AT_REMOVEDIR);
        return isOther;
    };
    return differ(".case", ".CASE") && differ(".caf\u00e9", ".cafe\u0301");
}

bool Workspace::hasForeignLink(const std::string& name) const
{
    struct stat status {};
    return ::fstatat(target(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(status.st_mode);
}

Result<void> Workspace::flush(const CancelToken& cancel) const
{
    if (m_isInMemory)
        return {};
    // On a slow stick this takes minutes and cannot be interrupted: a thread of its own is left to it then.
    const auto flush = std::make_shared<Flush>();
    flush->folder = TRY(openFolderForReading(m_hidden.fd(), "."));
    try {
        std::thread([flush] {
            const auto outcome = flushFileSystem(flush->folder.get());
            const std::lock_guard lock(flush->mutex);
            flush->outcome = outcome;
            flush->isDone = true;
            flush->ended.notify_one();
        }).detach();
    } catch (const std::system_error&) {
        return flushFileSystem(flush->folder.get());
    }
    std::unique_lock lock(flush->mutex);
    while (!flush->ended.wait_for(lock, std::chrono::milliseconds(100), [&] { return flush->isDone; }))
        TRY(cancel.check());
    return flush->outcome;
}

/// Returns the name that was free.
Result<std::string> Workspace::moveOut(int from, const char* item, const std::string& name, bool isFolder)
{
    auto free = name;
    for (unsigned number = 1; number < kMostNumbers; ++number) {
        const int reason = renameNoReplace(from, item, target(), free.c_str());
        if (reason == 0)
            return free;
        if (reason != EEXIST)
            return destinationError(reason, "move the result into place");
        free = numberedName(name, number, isFolder);
    }
    return Error{ErrorCode::WriteFailed, "no free name for the result", EEXIST};
}

std::string Workspace::resultPath(const std::string& name) const
{
    return (m_resultPath == "/" ? std::string() : m_resultPath) + "/" + name;
}

Result<std::string> Workspace::moveItem(const std::string& name, bool isFolder, std::optional<timespec> date)
{
    if (date) {
        const timespec times[2] = {{0, UTIME_OMIT}, *date};
        (void)!::utimensat(m_root.get(), name.c_str(), times, AT_SYMLINK_NOFOLLOW);
    }
    return resultPath(TRY(moveOut(m_root.get(), name.c_str(), name, isFolder)));
}

Result<void> Workspace::moveItems(std::span<const RootItem> items)
{
    std::vector<std::string> moved;
    moved.reserve(items.size());
    for (const auto& item : items) {
        const auto name = moveOut(m_root.get(), item.name.c_str(), item.name, item.isFolder);
        if (!name) {
            for (std::size_t i = 0; i < moved.size(); ++i)
                (void)renameNoReplace(target(), moved[i].c_str(), m_root.get(), items[i].name.c_str());
            return name.error();
        }
        moved.push_back(*name);
    }
    return {};
}

Result<std::string> Workspace::moveRoot(const std::string& name, std::optional<timespec> date)
{
    if (date) {
        const timespec times[2] = {{0, UTIME_OMIT}, *date};
        (void)!::futimens(m_root.get(), times);
    }
    return resultPath(TRY(moveOut(m_hidden.fd(), kRootName, name, true)));
}

}
