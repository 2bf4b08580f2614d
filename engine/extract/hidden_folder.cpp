#include "engine/extract/hidden_folder.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <map>
#include <mutex>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantoro {

namespace {

constexpr std::string_view kPrefix = ".Vantoro";
/// Tells our folders from others that happen to have such a name; the last thing in them to go.
constexpr const char* kMark = ".job";
constexpr unsigned kMostNumbers = 100'000;

std::atomic<OrphanList*> orphanList{nullptr};

void remember(const std::string& path)
{
    if (auto* const list = orphanList.load())
        list->remember(path);
}
void forget(const std::string& path)
{
    if (auto* const list = orphanList.load())
        list->forget(path);
}

struct Split {
    std::string parent, name;
};
Split split(const std::string& path)
{
    const auto slash = path.rfind('/');
    if (slash == std::string::npos)
        return {".", path};
    return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1)};
}

bool isOurName(std::string_view name)
{
    return name.starts_with(kPrefix) && name.size() > kPrefix.size()
        && name.find_first_not_of("0123456789", kPrefix.size()) == std::string_view::npos;
}

bool isSameFolder(int parent, const std::string& name, int folder)
{
    struct stat there {};
    struct stat ours {};
    return ::fstatat(parent, name.c_str(), &there, AT_SYMLINK_NOFOLLOW) == 0 && ::fstat(folder, &ours) == 0
        && there.st_ino == ours.st_ino && there.st_dev == ours.st_dev;
}

std::vector<std::string> namesIn(int folder)
{
    std::vector<std::string> names;
    UniqueFd copy(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    DIR* const listing = copy ? ::fdopendir(copy.get()) : nullptr;
    if (!listing)
        return names;
    copy.release(); // the listing owns it now
    while (const dirent* entry = ::readdir(listing)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            names.emplace_back(name);
    }
    ::closedir(listing);
    return names;
}

/// The mark goes last, so that a removal that is itself killed can be taken up again.
bool removeOurs(int parent, const std::string& name, int folder)
{
    for (const auto& item : namesIn(folder)) {
        if (item != kMark)
            removeTree(folder, item.c_str());
    }
    if (::unlinkat(folder, kMark, AT_REMOVEDIR) != 0 && errno != ENOENT)
        ::unlinkat(folder, kMark, AT_REMOVEDIR);
    return removeTree(parent, name.c_str());
}

bool carriesOurMark(int folder)
{
    struct stat status {};
    if (::fstatat(folder, kMark, &status, AT_SYMLINK_NOFOLLOW) == 0)
        return S_ISDIR(status.st_mode);
    return namesIn(folder).empty(); // killed before the mark was set, or after it went
}

bool isOwn(int folder)
{
    struct stat status {};
    return ::fstat(folder, &status) == 0 && status.st_uid == ::geteuid();
}

enum class Sweep : std::uint8_t { Gone, Stays };

Sweep sweepOne(const std::string& path)
{
    const auto [parentPath, name] = split(path);
    if (!isOurName(name))
        return Sweep::Gone; // nothing that we ever made
    const UniqueFd parent(::open(parentPath.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!parent)
        return errno == ENOENT || errno == ENOTDIR ? Sweep::Gone : Sweep::Stays;
    const auto folder = openFolderForReading(parent.get(), name.c_str());
    if (!folder) {
        const int reason = folder.error().osError;
        return reason == ENOENT || reason == ENOTDIR || reason == ELOOP ? Sweep::Gone : Sweep::Stays;
    }
    if (!isOwn(folder->get()) || ::flock(folder->get(), LOCK_EX | LOCK_NB) != 0)
        return Sweep::Stays;
    if (!carriesOurMark(folder->get()))
        return Sweep::Gone; // somebody else's by now
    return removeOurs(parent.get(), name, folder->get()) ? Sweep::Gone : Sweep::Stays;
}

/// Folders that outlive their extraction, with the descriptor that holds the lock.
struct Standing {
    std::mutex mutex;
    std::map<std::string, UniqueFd> folders;
};
Standing& standing()
{
    static Standing* const instance = new Standing; // never destroyed: other threads may end later
    return *instance;
}

}

void setOrphanList(OrphanList* list) { orphanList = list; }

void settleOrphanList()
{
    if (auto* const list = orphanList.load())
        list->settle();
}

std::vector<std::string> sweepOrphans(const std::vector<std::string>& paths)
{
    std::vector<std::string> gone;
    for (const auto& path : paths) {
        if (sweepOne(path) == Sweep::Gone)
            gone.push_back(path);
    }
    return gone;
}

void removeHiddenFolder(const std::string& path)
{
    if (!isOurName(split(path).name))
        return;
    UniqueFd ours;
    {
        const std::lock_guard lock(standing().mutex);
        const auto found = standing().folders.find(path);
        if (found != standing().folders.end()) {
            ours = std::move(found->second);
            standing().folders.erase(found);
        }
    }
    const auto [parentPath, name] = split(path);
    const UniqueFd parent(::open(parentPath.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    bool gone = false;
    if (ours && parent && isSameFolder(parent.get(), name, ours.get()))
        gone = removeOurs(parent.get(), name, ours.get());
    else
        gone = sweepOne(path) == Sweep::Gone;
    if (gone)
        forget(path);
}

HiddenFolder::HiddenFolder(UniqueFd parent, std::string name, std::string path, UniqueFd folder)
    : m_parent(std::move(parent))
    , m_name(std::move(name))
    , m_path(std::move(path))
    , m_folder(std::move(folder))
{
}

Result<HiddenFolder> HiddenFolder::create(int destination, const std::string& destinationPath)
{
    for (unsigned number = 0; number < kMostNumbers; ++number) {
        const auto name = std::string(kPrefix) + std::to_string(number);
        struct stat status {};
        if (::fstatat(destination, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0)
            continue; // not even on the list for a moment: what is listed may be removed
        auto path = destinationPath;
        path.append("/").append(name);
        auto folder = tryCreate(destination, name, path);
        if (folder || folder.error().code != ErrorCode::AlreadyExists)
            return folder;
    }
    return Error{ErrorCode::WriteFailed, "no free number for the hidden folder", EEXIST};
}

Result<HiddenFolder> HiddenFolder::createAt(const std::string& path)
{
    const auto [parentPath, name] = split(path);
    if (!isOurName(name))
        return Error{ErrorCode::Internal, "not a name for a hidden folder"};
    const auto parent = TRY(openDestination(parentPath.c_str()));
    struct stat status {};
    if (::fstatat(parent.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0)
        return Error{ErrorCode::AlreadyExists, "hidden folder", EEXIST};
    return tryCreate(parent.get(), name, path);
}

Result<HiddenFolder> HiddenFolder::tryCreate(int parent, const std::string& name, const std::string& path)
{
    UniqueFd parentCopy(::fcntl(parent, F_DUPFD_CLOEXEC, 3));
    if (!parentCopy)
        return destinationError(errno, "dup");
    remember(path);
    if (::mkdirat(parent, name.c_str(), 0700) != 0) {
        const int reason = errno;
        // Stays on the list: it is the neighbour's path now, and what is not ours is never swept.
        if (reason == EEXIST)
            return Error{ErrorCode::AlreadyExists, "hidden folder", EEXIST};
        forget(path);
        return destinationError(reason, "make the hidden folder");
    }
    auto opened = openFolderForReading(parent, name.c_str());
    if (!opened) {
        if (::unlinkat(parent, name.c_str(), AT_REMOVEDIR) == 0 || errno == ENOENT)
            forget(path);
        return opened.error();
    }
    // A sweeper of another process may have seen it before the lock: then it is his to remove.
    if (::flock(opened->get(), LOCK_EX | LOCK_NB) != 0 || !isSameFolder(parent, name, opened->get()))
        return Error{ErrorCode::AlreadyExists, "hidden folder swept", EEXIST};
    HiddenFolder folder(std::move(parentCopy), name, path, std::move(*opened));
    if (::mkdirat(folder.fd(), kMark, 0700) != 0)
        return destinationError(errno, "mark the hidden folder");
    return folder;
}

void HiddenFolder::remove()
{
    if (!m_folder)
        return;
    if (removeOurs(m_parent.get(), m_name, m_folder.get()))
        forget(m_path);
    m_folder.reset();
}

void HiddenFolder::leaveStanding()
{
    const std::lock_guard lock(standing().mutex);
    standing().folders.insert_or_assign(m_path, std::move(m_folder));
}

}
