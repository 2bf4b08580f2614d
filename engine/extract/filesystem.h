#pragma once

#include "engine/io/result.h"

#include <utility>

#include <sys/types.h>

namespace vantoro {

/// Owns a descriptor.
class UniqueFd {
public:
    UniqueFd() = default;
    explicit UniqueFd(int fd) : m_fd(fd) {}
    UniqueFd(UniqueFd&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
    ~UniqueFd() { reset(); }

    int get() const { return m_fd; }
    explicit operator bool() const { return m_fd >= 0; }
    void reset();
    int release() { return std::exchange(m_fd, -1); }
    /// Closes and tells what the close said: on some file systems only that reveals a full disk.
    Result<void> close();

private:
    int m_fd = -1;
};

/// The Error for a failed system call on the destination.
Error destinationError(int reason, const char* what);

/// A handle (O_PATH) of the folder `name` directly in `parent`; never through a link. `name` is one component.
Result<UniqueFd> openFolder(int parent, const char* name);
/// The same for reading its entries and setting its mode and dates.
Result<UniqueFd> openFolderForReading(int parent, const char* name);
/// A handle of a folder that the user named: links on the way are the user's own.
Result<UniqueFd> openDestination(const char* path);

/// Renames without ever replacing anything; 0 or errno (EEXIST when the name is taken). Where the file system cannot do
/// it in one step, a placeholder of our own is made first and replaced.
int renameNoReplace(int fromFolder, const char* from, int toFolder, const char* to);

/// Removes `name` in `parent` with everything in it, never through a link. False when something is left.
bool removeTree(int parent, const char* name);

/// Asks that everything of this file system reaches the disk.
Result<void> flushFileSystem(int fd);

}
