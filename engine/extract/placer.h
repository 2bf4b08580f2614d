#pragma once

#include "engine/extract/entry_tree.h"
#include "engine/extract/file_time.h"
#include "engine/extract/folder_cache.h"
#include "engine/extract/link_tree.h"
#include "engine/extract/report.h"

#include <functional>
#include <mutex>
#include <span>
#include <unordered_set>

namespace vantoro {

using Components = std::span<const std::string_view>;

/// Mode and dates of an entry as they are put on disk.
struct FileTraits {
    mode_t mode = 0;
    bool hasMode = false;
    std::optional<timespec> modified, accessed;
};

/// A file that may be created now: where, and as what.
struct FilePlan {
    NodeId node = kNoNode;
    FolderPtr folder;
    std::string name; ///< in `folder`
    FileTraits traits;
    std::optional<std::uint64_t> size; ///< as declared
    struct Attribute {
        std::string name;
        std::string value;
    };
    std::vector<Attribute> attributes;
    EntryNote note;
    bool isEncrypted = false;
};

/// Knows where each entry goes and creates the folders and links; nothing else makes names. Folders are made as soon as
/// something needs them, links at the very end, so that nothing can ever be written through one. Thread-safe while
/// entries come in; the last steps belong to one thread.
class Placer {
public:
    using Refuse = std::function<Result<void>(NodeId, const Error&)>;

    explicit Placer(UniqueFd root) : m_folders(m_tree, std::move(root)), m_links(m_tree) {}

    Result<void> addFolder(Components name, std::uint64_t entry, const FileTraits& traits);
    /// Sets node, folder and name of the plan.
    Result<void> addFile(Components name, std::uint64_t entry, FilePlan& plan);
    Result<void> addLink(Components name, std::uint64_t entry, std::string target);
    /// Keeps the place of a link whose target comes as data; setTarget() follows, or it is never made.
    Result<NodeId> addLinkPlace(Components name, std::uint64_t entry);
    void setTarget(NodeId link, std::string target);
    Result<void> addHardLink(Components name, std::uint64_t entry, Components target);

    /// The name is taken on disk: the next one.
    std::string takeNextName(NodeId node, bool isFolder = false);
    /// The file system takes only shorter names.
    std::string shortenName(NodeId node, std::size_t most);
    /// The file stands on disk, whole; or not any more.
    void setPlaced(NodeId node, bool placed);
    void setPlaced(std::span<const NodeId> nodes);
    /// It stands on disk as `diskName` although it is not whole.
    void setKeptBroken(NodeId node, const std::string& diskName);

    /// Takes back the files from this entry on, whose content nobody can vouch for, and makes no links of them.
    Result<void> condemn(std::uint64_t firstEntry, bool keepBroken, const Refuse& refuse);
    /// UnsafeLink goes to `refuse`; what the disk refuses for good ends everything.
    Result<void> makeHardLinks(const Refuse& refuse);
    Result<void> makeLinks(const Refuse& refuse);
    /// Modes and dates of folders, deepest first.
    Result<void> finishFolders(mode_t umask);

    /// What stands directly in the root.
    std::vector<NodeId> topItems() const;
    std::uint64_t placedItems() const { return m_placedItems; } ///< files and links
    std::uint64_t shortenedNames() const { return m_shortenedNames; }
    std::string pathOf(NodeId node) const { return m_tree.path(node); }
    std::string diskNameOf(NodeId node) const { return std::string(m_tree.diskName(node)); }
    NodeKind kindOf(NodeId node) const { return m_tree.kind(node); }
    std::uint64_t entryOf(NodeId node) const { return m_tree.entry(node); }
    LinkTree& links() { return m_links; }

private:
    struct FolderTraits {
        NodeId node;
        FileTraits traits;
    };
    struct HardLink {
        NodeId node;
        NodeId target; ///< kNoNode: not found when the link came
        std::string targetName;
    };

    Result<NodeId> parentOf(Components name);
    bool isInLatestFolder(Components folders) const;
    Result<NodeId> folderAt(NodeId parent, std::string_view name, std::uint32_t entry, mode_t mode);
    NodeId addNode(NodeId parent, std::string_view name, NodeKind kind, std::uint64_t entry);
    NodeId findFile(Components name) const;
    std::string nextName(NodeId node, bool isFolder);
    Result<void> makeFolder(NodeId node, mode_t mode);
    Result<void> makeLink(NodeId node, const std::string& target);
    Result<void> makeHardLink(const HardLink& link);
    Result<void> copyFile(const UniqueFd& fromFolder, const std::string& from, NodeId node);
    Result<void> finishFolder(const FolderTraits& folder, mode_t umask);
    Result<void> takeBack(NodeId node, bool keepBroken);

    std::mutex m_mutex;
    EntryTree m_tree;
    FolderCache m_folders;
    LinkTree m_links;
    /// Of the file that came last; the next is mostly beside it.
    std::vector<std::string> m_latestFolders;
    NodeId m_latestFolder = kRootNode;
    std::vector<FolderTraits> m_folderTraits;
    std::vector<HardLink> m_hardLinks;
    std::unordered_set<NodeId> m_broken; ///< kept all the same
    std::uint64_t m_firstDoubtful = ~std::uint64_t{0};
    std::uint64_t m_placedItems = 0;
    std::uint64_t m_shortenedNames = 0;
};

/// "name.damaged", or the next free one like it, for a file that is kept although it is not whole. Returns the name.
Result<std::string> renameToDamaged(int folder, const std::string& name);

}
