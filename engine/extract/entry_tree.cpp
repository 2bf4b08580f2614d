#include "engine/extract/entry_tree.h"

#include <algorithm>
#include <cstring>

#include <sys/random.h>

namespace vantoro {

namespace {

constexpr std::size_t kChunk = 64 << 10;

/// Keeps an archive from choosing names that all fall into one slot.
std::uint64_t processSeed()
{
    static const std::uint64_t seed = reinterpret_cast<std::uintptr_t>(&kChunk) ^ [] {
        std::uint64_t random = 0;
        (void)!::getrandom(&random, sizeof random, GRND_NONBLOCK);
        return random;
    }();
    return seed;
}

}

EntryTree::EntryTree() : m_slots(1024, kNoNode)
{
    m_nodes.push_back({"", kRootNode, kRootNode, 0, kNoEntry, 0, NodeKind::Folder, true, false, false});
}

std::uint32_t EntryTree::hashOf(NodeId parent, std::string_view name)
{
    std::uint64_t hash = processSeed() ^ (std::uint64_t{parent} * 0x9E3779B97F4A7C15U);
    std::size_t at = 0;
    for (; at + 8 <= name.size(); at += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, name.data() + at, 8);
        hash = (hash ^ word) * 0xFF51AFD7ED558CCDU;
        hash ^= hash >> 32;
    }
    std::uint64_t last = name.size();
    std::memcpy(&last, name.data() + at, std::min<std::size_t>(name.size() - at, 7));
    hash = (hash ^ last ^ (std::uint64_t{name.size()} << 56)) * 0xC4CEB9FE1A85EC53U;
    return static_cast<std::uint32_t>(hash >> 32) ^ static_cast<std::uint32_t>(hash);
}

std::string EntryTree::diskKey(NodeId parent, std::string_view name)
{
    return std::to_string(parent).append("/").append(name);
}

std::size_t EntryTree::slotOf(NodeId parent, std::string_view wanted, std::uint32_t hash) const
{
    const auto mask = m_slots.size() - 1;
    for (auto slot = hash & mask;; slot = (slot + 1) & mask) {
        const auto id = m_slots[slot];
        if (id == kNoNode)
            return slot;
        const auto& node = m_nodes[id];
        if (node.hash == hash && node.parent == parent && name(id) == wanted)
            return slot;
    }
}

void EntryTree::grow()
{
    std::vector<NodeId> old(m_slots.size() * 2, kNoNode);
    old.swap(m_slots);
    const auto mask = m_slots.size() - 1;
    for (const auto id : old) {
        if (id == kNoNode)
            continue;
        auto slot = m_nodes[id].hash & mask;
        while (m_slots[slot] != kNoNode)
            slot = (slot + 1) & mask;
        m_slots[slot] = id;
    }
}

const char* EntryTree::store(std::string_view name)
{
    if (name.size() > m_chunkLeft) {
        m_chunkLeft = std::max(kChunk, name.size());
        m_chunks.push_back(std::make_unique_for_overwrite<char[]>(m_chunkLeft));
        m_chunkEnd = m_chunks.back().get();
    }
    char* const place = m_chunkEnd;
    std::memcpy(place, name.data(), name.size());
    m_chunkEnd += name.size();
    m_chunkLeft -= name.size();
    return place;
}

NodeId EntryTree::find(NodeId parent, std::string_view name) const
{
    return m_slots[slotOf(parent, name, hashOf(parent, name))];
}

NodeId EntryTree::findFolder(NodeId parent, std::string_view name) const
{
    const auto node = find(parent, name);
    return node == kNoNode ? kNoNode : m_nodes[node].folder;
}

NodeId EntryTree::findOnDisk(NodeId parent, std::string_view diskName) const
{
    if (!m_byDiskName.empty()) {
        const auto found = m_byDiskName.find(diskKey(parent, diskName));
        if (found != m_byDiskName.end())
            return found->second;
    }
    const auto node = find(parent, diskName);
    return node != kNoNode && this->diskName(node) == diskName ? node : kNoNode;
}

NodeId EntryTree::add(NodeId parent, std::string_view name, NodeKind kind, std::uint32_t entry)
{
    if (m_used * 2 >= m_slots.size())
        grow();
    const auto hash = hashOf(parent, name);
    auto& slot = m_slots[slotOf(parent, name, hash)];
    const auto id = static_cast<NodeId>(m_nodes.size());
    Node node{nullptr, parent, kNoNode, hash, entry, static_cast<std::uint16_t>(name.size()),
              kind,    false,  false,   false};
    if (slot == kNoNode) {
        node.name = store(name);
        ++m_used;
    } else {
        node.isRepeated = true;
        node.name = m_nodes[slot].name;
        node.folder = m_nodes[slot].folder;
        if (!m_nodes[slot].isRenamed) // hidden behind the new one from here on
            m_byDiskName.emplace(diskKey(parent, name), slot);
    }
    if (kind == NodeKind::Folder)
        node.folder = id;
    m_nodes.push_back(node);
    slot = id;
    return id;
}

void EntryTree::setDiskName(NodeId node, std::string_view diskName)
{
    if (diskName == this->diskName(node) && m_nodes[node].isRenamed)
        return;
    if (m_nodes[node].isRenamed)
        m_byDiskName.erase(diskKey(parent(node), m_diskNames[node]));
    m_nodes[node].isRenamed = true;
    m_diskNames[node] = diskName;
    m_byDiskName[diskKey(parent(node), diskName)] = node;
}

unsigned EntryTree::nextNumber(NodeId parent, std::string_view name) { return ++m_numbers[diskKey(parent, name)]; }

std::string_view EntryTree::diskName(NodeId node) const
{
    return m_nodes[node].isRenamed ? std::string_view(m_diskNames.at(node)) : name(node);
}

std::string EntryTree::path(NodeId node) const
{
    std::vector<NodeId> way;
    for (; node != kRootNode; node = parent(node))
        way.push_back(node);
    std::string result;
    for (auto at = way.rbegin(); at != way.rend(); ++at) {
        if (!result.empty())
            result += '/';
        result += name(*at);
    }
    return result;
}

unsigned EntryTree::depth(NodeId node) const
{
    unsigned result = 0;
    for (; node != kRootNode; node = parent(node))
        ++result;
    return result;
}

}
