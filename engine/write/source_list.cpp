#include "engine/write/source_list.h"

#include "engine/write/source_walk.h"

#include <algorithm>
#include <cerrno>
#include <ctime>

#include <fcntl.h>
#include <unistd.h>

namespace vantoro {

namespace {

/// A folder without anything on disk.
SourceItem bareFolder(const std::string& name)
{
    SourceItem item;
    item.name = name;
    item.kind = EntryKind::Folder;
    item.mode = S_IFDIR | 0755;
    item.userId = ::getuid();
    item.groupId = ::getgid();
    item.modified = {std::time(nullptr), 0, true, false};
    return item;
}

void makeReproducible(SourceList& list)
{
    constexpr std::int64_t kFixedTime = 315532800; // 1980-01-01, the first that zip can say
    std::stable_sort(list.items.begin(), list.items.end(),
                     [](const SourceItem& a, const SourceItem& b) { return a.name < b.name; });
    for (auto& item : list.items) {
        item.modified = {kFixedTime, 0, true, false};
        item.accessed = {};
        item.userId = item.groupId = 0;
        const bool isExecutable = (item.mode & 0111) != 0;
        if (item.kind != EntryKind::SymbolicLink)
            item.mode = (item.mode & S_IFMT) | (isExecutable ? 0755U : 0644U);
    }
}

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
    SourceList list;
    SourceWalk walk(options, target);
    for (const auto& input : inputs) {
        if (input.path.empty()) {
            list.items.push_back(bareFolder(input.name));
            continue;
        }
        auto path = input.path;
        while (path.size() > 1 && path.ends_with('/'))
            path.pop_back();
        TRY(walk.append(path, nameOf(input), input.withContents, list));
    }
    if (options.reproducible)
        makeReproducible(list);
    return list;
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
