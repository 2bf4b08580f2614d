#include "engine/write/source_list.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <unistd.h>

namespace vantoro {

namespace {

constexpr unsigned kDeepest = 512;

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

class Collector {
public:
    Collector(const CreateOptions& options, const std::string& target) : m_options(options)
    {
        m_hasTarget = ::stat(target.c_str(), &m_target) == 0;
    }

    /// A folder without anything on disk.
    void addBareFolder(const std::string& name)
    {
        SourceItem item;
        item.name = name;
        item.kind = EntryKind::Folder;
        item.mode = S_IFDIR | 0755;
        item.userId = ::getuid();
        item.groupId = ::getgid();
        item.modified = {std::time(nullptr), 0, true, false};
        m_list.items.push_back(std::move(item));
    }

    Result<void> add(const std::string& path, const std::string& name, bool withContents)
    {
        if (isExcluded(name))
            return {};
        struct stat status {};
        if (::lstat(path.c_str(), &status) != 0)
            return note(path, {ErrorCode::SourceUnreadable, "lstat", errno});
        return add(path, name, status, 0, withContents);
    }

    SourceList take()
    {
        normalise();
        return std::move(m_list);
    }

private:
    Result<void> add(std::string path, std::string name, const struct stat& status, unsigned depth, bool withContents)
    {
        TRY(m_options.cancel.check());
        if (m_hasTarget && status.st_dev == m_target.st_dev && status.st_ino == m_target.st_ino)
            return {}; // the archive never holds itself
        if (!S_ISDIR(status.st_mode) && !S_ISLNK(status.st_mode) && !S_ISREG(status.st_mode))
            return note(path, {ErrorCode::UnsupportedKind, "neither file, folder nor link"});
        SourceItem item;
        item.path = std::move(path);
        item.name = std::move(name);
        item.mode = status.st_mode;
        item.userId = status.st_uid;
        item.groupId = status.st_gid;
        item.modified = stamp(status.st_mtim);
        item.accessed = stamp(status.st_atim);
        if (S_ISDIR(status.st_mode))
            return addFolder(std::move(item), depth, withContents);
        if (S_ISLNK(status.st_mode))
            return addLink(std::move(item), static_cast<std::size_t>(status.st_size));
        item.size = static_cast<std::uint64_t>(status.st_size);
        m_list.totalSize += item.size;
        m_list.items.push_back(std::move(item));
        return {};
    }

    bool isExcluded(const std::string& name) const
    {
        if (m_options.exclude.empty())
            return false;
        const auto last = name.substr(name.rfind('/') + 1);
        return std::any_of(m_options.exclude.begin(), m_options.exclude.end(), [&](const std::string& pattern) {
            return ::fnmatch(pattern.c_str(), name.c_str(), 0) == 0 || ::fnmatch(pattern.c_str(), last.c_str(), 0) == 0;
        });
    }

    Result<void> note(const std::string& path, Error error)
    {
        m_list.problems.push_back({path, error});
        return {};
    }

    Result<void> addFolder(SourceItem item, unsigned depth, bool withContents)
    {
        item.kind = EntryKind::Folder;
        const auto path = item.path;
        const auto name = item.name;
        if (!name.empty())
            m_list.items.push_back(std::move(item));
        if (!withContents || depth == kDeepest)
            return {};
        const auto children = TRY(lookInto(path, name));
        for (const auto& child : children)
            TRY(add(joined(path, child.name), joined(name, child.name), child.status, depth + 1, true));
        return {};
    }

    struct Child {
        std::string name;
        struct stat status;
    };

    /// What a folder holds, without what is excluded, by name. All of it is looked at while the folder is open, so that
    /// the kernel need not walk down to it for each.
    Result<std::vector<Child>> lookInto(const std::string& path, const std::string& name)
    {
        std::vector<Child> children;
        const std::unique_ptr<DIR, CloseFolder> folder(::opendir(path.c_str()));
        if (!folder) {
            TRY(note(path, {ErrorCode::SourceUnreadable, "opendir", errno}));
            return children;
        }
        while (const auto* entry = ::readdir(folder.get())) {
            const std::string_view found(entry->d_name);
            if (found != "." && found != "..")
                children.push_back({std::string(found), {}});
        }
        std::sort(children.begin(), children.end(), [](const Child& a, const Child& b) { return a.name < b.name; });
        std::erase_if(children, [&](Child& child) {
            if (isExcluded(joined(name, child.name)))
                return true;
            if (::fstatat(::dirfd(folder.get()), child.name.c_str(), &child.status, AT_SYMLINK_NOFOLLOW) == 0)
                return false;
            m_list.problems.push_back({joined(path, child.name), {ErrorCode::SourceUnreadable, "lstat", errno}});
            return true;
        });
        return children;
    }

    Result<void> addLink(SourceItem item, std::size_t expected)
    {
        item.kind = EntryKind::SymbolicLink;
        item.linkTarget.resize(std::max<std::size_t>(expected, 255) + 1);
        const auto length = ::readlink(item.path.c_str(), item.linkTarget.data(), item.linkTarget.size());
        if (length < 0)
            return note(item.path, {ErrorCode::SourceUnreadable, "readlink", errno});
        item.linkTarget.resize(static_cast<std::size_t>(length));
        item.size = item.linkTarget.size();
        m_list.items.push_back(std::move(item));
        return {};
    }

    void normalise()
    {
        constexpr std::int64_t kFixedTime = 315532800; // 1980-01-01, the first that zip can say
        if (!m_options.reproducible)
            return;
        std::stable_sort(m_list.items.begin(), m_list.items.end(),
                         [](const SourceItem& a, const SourceItem& b) { return a.name < b.name; });
        for (auto& item : m_list.items) {
            item.modified = {kFixedTime, 0, true, false};
            item.accessed = {};
            item.userId = item.groupId = 0;
            const bool isExecutable = (item.mode & 0111) != 0;
            if (item.kind != EntryKind::SymbolicLink)
                item.mode = (item.mode & S_IFMT) | (isExecutable ? 0755U : 0644U);
        }
    }

    const CreateOptions& m_options;
    struct stat m_target {};
    bool m_hasTarget = false;
    SourceList m_list;
};

std::string nameOf(const CreateInput& input)
{
    if (!input.name.empty())
        return input.name;
    auto path = input.path;
    while (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    const auto last = path.substr(path.rfind('/') + 1);
    // "." and ".." have no name of their own: what they hold comes without a folder around it.
    return last == "." || last == ".." || last == "/" ? std::string() : last;
}

}

Result<SourceList> collectSources(const std::vector<CreateInput>& inputs, const CreateOptions& options,
                                  const std::string& target)
{
    Collector collector(options, target);
    for (const auto& input : inputs) {
        if (input.path.empty()) {
            collector.addBareFolder(input.name);
            continue;
        }
        auto path = input.path;
        while (path.size() > 1 && path.ends_with('/'))
            path.pop_back();
        TRY(collector.add(path, nameOf(input), input.withContents));
    }
    return collector.take();
}

Result<int> openSourceFile(const SourceItem& item, struct stat* status)
{
    // Without O_NONBLOCK a file that became a pipe meanwhile would hold us for ever.
    const int fd = ::open(item.path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW);
    if (fd < 0)
        return Error{ErrorCode::SourceUnreadable, "open", errno};
    if (::fstat(fd, status) != 0 || !S_ISREG(status->st_mode)) {
        ::close(fd);
        return Error{ErrorCode::SourceUnreadable, "not the file that was found"};
    }
    return fd;
}

}
