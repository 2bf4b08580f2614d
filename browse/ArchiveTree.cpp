#include "browse/ArchiveTree.h"

#include "browse/KXUnarchiveWrapper.h"
#include "browse/NameOrder.h"
#include "files/KXUtilities.h"

#include <algorithm>

namespace vantoro {
namespace {

std::string_view lastPart(std::string_view path) { return path.substr(path.rfind('/') + 1); }

}

/// Fills m_children and the rows from the parents: in pre-order, children come in their order.
void ArchiveTree::linkChildren()
{
    std::vector<quint32> counts(m_nodes.size());
    for (std::size_t i = 1; i < m_nodes.size(); ++i)
        m_nodes[i].row = counts[m_nodes[i].parent]++;
    quint32 next = 0;
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        m_nodes[i].firstChild = next;
        next += counts[i];
    }
    m_children.resize(next);
    for (Node i = 1; i < m_nodes.size(); ++i)
        m_children[m_nodes[m_nodes[i].parent].firstChild + m_nodes[i].row] = i;
}

int ArchiveTree::childCount(Node node) const
{
    const auto end = node + 1 < m_nodes.size() ? m_nodes[node + 1].firstChild : m_children.size();
    return static_cast<int>(end - m_nodes[node].firstChild);
}

ArchiveTree::Node ArchiveTree::child(Node node, int row) const
{
    return row >= 0 && row < childCount(node) ? m_children[m_nodes[node].firstChild + static_cast<quint32>(row)]
                                              : kNoNode;
}

ArchiveTree::Node ArchiveTree::nodeForItem(const KXArchiveItem* item) const
{
    const auto found = std::ranges::find(m_nodes, item, &NodeData::item);
    return found == m_nodes.end() ? kNoNode : static_cast<Node>(found - m_nodes.begin());
}

std::vector<KXArchiveItem*> ArchiveTree::getItemForTreeNode(Node node) const
{
    std::vector<KXArchiveItem*> items;
    items.reserve(m_nodes[node].end - node);
    for (Node i = node; i < m_nodes[node].end; ++i)
        items.push_back(m_nodes[i].item);
    return items;
}

std::vector<quint64> ArchiveTree::entryIndices(Node node) const
{
    std::vector<quint64> indices;
    for (Node i = node; i < m_nodes[node].end; ++i) {
        const auto entry = m_listing->indexOfItem(m_nodes[i].item);
        if (entry >= 0 && !m_nodes[i].item->isFolder())
            indices.push_back(static_cast<quint64>(m_listing->firstNamed(m_listing->table()->name(entry))));
    }
    return indices;
}

FolderTotals ArchiveTree::totals(Node node) const
{
    FolderTotals totals;
    for (Node i = node + 1; i < m_nodes[node].end; ++i) {
        if (m_nodes[i].item->isFolder()) {
            ++totals.folders;
            continue;
        }
        ++totals.files;
        const auto entry = m_listing->indexOfItem(m_nodes[i].item);
        const qint64 room = std::numeric_limits<qint64>::max() - totals.bytes;
        totals.bytes += entry < 0 ? 0 : std::min(m_listing->table()->at(entry).size, room);
    }
    return totals;
}

std::shared_ptr<const ArchiveTree> ArchiveTree::filtered(const QString& text) const
{
    const auto wanted = withoutAccents(text.toStdString());
    std::vector<bool> shows(m_nodes.size(), wanted.empty());
    for (Node i = 1; i < m_nodes.size() && !wanted.empty();) {
        const bool matches = holdsText(withoutAccents(lastPart(m_nodes[i].item->relativePath())), wanted);
        if (!matches) {
            ++i;
            continue;
        }
        for (Node above = m_nodes[i].parent; above != kNoNode && !shows[above]; above = m_nodes[above].parent)
            shows[above] = true;
        for (const Node end = m_nodes[i].end; i < end; ++i)
            shows[i] = true;
    }
    shows[kRoot] = true;
    return chosen(shows);
}

/// The tree of the nodes that `shows` names; with each of them those above it.
std::shared_ptr<const ArchiveTree> ArchiveTree::chosen(const std::vector<bool>& shows) const
{
    std::shared_ptr<ArchiveTree> tree(new ArchiveTree);
    tree->m_listing = m_listing;
    tree->m_folders = m_folders;
    std::vector<Node> numbers(m_nodes.size() + 1); // how many of the nodes before are shown
    for (std::size_t i = 0; i < m_nodes.size(); ++i)
        numbers[i + 1] = numbers[i] + (shows[i] ? 1 : 0);
    tree->m_nodes.reserve(numbers.back());
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        const NodeData& node = m_nodes[i];
        if (shows[i])
            tree->m_nodes.push_back({.item = node.item,
                                     .parent = node.parent == kNoNode ? kNoNode : numbers[node.parent],
                                     .end = numbers[node.end]});
    }
    tree->linkChildren();
    return tree;
}

QString sizeText(const KXUnarchiveWrapper& wrapper, const KXArchiveItem& item)
{
    return item.isFolder() ? QString() : KXUtilities::sizeFormatForNumber(wrapper.getSizeForItem(&item));
}

}
