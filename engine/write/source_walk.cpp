#include "engine/write/source_walk.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <unistd.h>

namespace vantoro {

namespace {

constexpr unsigned kDeepest = 512;
constexpr unsigned kMostThreads = 4;

std::string joined(const std::string& folder, const std::string& name)
{
    if (folder.empty())
        return name; // below what has no name of its own
    std::string path;
    path.reserve(folder.size() + 1 + name.size());
    path.append(folder).append("/").append(name);
    return path;
}

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

Timestamp stamp(const timespec& time) { return {time.tv_sec, static_cast<std::uint32_t>(time.tv_nsec), true, false}; }

std::vector<std::string> sortedNames(DIR* folder)
{
    std::vector<std::string> names;
    while (const auto* entry = ::readdir(folder)) {
        const std::string_view found(entry->d_name);
        if (found != "." && found != "..")
            names.emplace_back(found);
    }
    std::sort(names.begin(), names.end());
    return names;
}

}

/// What stands in one folder. Written by one thread at a time.
struct SourceWalk::Folder {
    struct Inner {
        std::size_t position; // in items; what it holds comes before the item there
        std::unique_ptr<Folder> folder;
    };
    std::string path, name;
    unsigned depth = 0;
    std::vector<SourceItem> items;
    std::vector<Inner> inner;
    std::vector<CreateProblem> problems;
    Result<void> outcome;
};

SourceWalk::SourceWalk(const CreateOptions& options, const std::string& target)
    : m_options(options)
    , m_hasTarget(::stat(target.c_str(), &m_target) == 0)
    , m_pool(std::clamp(options.threads, 1U, kMostThreads))
{
}

Result<void> SourceWalk::append(const std::string& path, const std::string& name, bool withContents, SourceList& list)
{
    TRY(m_options.cancel.check());
    if (isExcluded(name))
        return {};
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) {
        list.problems.push_back({path, {ErrorCode::SourceUnreadable, "lstat", errno}});
        return {};
    }
    Folder above;
    addEntry(above, path, name, status, withContents);
    finish();
    // All at once when much comes, little by little when there are many inputs.
    if (const auto needed = list.items.size() + countOf(above); needed > list.items.capacity())
        list.items.reserve(std::max(needed, 2 * list.items.capacity()));
    return gather(above, list);
}

bool SourceWalk::isExcluded(const std::string& name) const
{
    if (m_options.exclude.empty())
        return false;
    const auto last = name.substr(name.rfind('/') + 1);
    return std::any_of(m_options.exclude.begin(), m_options.exclude.end(), [&](const std::string& pattern) {
        return ::fnmatch(pattern.c_str(), name.c_str(), 0) == 0 || ::fnmatch(pattern.c_str(), last.c_str(), 0) == 0;
    });
}

void SourceWalk::addEntry(Folder& folder, std::string path, std::string name, const struct stat& status,
                          bool withContents)
{
    if (m_hasTarget && status.st_dev == m_target.st_dev && status.st_ino == m_target.st_ino)
        return; // the archive never holds itself
    if (!S_ISDIR(status.st_mode) && !S_ISLNK(status.st_mode) && !S_ISREG(status.st_mode)) {
        folder.problems.push_back({path, {ErrorCode::UnsupportedKind, "neither file, folder nor link"}});
        return;
    }
    SourceItem item;
    item.path = std::move(path);
    item.name = std::move(name);
    item.mode = status.st_mode;
    item.userId = status.st_uid;
    item.groupId = status.st_gid;
    item.modified = stamp(status.st_mtim);
    item.accessed = stamp(status.st_atim);
    if (S_ISLNK(status.st_mode))
        return addLink(folder, std::move(item), static_cast<std::size_t>(status.st_size));
    if (S_ISREG(status.st_mode)) {
        item.size = static_cast<std::uint64_t>(status.st_size);
        folder.items.push_back(std::move(item));
        return;
    }
    item.kind = EntryKind::Folder;
    auto inner = std::make_unique<Folder>();
    inner->path = item.path;
    inner->name = item.name;
    inner->depth = folder.depth + 1;
    if (!item.name.empty())
        folder.items.push_back(std::move(item));
    if (!withContents || inner->depth > kDeepest)
        return;
    folder.inner.push_back({folder.items.size(), std::move(inner)});
    begin(*folder.inner.back().folder);
}

void SourceWalk::addLink(Folder& folder, SourceItem item, std::size_t expected) const
{
    item.kind = EntryKind::SymbolicLink;
    item.linkTarget.resize(std::max<std::size_t>(expected, 255) + 1);
    const auto length = ::readlink(item.path.c_str(), item.linkTarget.data(), item.linkTarget.size());
    if (length < 0) {
        folder.problems.push_back({item.path, {ErrorCode::SourceUnreadable, "readlink", errno}});
        return;
    }
    item.linkTarget.resize(static_cast<std::size_t>(length));
    item.size = item.linkTarget.size();
    folder.items.push_back(std::move(item));
}

void SourceWalk::begin(Folder& folder)
{
    {
        const std::lock_guard lock(m_mutex);
        ++m_unfinished;
    }
    m_pool.add([this, &folder] {
        folder.outcome = guarded([&] { return lookInto(folder); });
        const std::lock_guard lock(m_mutex);
        if (--m_unfinished == 0)
            m_finished.notify_all();
    });
}

void SourceWalk::finish()
{
    while (m_pool.threads() == 0 && m_pool.helpOut()) {}
    std::unique_lock lock(m_mutex);
    m_finished.wait(lock, [this] { return m_unfinished == 0; });
}

/// Each entry is looked at while the folder is open, so that the kernel need not walk down to it every time.
Result<void> SourceWalk::lookInto(Folder& folder)
{
    TRY(m_options.cancel.check());
    const std::unique_ptr<DIR, CloseFolder> open(::opendir(folder.path.c_str()));
    if (!open) {
        folder.problems.push_back({folder.path, {ErrorCode::SourceUnreadable, "opendir", errno}});
        return {};
    }
    for (const auto& child : sortedNames(open.get())) {
        TRY(m_options.cancel.check());
        auto name = joined(folder.name, child);
        if (isExcluded(name))
            continue;
        auto path = joined(folder.path, child);
        struct stat status {};
        if (::fstatat(::dirfd(open.get()), child.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0)
            addEntry(folder, std::move(path), std::move(name), status, true);
        else
            folder.problems.push_back({std::move(path), {ErrorCode::SourceUnreadable, "lstat", errno}});
    }
    return {};
}

std::size_t SourceWalk::countOf(const Folder& folder)
{
    auto count = folder.items.size();
    for (const auto& inner : folder.inner)
        count += countOf(*inner.folder);
    return count;
}

Result<void> SourceWalk::gather(Folder& folder, SourceList& list)
{
    TRY(folder.outcome);
    std::move(folder.problems.begin(), folder.problems.end(), std::back_inserter(list.problems));
    std::size_t next = 0;
    const auto takeUpTo = [&](std::size_t position) {
        for (; next < position; ++next) {
            auto& item = folder.items[next];
            if (item.kind == EntryKind::File)
                list.totalSize += item.size;
            list.items.push_back(std::move(item));
        }
    };
    for (auto& [position, inner] : folder.inner) {
        takeUpTo(position);
        TRY(gather(*inner, list));
        inner.reset();
    }
    takeUpTo(folder.items.size());
    return {};
}

}
