#pragma once

#include "engine/extract/entry_tree.h"
#include "engine/io/result.h"

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace vantoro {

/// The symbolic links of a job, which are made after everything else. Judges where each would lead by walking its
/// target over the tree of entries, component by component, other links of the archive taken into account, the way the
/// kernel would walk it.
class LinkTree {
public:
    explicit LinkTree(const EntryTree& tree) : m_tree(tree) {}

    /// `target` has been cleaned. The node is a Link of the tree.
    void add(NodeId node, std::string target);
    std::size_t size() const { return m_links.size(); }
    NodeId node(std::size_t index) const { return m_links[index].node; }
    const std::string& target(std::size_t index) const { return m_links[index].target; }

    /// Names beside the tree's top items that are links of somebody else: nothing may lead over them.
    void setForeignLinkTest(std::function<bool(const std::string&)> isForeignLink)
    {
        m_isForeignLink = std::move(isForeignLink);
    }

    /// Whether the file system tells "a" from "A"; asked at most once. Where it does not, a target that climbs with
    /// ".." behind another link may pass a different one than the tree knows.
    void setExactNameTest(std::function<bool()> isExact) { m_isExact = std::move(isExact); }

    /// UnsafeLink when the link leaves the root, runs in a circle, or cannot be followed to where it leads.
    Result<void> judge(std::size_t index);

private:
    struct Link {
        NodeId node;
        enum class State : std::uint8_t { Unknown, Open, Safe, Unsafe } state = State::Unknown;
        NodeId leadsTo = kNoNode; ///< of a safe link; kNoNode when it dangles inside the root
        unsigned steps = 0; ///< links passed on the way, itself included
        std::string target;
    };
    static constexpr unsigned kMostSteps = 40;

    Result<NodeId> resolve(Link& link, unsigned budget);
    Result<NodeId> walk(Link& link, unsigned budget);
    bool hasExactNames();
    Result<NodeId> enter(Link& link, NodeId folder, std::string_view component, unsigned budget);

    const EntryTree& m_tree;
    std::vector<Link> m_links;
    std::unordered_map<NodeId, std::size_t> m_byNode;
    std::function<bool(const std::string&)> m_isForeignLink;
    std::function<bool()> m_isExact;
    std::optional<bool> m_exact;
};

}
