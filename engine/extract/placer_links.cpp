#include "engine/extract/placer.h"
#include "engine/extract/safe_name.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantoro {

namespace {

constexpr unsigned kMostNumbers = 1'000'000;

/// What a file system says that knows no links of this kind, or allows no more to this file.
bool cannotLink(int reason)
{
    return reason == EPERM || reason == EXDEV || reason == EMLINK || reason == EOPNOTSUPP || reason == ENOSYS;
}

std::vector<std::string_view> splitPath(std::string_view path)
{
    std::vector<std::string_view> parts;
    for (std::size_t at = 0; at < path.size();) {
        const auto end = std::min(path.find('/', at), path.size());
        parts.push_back(path.substr(at, end - at));
        at = end + 1;
    }
    return parts;
}

Result<void> copyContent(int from, int to)
{
    std::array<char, 65536> block;
    while (true) {
        const auto got = ::read(from, block.data(), block.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return destinationError(errno, "read a file of the job");
        if (got == 0)
            return {};
        for (ssize_t done = 0; done < got;) {
            const auto put = ::write(to, block.data() + done, static_cast<std::size_t>(got - done));
            if (put < 0 && errno != EINTR)
                return destinationError(errno, "write");
            done += put > 0 ? put : 0;
        }
    }
}

}

Result<std::string> renameToDamaged(int folder, const std::string& name)
{
    constexpr std::string_view kSuffix = ".damaged";
    const auto base = shortenedName(name, kMostNameBytes - kSuffix.size()).append(kSuffix);
    auto target = base;
    for (unsigned number = 1; number < kMostNumbers; ++number) {
        const int reason = renameNoReplace(folder, name.c_str(), folder, target.c_str());
        if (reason == 0)
            return target;
        if (reason != EEXIST)
            return destinationError(reason, "keep a damaged file");
        target = numberedName(base, number, false);
    }
    return Error{ErrorCode::WriteFailed, "no free name", EEXIST};
}

Result<void> Placer::makeHardLinks(const Refuse& refuse)
{
    for (auto& link : m_hardLinks) {
        if (link.target == kNoNode) {
            const auto parts = splitPath(link.targetName);
            link.target = parts.empty() ? kNoNode : findFile(parts);
        }
        const bool isFile = link.target != kNoNode && link.target != link.node
            && m_tree.kind(link.target) == NodeKind::File && m_tree.isPlaced(link.target)
            && !m_broken.contains(link.target);
        if (!isFile)
            TRY(refuse(link.node, Error{ErrorCode::UnsafeLink, "hard link to nothing that was extracted"}));
        else
            TRY(makeHardLink(link));
    }
    return {};
}

Result<void> Placer::makeHardLink(const HardLink& link)
{
    const auto fromFolder = TRY(m_folders.open(m_tree.parent(link.target)));
    const auto toFolder = TRY(m_folders.open(m_tree.parent(link.node)));
    const std::string from(m_tree.diskName(link.target));
    for (unsigned attempt = 0; attempt < kMostNumbers; ++attempt) {
        if (::linkat(fromFolder->get(), from.c_str(), toFolder->get(), std::string(m_tree.diskName(link.node)).c_str(),
                     0)
            == 0) {
            setPlaced(link.node, true);
            return {};
        }
        if (errno == EEXIST)
            m_tree.setDiskName(link.node, nextName(link.node, false));
        else if (cannotLink(errno))
            return copyFile(*fromFolder, from, link.node);
        else
            return destinationError(errno, "make a hard link");
    }
    return Error{ErrorCode::WriteFailed, "no free name for a hard link", EEXIST};
}

Result<void> Placer::copyFile(const UniqueFd& fromFolder, const std::string& from, NodeId node)
{
    const UniqueFd source(::openat(fromFolder.get(), from.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!source || ::fstat(source.get(), &status) != 0)
        return destinationError(errno, "open a file of the job");
    if (!S_ISREG(status.st_mode))
        return Error{ErrorCode::WriteFailed, "a file of the job was exchanged", EEXIST};
    const auto folder = TRY(m_folders.open(m_tree.parent(node)));
    for (unsigned attempt = 0; attempt < kMostNumbers; ++attempt) {
        UniqueFd copy(::openat(folder->get(), std::string(m_tree.diskName(node)).c_str(),
                               O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, status.st_mode & 0777U));
        if (!copy && errno == EEXIST) {
            m_tree.setDiskName(node, nextName(node, false));
            continue;
        }
        if (!copy)
            return destinationError(errno, "create a file");
        TRY(copyContent(source.get(), copy.get()));
        const timespec times[2] = {status.st_atim, status.st_mtim};
        (void)!::futimens(copy.get(), times);
        TRY(copy.close());
        setPlaced(node, true);
        return {};
    }
    return Error{ErrorCode::WriteFailed, "no free name for a copy", EEXIST};
}

Result<void> Placer::makeLinks(const Refuse& refuse)
{
    for (std::size_t i = 0; i < m_links.size(); ++i) {
        const auto node = m_links.node(i);
        const auto verdict = m_tree.entry(node) < m_firstDoubtful
            ? m_links.judge(i)
            : Result<void>(Error{ErrorCode::ChecksumMismatch, "the stream's checksum does not hold"});
        if (!verdict) {
            TRY(refuse(node, verdict.error()));
            continue;
        }
        const auto made = makeLink(node, m_links.target(i));
        if (made)
            continue;
        // A file system without links is no reason to lose the rest.
        if (!cannotLink(made.error().osError))
            return made.error();
        TRY(refuse(node, Error{ErrorCode::WriteFailed, "symlink", made.error().osError}));
    }
    return {};
}

Result<void> Placer::makeLink(NodeId node, const std::string& target)
{
    const auto folder = TRY(m_folders.open(m_tree.parent(node)));
    for (unsigned attempt = 0; attempt < kMostNumbers; ++attempt) {
        if (::symlinkat(target.c_str(), folder->get(), std::string(m_tree.diskName(node)).c_str()) == 0) {
            setPlaced(node, true);
            return {};
        }
        if (errno != EEXIST)
            return destinationError(errno, "make a link");
        m_tree.setDiskName(node, nextName(node, false));
    }
    return Error{ErrorCode::WriteFailed, "no free name for a link", EEXIST};
}

}
