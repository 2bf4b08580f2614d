#pragma once

#include "engine/extract/entry_tree.h"
#include "engine/extract/filesystem.h"

#include <list>
#include <memory>
#include <unordered_map>

namespace vantoro {

/// An open folder of the job; lives as long as anybody holds it.
using FolderPtr = std::shared_ptr<const UniqueFd>;

/// Handles of the folders of the tree, the last used kept open. A folder is reached from its parent's handle, one
/// component at a time and never through a link, so the rules are checked once a folder and not once a file.
/// Not thread-safe: its owner locks.
class FolderCache {
public:
    FolderCache(const EntryTree& tree, UniqueFd root);

    Result<FolderPtr> open(NodeId folder);

private:
    struct Place {
        NodeId node;
        FolderPtr folder;
    };
    static constexpr std::size_t kHeld = 64;

    const EntryTree& m_tree;
    FolderPtr m_root;
    std::list<Place> m_places; ///< the latest first
    std::unordered_map<NodeId, std::list<Place>::iterator> m_byNode;
};

}
