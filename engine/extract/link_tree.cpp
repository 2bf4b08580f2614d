#include "engine/extract/link_tree.h"

#include <algorithm>

namespace vantoro {

void LinkTree::add(NodeId node, std::string target)
{
    m_byNode[node] = m_links.size();
    m_links.push_back({.node = node, .target = std::move(target)});
}

Result<void> LinkTree::judge(std::size_t index)
{
    TRY(resolve(m_links[index], kMostSteps));
    return {};
}

Result<NodeId> LinkTree::resolve(Link& link, unsigned budget)
{
    const Error unsafe{ErrorCode::UnsafeLink, "link target leaves the folder or has no end"};
    if (link.state == Link::State::Unsafe || link.state == Link::State::Open || budget == 0)
        return unsafe;
    if (link.state == Link::State::Safe) {
        if (link.steps > budget)
            return unsafe;
        return link.leadsTo;
    }
    link.state = Link::State::Open;
    link.steps = 1;
    const auto end = walk(link, budget - 1);
    // With a smaller budget a link may fail that would do by itself: only what is certain is remembered.
    link.state = end ? Link::State::Safe : budget == kMostSteps ? Link::State::Unsafe : Link::State::Unknown;
    if (!end)
        return unsafe;
    link.leadsTo = *end;
    return *end;
}

Result<NodeId> LinkTree::walk(Link& link, unsigned budget)
{
    NodeId at = m_tree.parent(link.node);
    const std::string_view target = link.target;
    for (std::size_t start = 0; start < target.size();) {
        const auto end = std::min(target.find('/', start), target.size());
        const auto component = target.substr(start, end - start);
        start = end + 1;
        if (component.empty() || component == ".")
            continue;
        if (component == "..") {
            // Behind something that is not a folder of ours nobody can say where ".." leads.
            if (at == kRootNode || at == kNoNode || m_tree.kind(at) != NodeKind::Folder
                || (link.steps > 1 && !hasExactNames()))
                return Error{ErrorCode::UnsafeLink, "link target leaves the folder"};
            at = m_tree.parent(at);
        } else if (at != kNoNode) {
            at = TRY(enter(link, at, component, budget));
        }
    }
    return at;
}

bool LinkTree::hasExactNames()
{
    if (!m_exact)
        m_exact = !m_isExact || m_isExact();
    return *m_exact;
}

Result<NodeId> LinkTree::enter(Link& link, NodeId folder, std::string_view component, unsigned budget)
{
    if (m_tree.kind(folder) != NodeKind::Folder)
        return kNoNode;
    const auto next = m_tree.findOnDisk(folder, component);
    if (next == kNoNode) {
        if (folder == kRootNode && m_isForeignLink && m_isForeignLink(std::string(component)))
            return Error{ErrorCode::UnsafeLink, "link target passes a link that is not of the archive"};
        return kNoNode;
    }
    if (m_tree.kind(next) != NodeKind::Link)
        return next;
    const auto other = m_byNode.find(next);
    if (other == m_byNode.end())
        return Error{ErrorCode::UnsafeLink, "link target passes a link that was refused"};
    auto& passed = m_links[other->second];
    const auto used = link.steps - 1;
    const auto end = TRY(resolve(passed, budget > used ? budget - used : 0));
    link.steps += passed.steps;
    return end;
}

}
