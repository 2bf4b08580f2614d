#pragma once

#include "browse/ArchiveTree.h"
#include "browse/EntryIcons.h"

#include <QAbstractItemModel>

namespace vantoro {

class XADEntryTable;

/// A tree of an archive's entries as rows: one root row for the archive itself, everything else beneath it. Nothing is
/// kept for a row; an index carries its node's number.
class ArchiveTreeModel final : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Column { Name, Modified, Size, ColumnCount };

    using QAbstractItemModel::QAbstractItemModel;

    /// Null: no rows. `archivePath` names the root row.
    void setTree(std::shared_ptr<const ArchiveTree> tree, const QString& archivePath);
    const ArchiveTree* tree() const { return m_tree.get(); }

    /// kNoNode for an invalid index.
    ArchiveTree::Node nodeAt(const QModelIndex& index) const;
    QModelIndex indexOf(ArchiveTree::Node node, int column = Name) const;
    /// Whether the row has a preview button.
    bool isPreviewable(const QModelIndex& index) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// For drags: the bare names, nothing that could be dropped as a file.
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    QStringList mimeTypes() const override;

private:
    QString name(ArchiveTree::Node node) const;
    QString size(ArchiveTree::Node node) const;
    QString modified(ArchiveTree::Node node) const;
    QString toolTip(ArchiveTree::Node node) const;
    QIcon icon(ArchiveTree::Node node) const;

    std::shared_ptr<const ArchiveTree> m_tree;
    QString m_archivePath;
    mutable EntryIcons m_icons;
};

}
