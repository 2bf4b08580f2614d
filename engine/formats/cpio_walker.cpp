#include "engine/formats/cpio_walker.h"

#include <sys/stat.h>

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::size_t kMostName = 32 << 10; // the input shows so much at once, and no system makes longer names

EntryKind kindOf(std::uint32_t mode)
{
    return (mode & S_IFMT) == 0 ? EntryKind::File : kindOfMode(mode).value_or(EntryKind::Other);
}

/// Adds up the bytes that pass on their way to the receiver.
class SummingLane final : public LaneReceiver {
public:
    explicit SummingLane(LaneReceiver& lane) : m_lane(lane) {}
    std::uint32_t sum() const { return m_sum; }

    Result<Want> begin(const Entry& entry) override { return m_lane.begin(entry); }
    Bytes room(std::size_t least) override { return m_lane.room(least); }
    Result<void> data(ConstBytes block) override
    {
        for (const auto byte : block)
            m_sum += std::to_integer<std::uint32_t>(byte);
        return m_lane.data(block);
    }
    Result<void> end(Result<void> outcome) override { return m_lane.end(outcome); }

private:
    LaneReceiver& m_lane;
    std::uint32_t m_sum = 0;
};

}

Result<std::span<CpioMember>> CpioWalker::next()
{
    m_members.clear();
    while (!m_isAtEnd) {
        TRY(passRest());
        CpioMember member;
        if (!TRY(readMember(member))) {
            m_isAtEnd = true;
            break;
        }
        if (member.kind == EntryKind::File && member.header.links > 1 && member.header.inode != 0) {
            if (holdBack(member))
                continue;
            linkToKnown(member);
        }
        m_members.insert(m_members.begin(), std::move(member));
        TRY(number());
        return m_members;
    }
    takeLeftOvers();
    TRY(number());
    return m_members;
}

/// Passes over what was not wanted of the member before.
Result<void> CpioWalker::passRest()
{
    if (!m_hasMember)
        return {};
    TRY(m_input.skip(m_left + m_padding));
    m_hasMember = false;
    m_left = 0;
    m_input.entryEnded();
    return {};
}

/// False at the end mark.
Result<bool> CpioWalker::readMember(CpioMember& member)
{
    const auto head = TRY(m_input.peek(CpioHeader::kLongest));
    member.header = TRY(CpioHeader::parse(head));
    const auto& header = member.header;
    if (header.nameSize > kMostName)
        return Error{ErrorCode::LimitExceeded, "cpio: length of a name"};
    const auto length = header.length() + header.nameSize;
    const auto block = TRY(m_input.peek(length));
    if (block.size() < length)
        return Error{ErrorCode::Truncated, "cpio: name"};
    const auto name = asText(block.subspan(header.length()));
    if (name.back() != '\0')
        return Error{ErrorCode::Corrupt, "cpio: a name without an end"};
    member.name = name.substr(0, name.size() - 1);
    m_input.consume(length);
    if (member.name == "TRAILER!!!")
        return false;
    TRY(m_input.skip(header.padding(length)));
    member.kind = kindOf(header.mode);
    m_left = header.size;
    m_padding = header.padding(header.size);
    m_hasMember = true;
    if (member.kind == EntryKind::SymbolicLink)
        TRY(readTarget(member));
    return true;
}

Result<void> CpioWalker::readTarget(CpioMember& member)
{
    if (m_left > kMostName)
        return Error{ErrorCode::LimitExceeded, "cpio: length of a link's target"};
    const auto target = TRY(m_input.peek(static_cast<std::size_t>(m_left)));
    if (target.size() < m_left)
        return Error{ErrorCode::Truncated, "cpio: target of a link"};
    member.linkTarget = asText(target);
    m_input.consume(target.size());
    m_left = 0;
    return {};
}

/// Keeps an empty name of a file whose data are still to come; takes the kept names out when they have come.
bool CpioWalker::holdBack(CpioMember& member)
{
    const FileId id{member.header.device, member.header.inode};
    if (!member.header.storesDataOnce() || m_known.contains(id))
        return false;
    if (member.header.size == 0) {
        m_held[id].push_back(std::move(member));
        return true;
    }
    if (auto held = m_held.extract(id); !held.empty()) {
        m_members = std::move(held.mapped());
        for (auto& link : m_members) {
            link.kind = EntryKind::HardLink;
            link.linkTarget = member.name;
            link.header.size = member.header.size;
        }
    }
    return false;
}

/// A further name of a file that was seen with its data. Where every name has data of its own, inode numbers are cut
/// to 16 or 18 bits: only what agrees in everything is taken for the same file.
void CpioWalker::linkToKnown(CpioMember& member)
{
    const FileId id{member.header.device, member.header.inode};
    const auto [known, isNew] = m_known.try_emplace(id, Known{member.header, member.name, m_nextIndex});
    if (isNew)
        return;
    const auto& first = known->second.header;
    const bool isNameOnly = member.header.storesDataOnce() && member.header.size == 0;
    const bool isSame = first.size == member.header.size && first.modified == member.header.modified
        && first.mode == member.header.mode;
    if (!isNameOnly && !isSame)
        return;
    member.kind = EntryKind::HardLink;
    member.linkTarget = known->second.name;
    member.targetIndex = known->second.index;
}

Result<void> CpioWalker::number()
{
    for (auto& member : m_members) {
        if (m_nextIndex == m_limits.entries)
            return Error{ErrorCode::LimitExceeded, "cpio: too many entries"};
        member.index = m_nextIndex++;
    }
    return {};
}

/// Names of a file that is really empty: the first one becomes the file.
void CpioWalker::takeLeftOvers()
{
    if (m_held.empty())
        return;
    m_members = std::move(m_held.extract(m_held.begin()).mapped());
    for (auto& link : std::span(m_members).subspan(1)) {
        link.kind = EntryKind::HardLink;
        link.linkTarget = m_members.front().name;
    }
}

Result<void> CpioWalker::deliver(LaneReceiver& lane, Result<void>& fault)
{
    const auto& header = m_members.front().header;
    const auto length = m_left;
    if (m_isAtEnd || length == 0)
        return {};
    m_left = 0; // whatever comes of it, the input stands behind them or can go no further
    const auto before = m_input.position();
    const auto keepPlace = [&](const Result<void>& taken) {
        m_left = length - std::min(length, m_input.position() - before);
        return taken;
    };
    if (header.kind != CpioHeader::Kind::Crc)
        return keepPlace(m_input.deliver(lane, length, fault));
    SummingLane summing(lane);
    TRY(keepPlace(m_input.deliver(summing, length, fault)));
    if (fault && summing.sum() != header.sum)
        fault = Error{ErrorCode::ChecksumMismatch, "cpio: sum of the data"};
    return {};
}

}
