#pragma once

#include "browse/ArchiveTree.h"
#include "browse/KXUnarchiveWrapper.h"
#include "files/KXFileWrapper.h"
#include "tests/support/ZipBuilder.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace vantoro {

/// A home folder of the test's own, for everything that the library of files calls its own. Made before any use of it.
class OwnHome {
public:
    OwnHome()
    {
        qputenv("HOME", m_home.path().toUtf8());
        for (const char* name : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_CONFIG_HOME"})
            qunsetenv(name);
    }
    QString path(const QString& name) const { return m_home.filePath(name); }

private:
    QTemporaryDir m_home;
};

inline QString temporaryPath(const QString& name) { return KXFileWrapper::pathForTemporaryDirectoryWithPath(name); }

/// The listed and, unless it is not wanted, mirrored archive.
inline std::unique_ptr<KXUnarchiveWrapper> browsed(const QString& path, const ListingWatch& watch = {})
{
    auto wrapper = KXUnarchiveWrapper::initWithPath(path, watch);
    wrapper->obtainArchiveContents();
    return wrapper;
}

/// Every node below the root in the tree's order, two blanks a level, folders with a slash.
inline QStringList lines(const ArchiveTree& tree)
{
    QStringList result;
    for (ArchiveTree::Node node = 1; node < tree.nodeCount(); ++node) {
        int depth = -1;
        for (auto above = tree.parent(node); above != ArchiveTree::kNoNode; above = tree.parent(above))
            ++depth;
        const auto* item = tree.representedObject(node);
        result += QString(depth * 2, ' ') + item->fileName() + (item->isFolder() ? "/" : "");
    }
    return result;
}

}
