#pragma once

#include "browse/ArchiveListing.h"

#include <memory>
#include <vector>

namespace vantoro {

class KXUnarchiveWrapper;

/// What lies beneath a folder at any depth.
struct FolderTotals {
    qint64 folders = 0;
    qint64 files = 0;
    qint64 bytes = 0; ///< as far as the archive tells sizes
};

/// The tree that the browser shows. Nodes are numbers, the root is 0 and stands for the archive itself; a model may
/// keep them as internal ids and make its rows when they are asked for. Nodes are numbered in pre-order, so that
/// everything beneath a node follows it without a gap. Fixed once built: any thread reads it. 28 bytes a node. It has
/// the layout of the skeleton, and needs only the listing: it can be shown before the skeleton is made.
class ArchiveTree {
public:
    using Node = quint32;
    static constexpr Node kRoot = 0;
    static constexpr Node kNoNode = 0xFFFFFFFF;

    /// `generateTreeFromPath:` of the wrapper's tmpArchivePath. Folders come first, then files, each by name: letter
    /// case and accents ignored, digits by their value. Never null; without an archive only the root.
    static std::shared_ptr<const ArchiveTree> generateTree(const KXUnarchiveWrapper& wrapper);
    static std::shared_ptr<const ArchiveTree> generateTree(std::shared_ptr<const ArchiveListing> listing,
                                                           const QString& rootPath);

    bool hasChildren() const { return childCount(kRoot) > 0; }
    Node nodeCount() const { return static_cast<Node>(m_nodes.size()); }
    /// Never null.
    KXArchiveItem* representedObject(Node node) const { return m_nodes[node].item; }
    bool isFolder(Node node) const { return representedObject(node)->isFolder(); }
    /// kNoNode for the root.
    Node parent(Node node) const { return m_nodes[node].parent; }
    /// Position among its parent's children.
    int row(Node node) const { return static_cast<int>(m_nodes[node].row); }
    int childCount(Node node) const;
    Node child(Node node, int row) const;
    /// kNoNode when the tree does not show the item.
    Node nodeForItem(const KXArchiveItem* item) const;

    /// The items of the node and of everything beneath it, a node before its children.
    std::vector<KXArchiveItem*> getItemForTreeNode(Node node) const;
    /// Entry numbers to extract for a node: of the files beneath it, each by its name.
    std::vector<quint64> entryIndices(Node node) const;
    FolderTotals totals(Node node) const;

    /// The nodes whose names contain the text (letter case and accents ignored), with all that lies beneath them and
    /// the folders above them. The items are the same. An empty text shows everything.
    std::shared_ptr<const ArchiveTree> filtered(const QString& text) const;

    const ArchiveListing& listing() const { return *m_listing; }

private:
    friend class ArchiveTreeBuilder;
    struct NodeData {
        KXArchiveItem* item = nullptr;
        Node parent = kNoNode;
        Node end = 0; // one past the last node beneath
        quint32 row = 0;
        quint32 firstChild = 0; // position in m_children; the next node's tells where they end
    };

    ArchiveTree() = default;
    void linkChildren();
    std::shared_ptr<const ArchiveTree> chosen(const std::vector<bool>& shows) const;

    std::shared_ptr<const ArchiveListing> m_listing;
    std::shared_ptr<const ItemNames> m_folders; // owns the items of implied folders; shared with filtered trees
    std::vector<NodeData> m_nodes; // in pre-order
    std::vector<Node> m_children;
};

/// Whether a row of the outline counts as a chosen entry: every row but the root's, up to a bound that is deliberately
/// loose, for it counts the archive's entries, not the rows.
constexpr bool rowIsChosenEntry(qsizetype row, qsizetype entries)
{
    return row > 0 && static_cast<std::size_t>(row) <= static_cast<std::size_t>(entries) + 1;
}

/// What the size column shows for an item; empty for folders.
QString sizeText(const KXUnarchiveWrapper& wrapper, const KXArchiveItem& item);

}
