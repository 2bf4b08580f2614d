#include "engine/extract/folder_cache.h"

namespace vantoro {

FolderCache::FolderCache(const EntryTree& tree, UniqueFd root)
    : m_tree(tree)
    , m_root(std::make_shared<const UniqueFd>(std::move(root)))
{
}

Result<FolderPtr> FolderCache::open(NodeId folder)
{
    if (folder == kRootNode)
        return m_root;
    if (const auto found = m_byNode.find(folder); found != m_byNode.end()) {
        m_places.splice(m_places.begin(), m_places, found->second);
        return found->second->folder;
    }
    const auto parent = TRY(open(m_tree.parent(folder)));
    auto opened = TRY(openFolder(parent->get(), std::string(m_tree.diskName(folder)).c_str()));
    auto handle = std::make_shared<const UniqueFd>(std::move(opened));
    m_places.push_front({folder, handle});
    m_byNode[folder] = m_places.begin();
    if (m_places.size() > kHeld) {
        m_byNode.erase(m_places.back().node);
        m_places.pop_back();
    }
    return handle;
}

}
