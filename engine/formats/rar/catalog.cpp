#include "engine/formats/rar/catalog.h"

namespace vantoro {

std::uint64_t RarMember::packedSize() const
{
    auto sum = part.length;
    if (extras) {
        for (const auto& more : extras->moreParts)
            sum += more.length;
    }
    return sum;
}

Result<void> RarCatalog::add(RarMember member, bool continues, bool goesOn, const Limits& limits)
{
    if (continues && m_isOpen && members.back().name == member.name) {
        // What only the last part knows, or each part has for itself.
        auto& whole = members.back();
        auto& extras = whole.makeExtras();
        extras.moreParts.push_back(member.part);
        whole.size = member.size;
        whole.checksum = member.checksum;
        whole.crc = member.crc;
        if (member.extras)
            extras.hash = member.extras->hash;
        if (member.encryption && !goesOn)
            whole.encryption = member.encryption; // its checksums are keyed, those of the other parts are not
        m_isOpen = goesOn;
        return {};
    }
    close();
    if (members.size() >= limits.entries)
        return Error{ErrorCode::LimitExceeded, "rar: too many entries"};
    member.lacksStart = continues;
    members.push_back(std::move(member));
    m_isOpen = goesOn;
    return {};
}

void RarCatalog::close()
{
    if (m_isOpen)
        members.back().lacksEnd = true;
    m_isOpen = false;
}

}
