#include "engine/extract/filesystem.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace vantoro {

void UniqueFd::reset()
{
    if (m_fd >= 0)
        ::close(std::exchange(m_fd, -1));
}

Result<void> UniqueFd::close()
{
    if (m_fd >= 0 && ::close(std::exchange(m_fd, -1)) != 0 && errno != EINTR)
        return destinationError(errno, "close");
    return {};
}

Error destinationError(int reason, const char* what)
{
    switch (reason) {
    case ENOSPC:
    case EDQUOT:
        return Error{ErrorCode::NoSpace, what, reason};
    case EACCES:
    case EPERM:
    case EROFS:
        return Error{ErrorCode::NotWritable, what, reason};
    case ENOENT:
    case ESTALE:
    case ENODEV:
        return Error{ErrorCode::DestinationGone, what, reason};
    case ENOMEM:
        return Error{ErrorCode::OutOfMemory, what, reason};
    default:
        return Error{ErrorCode::WriteFailed, what, reason};
    }
}

namespace {

/// The kernel's own refusal to leave the parent or to pass a link; ENOSYS where it is not to be had.
int openBeneath(int parent, const char* name, int flags)
{
    static std::atomic<bool> isMissing{false};
    if (!isMissing.load(std::memory_order_relaxed)) {
        open_how how{};
        how.flags = static_cast<std::uint64_t>(static_cast<unsigned>(flags));
        how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS;
        const auto fd = ::syscall(SYS_openat2, parent, name, &how, sizeof how);
        if (fd >= 0 || (errno != ENOSYS && errno != EPERM))
            return static_cast<int>(fd);
        isMissing.store(errno == ENOSYS, std::memory_order_relaxed);
    }
    return ::openat(parent, name, flags);
}

Result<UniqueFd> openComponent(int parent, const char* name, int flags)
{
    assert(std::strchr(name, '/') == nullptr && std::strcmp(name, "..") != 0);
    const int fd = openBeneath(parent, name, flags | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0)
        return destinationError(errno, "open a folder");
    return UniqueFd(fd);
}

bool isFolder(int parent, const char* name)
{
    struct stat status {};
    return ::fstatat(parent, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

int renameOverPlaceholder(int fromFolder, const char* from, int toFolder, const char* to)
{
    const bool folder = isFolder(fromFolder, from);
    if (folder) {
        if (::mkdirat(toFolder, to, 0700) != 0)
            return errno;
    } else {
        UniqueFd placeholder(::openat(toFolder, to, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
        if (!placeholder)
            return errno;
    }
    if (::renameat(fromFolder, from, toFolder, to) == 0)
        return 0;
    const int reason = errno;
    ::unlinkat(toFolder, to, folder ? AT_REMOVEDIR : 0);
    return reason;
}

}

Result<UniqueFd> openFolder(int parent, const char* name) { return openComponent(parent, name, O_PATH); }

Result<UniqueFd> openFolderForReading(int parent, const char* name) { return openComponent(parent, name, O_RDONLY); }

Result<UniqueFd> openDestination(const char* path)
{
    const int fd = ::open(path, O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return Error{ErrorCode::NotWritable, "open the destination", errno};
    return UniqueFd(fd);
}

int renameNoReplace(int fromFolder, const char* from, int toFolder, const char* to)
{
    // By number: the C library's wrapper is not everywhere.
    if (::syscall(SYS_renameat2, fromFolder, from, toFolder, to, 1U /* RENAME_NOREPLACE */) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    return renameOverPlaceholder(fromFolder, from, toFolder, to);
}

Result<void> flushFileSystem(int fd)
{
    if (::syncfs(fd) != 0)
        return destinationError(errno, "syncfs");
    return {};
}

namespace {

constexpr unsigned kHeldFolders = 64; ///< descriptors that a removal may hold at once

/// Removes the content of an open folder. What lies deeper than the descriptors reach is first moved up to the top.
class TreeRemover {
public:
    explicit TreeRemover(int top) : m_top(top) {}
    bool run()
    {
        bool isEmpty = empty(m_top, 1);
        while (!m_later.empty()) {
            const auto name = std::move(m_later.back());
            m_later.pop_back();
            isEmpty = removeFolder(m_top, name, 1) && isEmpty;
        }
        return isEmpty;
    }

private:
    bool empty(int folder, unsigned depth)
    {
        std::vector<std::string> folders;
        bool isEmpty = unlinkFiles(folder, folders);
        for (const auto& name : folders)
            isEmpty = removeFolder(folder, name, depth) && isEmpty;
        return isEmpty;
    }

    static bool unlinkFiles(int folder, std::vector<std::string>& folders)
    {
        UniqueFd copy(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        DIR* listing = copy ? ::fdopendir(copy.get()) : nullptr;
        if (!listing)
            return false;
        copy.release(); // the listing owns it now
        bool done = true;
        errno = 0;
        while (const dirent* entry = ::readdir(listing)) {
            const std::string_view name = entry->d_name;
            if (name == "." || name == "..")
                continue;
            if (entry->d_type == DT_DIR || (entry->d_type == DT_UNKNOWN && isFolder(folder, entry->d_name)))
                folders.emplace_back(name);
            else if (::unlinkat(folder, entry->d_name, 0) != 0 && errno != ENOENT)
                done = false;
        }
        ::closedir(listing);
        return done;
    }

    bool removeFolder(int parent, const std::string& name, unsigned depth)
    {
        if (::unlinkat(parent, name.c_str(), AT_REMOVEDIR) == 0 || errno == ENOENT)
            return true;
        auto folder = openFolderForReading(parent, name.c_str());
        if (!folder && folder.error().osError == EACCES
            && ::fchmodat(parent, name.c_str(), 0700, 0) == 0) // a real folder: the listing said so
            folder = openFolderForReading(parent, name.c_str());
        if (!folder)
            return false;
        if (depth < kHeldFolders) {
            return empty(folder->get(), depth + 1)
                && (::unlinkat(parent, name.c_str(), AT_REMOVEDIR) == 0 || errno == ENOENT);
        }
        return moveUpAndRemove(parent, name);
    }

    bool moveUpAndRemove(int parent, const std::string& name)
    {
        for (;; ++m_moved) {
            const auto above = ".removed" + std::to_string(m_moved);
            const int reason = renameNoReplace(parent, name.c_str(), m_top, above.c_str());
            if (reason == EEXIST)
                continue;
            if (reason != 0)
                return false;
            ++m_moved;
            m_later.push_back(above);
            return true;
        }
    }

    int m_top;
    unsigned m_moved = 0;
    std::vector<std::string> m_later;
};

bool removeTreeOnce(int parent, const char* name)
{
    if (::unlinkat(parent, name, 0) == 0 || errno == ENOENT)
        return true;
    if (::unlinkat(parent, name, AT_REMOVEDIR) == 0)
        return true;
    const auto folder = openFolderForReading(parent, name);
    if (!folder)
        return false;
    TreeRemover(folder->get()).run();
    return ::unlinkat(parent, name, AT_REMOVEDIR) == 0 || errno == ENOENT;
}

}

bool removeTree(int parent, const char* name)
{
    // A busy network file system may fail one call and take the next.
    for (int attempt = 0; attempt < 3; ++attempt) {
        if (removeTreeOnce(parent, name))
            return true;
    }
    return false;
}

}
