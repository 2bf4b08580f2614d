#include "browse/ArchiveTree.h"
#include "browse/KXUnarchiveWrapper.h"
#include "browse/NameOrder.h"

#include <QHashFunctions>

#include <algorithm>
#include <deque>
#include <numeric>
#include <span>
#include <unordered_map>

namespace vantoro {
namespace {

constexpr std::string_view kHidden = ".DS_Store";
/// As many folders may there be more than entries: names like "a/a/a/a…" could ask for far too many.
constexpr std::size_t kMostFolders = 1'000'000;

std::string_view lastPart(std::string_view path) { return path.substr(path.rfind('/') + 1); }

/// The items of folders that entries imply. Each is the front part of some entry's name, so nothing is copied.
class ImpliedFolders final : public ItemNames {
public:
    explicit ImpliedFolders(QString skeletonFolder) : m_skeletonFolder(std::move(skeletonFolder)) {}
    std::string_view relativePath(quint32 number) const override { return m_paths[number]; }
    QString itemName(quint32 number) const override { return m_items[number].fileName(); }
    QString skeletonFolder() const override { return m_skeletonFolder; }

    KXArchiveItem* add(std::string_view path)
    {
        m_paths.push_back(path);
        return &m_items.emplace_back(*this, static_cast<quint32>(m_paths.size() - 1), true);
    }

private:
    const QString m_skeletonFolder;
    std::deque<std::string_view> m_paths;
    std::deque<KXArchiveItem> m_items; // their addresses stay
};

struct FolderKey {
    quint32 parent;
    std::string_view name;
    bool operator==(const FolderKey&) const = default;
};
struct FolderHash {
    std::size_t operator()(const FolderKey& key) const
    {
        return qHashBits(key.name.data(), key.name.size(), QHashSeed::globalSeed() ^ key.parent);
    }
};

}

/// Collects folders and files in the archive's order, then sorts each folder and numbers the nodes.
class ArchiveTreeBuilder {
public:
    ArchiveTreeBuilder(std::shared_ptr<const ArchiveListing> listing, const QString& rootPath);
    std::shared_ptr<const ArchiveTree> build();

private:
    using Node = ArchiveTree::Node;
    struct Draft {
        std::string_view path; // relative to the skeleton folder
        Node parent = ArchiveTree::kNoNode;
        KXArchiveItem* item = nullptr; // none yet: an implied folder
        bool isFolder = false;
    };
    struct Step { // a folder on the way to the last entry
        std::size_t end;
        Node node;
    };

    void addEntry(qsizetype entry);
    std::string_view rootPath() const;
    bool liesInTree(std::string_view path) const;
    Node folderAt(std::string_view path);
    Node childFolder(Node parent, std::string_view path, std::size_t start);
    void groupChildren();
    void sortChildren(std::span<Node> children) const;
    void number();

    std::shared_ptr<ArchiveTree> m_tree{new ArchiveTree};
    std::shared_ptr<const ArchiveListing> m_listing;
    std::shared_ptr<ImpliedFolders> m_implied;
    std::string m_root; // relative path of the root; empty for the skeleton folder itself
    std::vector<Draft> m_drafts;
    std::unordered_map<FolderKey, Node, FolderHash> m_known;
    std::string_view m_lastPath; // of the folder that folderAt() found last
    std::vector<Step> m_lastSteps;
    std::vector<quint32> m_firstChild;
    std::vector<Node> m_children;
};

ArchiveTreeBuilder::ArchiveTreeBuilder(std::shared_ptr<const ArchiveListing> listing, const QString& rootPath)
    : m_listing(std::move(listing))
    , m_implied(std::make_shared<ImpliedFolders>(m_listing->skeletonFolder()))
    , m_root(rootPath.mid(m_listing->skeletonFolder().size() + 1).toStdString())
{
}

std::shared_ptr<const ArchiveTree> ArchiveTreeBuilder::build()
{
    const auto entries = m_listing->count();
    m_drafts.reserve(static_cast<std::size_t>(entries) + 1);
    m_drafts.push_back({.path = rootPath(), .isFolder = true});
    for (qsizetype i = 0; i < entries; ++i)
        addEntry(i);
    groupChildren();
    number();
    m_tree->m_listing = m_listing;
    m_tree->m_folders = m_implied;
    m_tree->linkChildren();
    return m_tree;
}

/// Of entries with one name the last one is the tree's.
void ArchiveTreeBuilder::addEntry(qsizetype entry)
{
    const auto path = m_listing->table()->name(entry);
    if (m_listing->hasRepeatedNames() && m_listing->lastNamed(path) != entry)
        return;
    KXArchiveItem* const item = m_listing->itemAt(entry);
    if (path == m_root && item->isFolder()) {
        m_drafts.front().item = item;
        return;
    }
    if (!liesInTree(path))
        return;
    if (item->isFolder()) {
        const Node node = folderAt(path);
        if (node != ArchiveTree::kNoNode && m_drafts[node].path == path)
            m_drafts[node].item = item;
        return;
    }
    const auto slash = path.rfind('/');
    const bool isInRoot = slash == std::string_view::npos || slash == m_root.size();
    const Node folder = isInRoot ? ArchiveTree::kRoot : folderAt(path.substr(0, slash));
    if (lastPart(path) != kHidden && folder != ArchiveTree::kNoNode)
        m_drafts.push_back({.path = path, .parent = folder, .item = item});
}

/// As long as the listing lasts: the front of an entry's name.
std::string_view ArchiveTreeBuilder::rootPath() const
{
    const auto isBeneath = !m_root.empty() && m_listing->count() > 0;
    return isBeneath ? m_listing->table()->name(0).substr(0, m_root.size()) : std::string_view();
}

bool ArchiveTreeBuilder::liesInTree(std::string_view path) const
{
    return m_root.empty() || (path.size() > m_root.size() && path.starts_with(m_root) && path[m_root.size()] == '/');
}

/// The folder of that path, made with those above it where it is new. kNoNode for what is never shown. Entries mostly
/// come folder by folder, so the way to the last one is kept.
ArchiveTree::Node ArchiveTreeBuilder::folderAt(std::string_view path)
{
    const auto differs = static_cast<std::size_t>(std::ranges::mismatch(path, m_lastPath).in1 - path.begin());
    const auto isShared
        = [&](const Step& step) { return step.end <= differs && (step.end == path.size() || path[step.end] == '/'); };
    while (!m_lastSteps.empty() && !isShared(m_lastSteps.back()))
        m_lastSteps.pop_back();
    m_lastPath = path;
    Node node = m_lastSteps.empty() ? ArchiveTree::kRoot : m_lastSteps.back().node;
    auto at = !m_lastSteps.empty() ? m_lastSteps.back().end + 1 : m_root.empty() ? 0 : m_root.size() + 1;
    while (at < path.size()) {
        const auto end = std::min(path.find('/', at), path.size());
        const auto next = childFolder(node, path.substr(0, end), at);
        if (next == ArchiveTree::kNoNode || next == node)
            return next;
        node = next;
        m_lastSteps.push_back({end, node});
        at = end + 1;
    }
    return node;
}

/// `path` ends with the child's name, which begins at `start`. The parent itself once there are too many folders.
ArchiveTree::Node ArchiveTreeBuilder::childFolder(Node parent, std::string_view path, std::size_t start)
{
    const auto name = path.substr(start);
    if (name == kHidden)
        return ArchiveTree::kNoNode;
    const bool isFull = m_known.size() >= kMostFolders + static_cast<std::size_t>(m_listing->count());
    if (isFull) {
        const auto known = m_known.find({parent, name});
        return known == m_known.end() ? parent : known->second;
    }
    const auto [known, isNew] = m_known.try_emplace({parent, name}, static_cast<Node>(m_drafts.size()));
    if (isNew)
        m_drafts.push_back({.path = path, .parent = parent, .isFolder = true});
    return known->second;
}

/// Into m_children, each folder's together and in the order in which they are shown.
void ArchiveTreeBuilder::groupChildren()
{
    m_known.clear();
    m_firstChild.assign(m_drafts.size() + 1, 0);
    for (std::size_t i = 1; i < m_drafts.size(); ++i)
        ++m_firstChild[m_drafts[i].parent + 1];
    std::partial_sum(m_firstChild.begin(), m_firstChild.end(), m_firstChild.begin());
    m_children.resize(m_drafts.size() - 1);
    auto next = m_firstChild;
    for (Node i = 1; i < m_drafts.size(); ++i)
        m_children[next[m_drafts[i].parent]++] = i;
    for (std::size_t i = 0; i < m_drafts.size(); ++i)
        sortChildren(std::span(m_children).subspan(m_firstChild[i], m_firstChild[i + 1] - m_firstChild[i]));
}

void ArchiveTreeBuilder::sortChildren(std::span<Node> children) const
{
    const auto files = std::ranges::stable_partition(children, [&](Node node) { return m_drafts[node].isFolder; });
    const auto sortPart = [&](std::span<Node> part) {
        if (part.size() < 2)
            return;
        struct Keyed {
            std::string_view name;
            Node node;
        };
        std::deque<std::string> changed; // names that lost accents; the others are compared where they are
        std::vector<Keyed> keyed;
        keyed.reserve(part.size());
        for (const Node node : part) {
            const auto name = lastPart(m_drafts[node].path);
            keyed.push_back({isPlain(name) ? name : changed.emplace_back(withoutAccents(name)), node});
        }
        const auto before = [](const Keyed& a, const Keyed& b) { return compareNaturally(a.name, b.name) < 0; };
        if (std::ranges::is_sorted(keyed, before))
            return;
        std::ranges::stable_sort(keyed, before);
        std::ranges::transform(keyed, part.begin(), &Keyed::node);
    };
    sortPart({children.begin(), files.begin()});
    sortPart(files);
}

/// In pre-order, with a stack of our own: archives may nest as deep as they like.
void ArchiveTreeBuilder::number()
{
    auto& nodes = m_tree->m_nodes;
    nodes.reserve(m_drafts.size());
    struct Waiting {
        Node draft, parent;
    };
    std::vector<Waiting> waiting{{0, ArchiveTree::kNoNode}};
    while (!waiting.empty()) {
        const auto [at, parent] = waiting.back();
        waiting.pop_back();
        const auto number = static_cast<Node>(nodes.size());
        Draft& draft = m_drafts[at];
        nodes.push_back({draft.item ? draft.item : m_implied->add(draft.path), parent, number + 1});
        for (auto child = m_firstChild[at + 1]; child > m_firstChild[at]; --child)
            waiting.push_back({m_children[child - 1], number});
    }
    for (auto node = nodes.size() - 1; node > 0; --node) {
        auto& above = nodes[nodes[node].parent];
        above.end = std::max(above.end, nodes[node].end);
    }
}

std::shared_ptr<const ArchiveTree> ArchiveTree::generateTree(const KXUnarchiveWrapper& wrapper)
{
    return generateTree(wrapper.archiveContents(), wrapper.tmpArchivePath());
}

std::shared_ptr<const ArchiveTree> ArchiveTree::generateTree(std::shared_ptr<const ArchiveListing> listing,
                                                             const QString& rootPath)
{
    return ArchiveTreeBuilder(std::move(listing), rootPath).build();
}

}
