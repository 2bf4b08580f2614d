#include "browse/ArchiveTreeModel.h"

#include "browse/ArchiveTexts.h"

#include "files/KXUtilities.h"

#include <QFileInfo>
#include <QMimeData>

namespace vantoro {
namespace {

/// What the archive says of the node's item; null for folders that entries only imply.
const XADEntryTable::Row* rowOf(const ArchiveTree& tree, ArchiveTree::Node node)
{
    const auto index = tree.listing().indexOfItem(tree.representedObject(node));
    return index < 0 ? nullptr : &tree.listing().table()->at(index);
}

QDateTime dateOf(const XADEntryTable::Row& row)
{
    const auto utc = QDateTime::fromSecsSinceEpoch(row.date, Qt::UTC);
    return row.dateIsLocal ? QDateTime(utc.date(), utc.time()) : utc.toLocalTime();
}

}

void ArchiveTreeModel::setTree(std::shared_ptr<const ArchiveTree> tree, const QString& archivePath)
{
    beginResetModel();
    m_tree = std::move(tree);
    m_archivePath = archivePath;
    endResetModel();
}

ArchiveTree::Node ArchiveTreeModel::nodeAt(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<ArchiveTree::Node>(index.internalId()) : ArchiveTree::kNoNode;
}

QModelIndex ArchiveTreeModel::indexOf(ArchiveTree::Node node, int column) const
{
    if (!m_tree || node >= m_tree->nodeCount())
        return {};
    return createIndex(node == ArchiveTree::kRoot ? 0 : m_tree->row(node), column, quintptr{node});
}

bool ArchiveTreeModel::isPreviewable(const QModelIndex& index) const
{
    return index.isValid() && !m_tree->isFolder(nodeAt(index));
}

QModelIndex ArchiveTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (row < 0 || column < 0 || column >= ColumnCount || row >= rowCount(parent))
        return {};
    const auto node = parent.isValid() ? m_tree->child(nodeAt(parent), row) : ArchiveTree::kRoot;
    return createIndex(row, column, quintptr{node});
}

QModelIndex ArchiveTreeModel::parent(const QModelIndex& child) const
{
    const auto node = nodeAt(child);
    if (node == ArchiveTree::kNoNode || node == ArchiveTree::kRoot)
        return {};
    return indexOf(m_tree->parent(node));
}

int ArchiveTreeModel::rowCount(const QModelIndex& parent) const
{
    if (!m_tree || parent.column() > 0)
        return 0;
    return parent.isValid() ? m_tree->childCount(nodeAt(parent)) : 1;
}

int ArchiveTreeModel::columnCount(const QModelIndex&) const { return ColumnCount; }

bool ArchiveTreeModel::hasChildren(const QModelIndex& parent) const { return rowCount(parent) > 0; }

Qt::ItemFlags ArchiveTreeModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled : Qt::NoItemFlags;
}

QVariant ArchiveTreeModel::data(const QModelIndex& index, int role) const
{
    const auto node = nodeAt(index);
    if (node == ArchiveTree::kNoNode)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return index.column() == Name ? name(node) : index.column() == Size ? size(node) : modified(node);
    case Qt::DecorationRole:
        return index.column() == Name ? QVariant(icon(node)) : QVariant();
    case Qt::ToolTipRole:
        return toolTip(node);
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter | (index.column() == Size ? Qt::AlignRight : Qt::AlignLeft));
    default:
        return {};
    }
}

QVariant ArchiveTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignVCenter | (section == Size ? Qt::AlignRight : Qt::AlignLeft));
    if (role != Qt::DisplayRole)
        return {};
    return section == Name ? tr("Name") : section == Size ? tr("Size") : tr("Modified");
}

QStringList ArchiveTreeModel::mimeTypes() const { return {QStringLiteral("text/plain")}; }

QMimeData* ArchiveTreeModel::mimeData(const QModelIndexList& indexes) const
{
    QStringList names;
    for (const auto& index : indexes) {
        if (index.column() == Name)
            names << m_tree->representedObject(nodeAt(index))->fileName();
    }
    auto* data = new QMimeData;
    data->setText(names.join(QLatin1Char('\n')));
    return data;
}

QString ArchiveTreeModel::name(ArchiveTree::Node node) const
{
    return node == ArchiveTree::kRoot ? QFileInfo(m_archivePath).fileName()
                                      : m_tree->representedObject(node)->fileName();
}

QString ArchiveTreeModel::size(ArchiveTree::Node node) const
{
    if (m_tree->isFolder(node))
        return {};
    const auto* row = rowOf(*m_tree, node);
    return row ? KXUtilities::sizeFormatForNumber(row->size) : QString();
}

QString ArchiveTreeModel::modified(ArchiveTree::Node node) const
{
    const auto* row = rowOf(*m_tree, node);
    return row && row->hasDate ? KXUtilities::stringLongFromDate(dateOf(*row)) : QString();
}

QString ArchiveTreeModel::toolTip(ArchiveTree::Node node) const
{
    const QString path = node == ArchiveTree::kRoot ? m_archivePath : m_tree->representedObject(node)->itemName();
    if (!m_tree->isFolder(node))
        return path;
    return path + QLatin1Char('\n') + texts::folderTotals(m_tree->totals(node));
}

QIcon ArchiveTreeModel::icon(ArchiveTree::Node node) const
{
    return node == ArchiveTree::kRoot ? rootIcon(m_archivePath) : m_icons.iconForItem(*m_tree->representedObject(node));
}

}
