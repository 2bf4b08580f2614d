#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vantoro {

using NodeId = std::uint32_t;
inline constexpr NodeId kRootNode = 0;
inline constexpr NodeId kNoNode = ~NodeId{0};

enum class NodeKind : std::uint8_t { Folder, File, Link };

/// What an extraction has placed and where: every folder, file and link under the name that the archive gives it and,
/// where that differs, under the name that it has on disk. Questions about the job's own work are answered here, never
/// by looking at paths on disk. A parent's number is always below its children's. Some 48 bytes and the name an entry.
class EntryTree {
public:
    static constexpr std::uint32_t kNoEntry = ~std::uint32_t{0};

    EntryTree();

    /// The latest with this name in the archive; kNoNode when there is none.
    NodeId find(NodeId parent, std::string_view name) const;
    /// The latest folder with this name in the archive, although files or links of the name may have followed.
    NodeId findFolder(NodeId parent, std::string_view name) const;
    /// The one with this name on disk.
    NodeId findOnDisk(NodeId parent, std::string_view diskName) const;

    NodeId add(NodeId parent, std::string_view name, NodeKind kind, std::uint32_t entry);
    void setDiskName(NodeId node, std::string_view diskName);
    /// A number for "name 1", "name 2" …, never the same twice for one name.
    unsigned nextNumber(NodeId parent, std::string_view name);

    std::size_t size() const { return m_nodes.size(); }
    NodeId parent(NodeId node) const { return m_nodes[node].parent; }
    NodeKind kind(NodeId node) const { return m_nodes[node].kind; }
    std::uint32_t entry(NodeId node) const { return m_nodes[node].entry; }
    std::string_view name(NodeId node) const { return {m_nodes[node].name, m_nodes[node].length}; }
    std::string_view diskName(NodeId node) const;
    std::string path(NodeId node) const; ///< by the archive's names, for people
    unsigned depth(NodeId node) const; ///< of the root: 0
    /// Whether an earlier one has this name in the archive.
    bool isRepeated(NodeId node) const { return m_nodes[node].isRepeated; }

    /// Whether it stands on disk, whole.
    bool isPlaced(NodeId node) const { return m_nodes[node].isPlaced; }
    void setPlaced(NodeId node, bool placed) { m_nodes[node].isPlaced = placed; }

private:
    struct Node {
        const char* name;
        NodeId parent;
        NodeId folder; ///< the latest folder of this name, itself included
        std::uint32_t hash;
        std::uint32_t entry;
        std::uint16_t length;
        NodeKind kind;
        bool isPlaced;
        bool isRenamed;
        bool isRepeated;
    };

    static std::uint32_t hashOf(NodeId parent, std::string_view name);
    static std::string diskKey(NodeId parent, std::string_view name);
    std::size_t slotOf(NodeId parent, std::string_view name, std::uint32_t hash) const;
    void grow();
    const char* store(std::string_view name);

    std::vector<Node> m_nodes;
    std::vector<NodeId> m_slots; ///< open addressing, a power of two; the latest node of each name
    std::size_t m_used = 0;
    std::vector<std::unique_ptr<char[]>> m_chunks;
    std::size_t m_chunkLeft = 0;
    char* m_chunkEnd = nullptr;
    // Rare: what the archive holds twice or the file system does not take.
    std::unordered_map<NodeId, std::string> m_diskNames;
    std::unordered_map<std::string, NodeId> m_byDiskName;
    std::unordered_map<std::string, unsigned> m_numbers;
};

}
