#include "engine/extract/placer.h"

#include "engine/extract/safe_name.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantoro {

namespace {

constexpr unsigned kMostNumbers = 1'000'000;
constexpr mode_t kFolderMode = 0777;

std::uint32_t shortEntry(std::uint64_t entry)
{
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(entry, EntryTree::kNoEntry));
}

}

NodeId Placer::addNode(NodeId parent, std::string_view name, NodeKind kind, std::uint64_t entry)
{
    if (kind != NodeKind::File) { // may hide a folder of that name
        m_latestFolders.clear();
        m_latestFolder = kRootNode;
    }
    const auto node = m_tree.add(parent, name, kind, shortEntry(entry));
    if (name.size() > kMostNameBytes) {
        m_tree.setDiskName(node, shortenedName(name));
        ++m_shortenedNames;
    }
    if (m_tree.isRepeated(node))
        m_tree.setDiskName(node, nextName(node, kind == NodeKind::Folder));
    return node;
}

std::string Placer::nextName(NodeId node, bool isFolder)
{
    const auto parent = m_tree.parent(node);
    const auto name = m_tree.name(node);
    // Names of the job that are not made yet, links above all, are as taken as those on disk.
    std::string next;
    do {
        next = numberedName(name, m_tree.nextNumber(parent, name), isFolder);
    } while (m_tree.find(parent, next) != kNoNode || m_tree.findOnDisk(parent, next) != kNoNode);
    return next;
}

std::string Placer::takeNextName(NodeId node, bool isFolder)
{
    const std::lock_guard lock(m_mutex);
    auto next = nextName(node, isFolder);
    m_tree.setDiskName(node, next);
    return next;
}

std::string Placer::shortenName(NodeId node, std::size_t most)
{
    const std::lock_guard lock(m_mutex);
    auto name = shortenedName(m_tree.diskName(node), most);
    m_tree.setDiskName(node, name);
    ++m_shortenedNames;
    return name;
}

void Placer::setPlaced(NodeId node, bool placed)
{
    const std::lock_guard lock(m_mutex);
    if (m_tree.isPlaced(node) == placed)
        return;
    m_tree.setPlaced(node, placed);
    if (m_tree.kind(node) != NodeKind::Folder)
        placed ? ++m_placedItems : --m_placedItems;
}

void Placer::setPlaced(std::span<const NodeId> nodes)
{
    for (const auto node : nodes)
        setPlaced(node, true);
}

void Placer::setKeptBroken(NodeId node, const std::string& diskName)
{
    {
        const std::lock_guard lock(m_mutex);
        m_tree.setDiskName(node, diskName);
        m_broken.insert(node);
    }
    setPlaced(node, true);
}

Result<void> Placer::makeFolder(NodeId node, mode_t mode)
{
    const auto parent = TRY(m_folders.open(m_tree.parent(node)));
    for (unsigned attempt = 0; attempt < kMostNumbers; ++attempt) {
        if (::mkdirat(parent->get(), std::string(m_tree.diskName(node)).c_str(), mode | 0700) == 0) {
            m_tree.setPlaced(node, true);
            return {};
        }
        if (errno == EEXIST)
            m_tree.setDiskName(node, nextName(node, true));
        else if (errno == ENAMETOOLONG && m_tree.diskName(node).size() > 140)
            m_tree.setDiskName(node, shortenedName(m_tree.diskName(node), 140));
        else
            return destinationError(errno, "make a folder");
    }
    return Error{ErrorCode::WriteFailed, "no free name for a folder", EEXIST};
}

Result<NodeId> Placer::folderAt(NodeId parent, std::string_view name, std::uint32_t entry, mode_t mode)
{
    const auto latest = m_tree.find(parent, name);
    if (latest != kNoNode && m_tree.kind(latest) == NodeKind::Link)
        return Error{ErrorCode::UnsafeLink, "beneath a link"};
    if (const auto folder = m_tree.findFolder(parent, name); folder != kNoNode)
        return folder;
    const auto node = addNode(parent, name, NodeKind::Folder, entry);
    TRY(makeFolder(node, mode));
    return node;
}

bool Placer::isInLatestFolder(Components folders) const
{
    return std::equal(folders.rbegin(), folders.rend(), m_latestFolders.rbegin(), m_latestFolders.rend());
}

Result<NodeId> Placer::parentOf(Components name)
{
    const auto folders = name.first(name.size() - 1);
    if (isInLatestFolder(folders))
        return m_latestFolder;
    NodeId at = kRootNode;
    for (const auto component : folders)
        at = TRY(folderAt(at, component, EntryTree::kNoEntry, kFolderMode));
    m_latestFolders.assign(folders.begin(), folders.end());
    m_latestFolder = at;
    return at;
}

Result<void> Placer::addFolder(Components name, std::uint64_t entry, const FileTraits& traits)
{
    const std::lock_guard lock(m_mutex);
    const auto parent = TRY(parentOf(name));
    const auto mode = traits.hasMode ? traits.mode : kFolderMode;
    // A link of this name came before: the folder is the later one and takes the next name.
    const auto latest = m_tree.find(parent, name.back());
    const bool behindLink = latest != kNoNode && m_tree.kind(latest) == NodeKind::Link;
    const auto known = m_tree.size();
    NodeId node = kNoNode;
    if (behindLink) {
        node = addNode(parent, name.back(), NodeKind::Folder, entry);
        TRY(makeFolder(node, mode));
    } else {
        node = TRY(folderAt(parent, name.back(), shortEntry(entry), mode));
    }
    auto later = traits;
    later.hasMode = traits.hasMode && node < known; // a new one has its mode already
    if (later.hasMode || later.modified)
        m_folderTraits.push_back({node, later});
    return {};
}

Result<void> Placer::addFile(Components name, std::uint64_t entry, FilePlan& plan)
{
    const std::lock_guard lock(m_mutex);
    const auto parent = TRY(parentOf(name));
    plan.folder = TRY(m_folders.open(parent));
    plan.node = addNode(parent, name.back(), NodeKind::File, entry);
    plan.name = m_tree.diskName(plan.node);
    return {};
}

Result<NodeId> Placer::addLinkPlace(Components name, std::uint64_t entry)
{
    const std::lock_guard lock(m_mutex);
    const auto parent = TRY(parentOf(name));
    return addNode(parent, name.back(), NodeKind::Link, entry);
}

void Placer::setTarget(NodeId link, std::string target)
{
    const std::lock_guard lock(m_mutex);
    m_links.add(link, std::move(target));
}

Result<void> Placer::addLink(Components name, std::uint64_t entry, std::string target)
{
    setTarget(TRY(addLinkPlace(name, entry)), std::move(target));
    return {};
}

NodeId Placer::findFile(Components name) const
{
    NodeId at = kRootNode;
    for (const auto component : name.first(name.size() - 1)) {
        at = m_tree.findFolder(at, component);
        if (at == kNoNode)
            return kNoNode;
    }
    return m_tree.find(at, name.back());
}

Result<void> Placer::addHardLink(Components name, std::uint64_t entry, Components target)
{
    const std::lock_guard lock(m_mutex);
    const auto found = findFile(target);
    const auto parent = TRY(parentOf(name));
    const auto node = addNode(parent, name.back(), NodeKind::File, entry);
    m_hardLinks.push_back({node, found, found == kNoNode ? joinedName(target) : std::string()});
    return {};
}

std::vector<NodeId> Placer::topItems() const
{
    std::vector<NodeId> items;
    for (NodeId node = 1; node < m_tree.size(); ++node) {
        if (m_tree.parent(node) == kRootNode && m_tree.isPlaced(node))
            items.push_back(node);
    }
    return items;
}

Result<void> Placer::takeBack(NodeId node, bool keepBroken)
{
    const auto folder = TRY(m_folders.open(m_tree.parent(node)));
    const std::string name(m_tree.diskName(node));
    setPlaced(node, false);
    if (keepBroken) {
        setKeptBroken(node, TRY(renameToDamaged(folder->get(), name)));
        return {};
    }
    if (::unlinkat(folder->get(), name.c_str(), 0) != 0 && errno != ENOENT
        && ::unlinkat(folder->get(), name.c_str(), 0) != 0) // an interrupted call is worth a second try
        return destinationError(errno, "remove a damaged file");
    return {};
}

Result<void> Placer::condemn(std::uint64_t firstEntry, bool keepBroken, const Refuse& refuse)
{
    m_firstDoubtful = firstEntry;
    for (NodeId node = 1; node < m_tree.size(); ++node) {
        if (m_tree.entry(node) == EntryTree::kNoEntry || m_tree.entry(node) < firstEntry
            || m_tree.kind(node) != NodeKind::File || !m_tree.isPlaced(node))
            continue;
        TRY(takeBack(node, keepBroken));
        TRY(refuse(node, Error{ErrorCode::ChecksumMismatch, "the stream's checksum does not hold"}));
    }
    return {};
}

Result<void> Placer::finishFolder(const FolderTraits& folder, mode_t umask)
{
    const auto parent = TRY(m_folders.open(m_tree.parent(folder.node)));
    const std::string name(m_tree.diskName(folder.node));
    if (folder.traits.hasMode) {
        const auto opened = TRY(openFolderForReading(parent->get(), name.c_str()));
        (void)!::fchmod(opened.get(), (folder.traits.mode | 0700U) & (0777U & ~umask)); // not every disk has modes
    }
    if (folder.traits.modified) {
        const timespec accessed = folder.traits.accessed.value_or(timespec{0, UTIME_OMIT});
        const timespec times[2] = {accessed, *folder.traits.modified};
        (void)!::utimensat(parent->get(), name.c_str(), times, AT_SYMLINK_NOFOLLOW);
    }
    return {};
}

Result<void> Placer::finishFolders(mode_t umask)
{
    std::stable_sort(m_folderTraits.begin(), m_folderTraits.end(),
                     [](const auto& a, const auto& b) { return a.node > b.node; });
    for (const auto& folder : m_folderTraits)
        TRY(finishFolder(folder, umask));
    return {};
}

}
