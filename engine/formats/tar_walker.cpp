#include "engine/formats/tar_walker.h"

#include <algorithm>

namespace vantoro {

namespace {

std::uint64_t paddingOf(std::uint64_t size) { return (kTarBlock - size % kTarBlock) % kTarBlock; }

EntryKind kindOf(const TarHeader& header, std::string_view name)
{
    switch (header.type) {
    case '1':
        return EntryKind::HardLink;
    case '2':
        return EntryKind::SymbolicLink;
    case '3': // character device
    case '4': // block device
    case '6': // FIFO
    case 'I': // star: inode without a name
    case 'M': // GNU: the rest of a file of the volume before
        return EntryKind::Other;
    case '5':
    case 'D': // GNU: folder with the names in it, from an incremental backup
        return EntryKind::Folder;
    default: // POSIX: what is not known is a file
        return name.ends_with('/') ? EntryKind::Folder : EntryKind::File;
    }
}

bool isAscending(const std::vector<TarExtent>& map, std::uint64_t size, std::uint64_t storedSize)
{
    std::uint64_t end = 0;
    std::uint64_t stored = 0;
    for (const auto& extent : map) {
        if (extent.offset < end || extent.offset > size || extent.length > size - extent.offset)
            return false;
        end = extent.offset + extent.length;
        stored += extent.length; // cannot overflow: the extents are disjoint and within the size
    }
    return stored == storedSize;
}

}

TarWalker::TarWalker(EntryInput& input, const Limits& limits, const CancelToken& cancel)
    : m_input(input)
    , m_limits(limits)
    , m_cancel(cancel)
{
}

void TarWalker::reportDamage(Error error)
{
    if (!m_damage)
        m_damage = error;
}

Result<bool> TarWalker::next(TarMember& member)
{
    TRY(m_cancel.check());
    TRY(finishMember());
    m_own = {};
    m_longName.reset();
    m_longLink.reset();
    m_metaFault.reset();
    for (;;) {
        if (!TRY(findHeader()))
            return false;
        switch (TRY(takeHeader(member))) {
        case Found::Member:
            m_inMember = true;
            return true;
        case Found::End:
            return false;
        case Found::Other:
            break;
        }
    }
}

Result<void> TarWalker::finishMember()
{
    if (!m_inMember)
        return {};
    m_inMember = false;
    const auto skipped = m_input.skip(m_dataLeft);
    m_dataLeft = 0;
    m_input.entryEnded();
    TRY(skipped);
    if (m_padding > 0)
        (void)m_input.skip(m_padding); // a last block that was not filled up lacks nothing
    return {};
}

/// Stands at a header afterwards; false at the end mark, or where the bytes end. A block that is no header is damage:
/// the next one that is goes on.
Result<bool> TarWalker::findHeader()
{
    std::uint64_t searched = 0;
    for (;;) {
        if (searched++ % 128 == 0)
            TRY(m_cancel.check());
        const auto block = TRY(m_input.peek(kTarBlock));
        if (block.size() < kTarBlock) {
            // The oldest tars ended where their tape did.
            if (!block.empty() || !m_isOld)
                reportDamage({ErrorCode::Truncated, "tar: no end mark"});
            return false;
        }
        if (isZeroBlock(block)) {
            const auto two = TRY(m_input.peek(2 * kTarBlock));
            // One zero block is an end mark too, unless a header follows.
            if (two.size() < 2 * kTarBlock || !isPlausibleTarHeader(two.subspan(kTarBlock)))
                return false;
        } else if (m_damage && searched > 1 ? isPlausibleTarHeader(block) : isTarHeader(block)) {
            return true;
        } else {
            reportDamage({ErrorCode::Corrupt, "tar: checksum of a header"});
            m_own = {}; // what stood in front of the damage is not said of the file behind it
            m_longName.reset();
            m_longLink.reset();
        }
        m_input.consume(kTarBlock);
    }
}

Result<TarWalker::Found> TarWalker::takeHeader(TarMember& member)
{
    const auto view = TRY(m_input.peek(kTarBlock));
    std::array<std::byte, kTarBlock> block;
    std::copy(view.begin(), view.end(), block.begin());
    m_input.consume(kTarBlock);
    const auto header = TarHeader::parse(block);
    m_isOld = header.dialect == TarHeader::Dialect::V7;
    if (!header.size || *header.size < 0) {
        // Where the next header lies is not known: it is searched for.
        reportDamage({ErrorCode::Corrupt, "tar: size of a member"});
        return Found::Other;
    }
    const auto size = static_cast<std::uint64_t>(*header.size);
    switch (header.type) {
    case 'x':
    case 'X': // Solaris
        TRY(takeRecords(m_own, size));
        return Found::Other;
    case 'g':
        TRY(takeRecords(m_global, size));
        m_global.size.reset(); // a size is of one file only
        return Found::Other;
    case 'L':
    case 'K': {
        const auto text = TRY(readMeta(size));
        auto name = std::string(asText(text));
        name.resize(std::min(name.find('\0'), name.size()));
        (header.type == 'L' ? m_longName : m_longLink) = std::move(name);
        return Found::Other;
    }
    case 'V': // GNU: name of the volume
    case 'N': // GNU, old: names, made anew by 'L' since
    case 'A': // Solaris: access list
    case 'E': // Solaris: attributes
        TRY(skipPadded(size));
        return Found::Other;
    default:
        break;
    }
    TRY(takeMember(header, member));
    if (header.type == 'S' && !member.isSparse)
        TRY(takeOldSparse(block, member));
    TRY(takeSparse(member));
    return Found::Member;
}

Result<std::vector<std::byte>> TarWalker::readMeta(std::uint64_t size)
{
    std::vector<std::byte> text;
    if (size > m_limits.headerBlock) {
        m_metaFault = Error{ErrorCode::LimitExceeded, "tar: extended header"};
        TRY(skipPadded(size));
        return text;
    }
    while (text.size() < size) {
        const auto wanted = std::min<std::size_t>(static_cast<std::size_t>(size) - text.size(), 64 << 10);
        const auto part = TRY(m_input.peek(wanted));
        if (part.empty())
            return Error{ErrorCode::Truncated, "tar: extended header"};
        text.insert(text.end(), part.begin(), part.end());
        m_input.consume(part.size());
    }
    TRY(m_input.skip(paddingOf(size)));
    return text;
}

Result<void> TarWalker::skipPadded(std::uint64_t size)
{
    TRY(m_input.skip(size));
    return m_input.skip(paddingOf(size));
}

Result<void> TarWalker::takeRecords(TarRecords& records, std::uint64_t size)
{
    const auto text = TRY(readMeta(size));
    if (const auto parsed = records.parse(text); !parsed)
        m_metaFault = parsed.error();
    return {};
}

Result<void> TarWalker::takeMember(const TarHeader& header, TarMember& member)
{
    member.fault = m_metaFault;
    describe(header, member);
    member.storedSize = m_own.size.value_or(static_cast<std::uint64_t>(*header.size));
    const bool hasData = member.kind == EntryKind::File;
    // Links and folders often carry a size without data behind it; some writers do store them.
    m_dataLeft = member.storedSize;
    if (!hasData && m_dataLeft > 0 && header.type != 'D' && header.type != 'M' && !TRY(bodyFollows()))
        m_dataLeft = 0;
    m_padding = paddingOf(m_dataLeft);
    if (!hasData)
        member.storedSize = 0;
    member.size = member.storedSize;
    member.isSparse = false;
    member.sparseMap.clear();
    return {};
}

void TarWalker::describe(const TarHeader& header, TarMember& member) const
{
    const auto choose = [](const auto& own, const auto& global) { return own ? own : global; };
    const auto path = choose(m_own.sparseName, choose(m_own.path, m_global.path));
    const auto link = choose(m_own.linkPath, m_global.linkPath);
    member.name = path ? *path : m_longName ? *m_longName : header.path();
    member.linkTarget = link ? *link : m_longLink ? *m_longLink : std::string(header.linkName);
    const bool isUtf8 = path && !m_own.namesAreBinary && !m_global.namesAreBinary;
    member.nameCharset = isUtf8 ? kCharsetUtf8 : kCharsetUnknown;
    member.owner = choose(m_own.owner, m_global.owner).value_or(std::string(header.owner));
    member.group = choose(m_own.group, m_global.group).value_or(std::string(header.group));
    member.comment = m_own.comment.value_or("");
    const auto time = [](const std::optional<std::int64_t>& seconds) {
        return seconds ? Timestamp{.seconds = *seconds, .isSet = true} : Timestamp{};
    };
    member.modified = choose(m_own.modified, m_global.modified).value_or(time(header.modified));
    member.accessed = choose(m_own.accessed, m_global.accessed).value_or(time(header.accessed));
    member.created = choose(m_own.created, m_global.created).value_or(Timestamp{});
    member.mode.reset();
    if (header.mode && *header.mode >= 0)
        member.mode = static_cast<std::uint32_t>(*header.mode & 07777);
    member.attributes = m_own.attributes;
    member.kind = kindOf(header, member.name);
    if (member.kind != EntryKind::SymbolicLink && member.kind != EntryKind::HardLink)
        member.linkTarget.clear();
    for (auto* text : {&member.name, &member.linkTarget}) {
        if (text->size() > m_limits.nameLength) {
            text->resize(static_cast<std::size_t>(m_limits.nameLength));
            member.fault = Error{ErrorCode::LimitExceeded, "tar: length of a name"};
        }
    }
}

/// Whether the next block is data: neither a header nor the end mark.
Result<bool> TarWalker::bodyFollows()
{
    const auto block = TRY(m_input.peek(kTarBlock));
    return block.size() == kTarBlock && !isZeroBlock(block) && !isPlausibleTarHeader(block);
}

Result<void> TarWalker::takeOldSparse(ConstBytes header, TarMember& member)
{
    member.isSparse = true;
    auto sparse = parseOldSparse(header, member.sparseMap);
    bool goesOn = sparse && sparse->isExtended;
    while (goesOn) {
        const auto block = TRY(m_input.peek(kTarBlock));
        if (block.size() < kTarBlock)
            return Error{ErrorCode::Truncated, "tar: sparse map"};
        const auto more = parseOldSparseExtension(block, member.sparseMap);
        m_input.consume(kTarBlock);
        if (!more)
            member.fault = more.error();
        goesOn = more.value_or(false);
        if (member.sparseMap.size() > m_limits.headerBlock / sizeof(TarExtent)) {
            member.fault = Error{ErrorCode::LimitExceeded, "tar: sparse map"};
            member.sparseMap.clear();
        }
    }
    if (!sparse || !sparse->realSize || *sparse->realSize < 0)
        member.fault = Error{ErrorCode::Corrupt, "tar: sparse header"};
    else
        member.size = m_own.realSize.value_or(static_cast<std::uint64_t>(*sparse->realSize));
    return {};
}

Result<void> TarWalker::takeSparse(TarMember& member)
{
    if (!member.isSparse && member.kind == EntryKind::File) {
        if (m_own.sparseMajor == 1 && m_own.sparseMinor == 0 && m_own.realSize)
            TRY(readMapInData(member));
        else if (m_own.hasSparseMap && m_own.realSize)
            member.sparseMap = m_own.sparseMap;
        else
            return {};
        member.isSparse = true;
        member.size = *m_own.realSize;
    }
    if (member.isSparse && !member.fault && !isAscending(member.sparseMap, member.size, member.storedSize))
        member.fault = Error{ErrorCode::Corrupt, "tar: sparse map"};
    return {};
}

/// GNU 1.0: a count, then offsets and lengths, each number on a line, filled up to whole blocks.
Result<void> TarWalker::readMapInData(TarMember& member)
{
    std::optional<std::uint64_t> left; // numbers still to come
    std::optional<std::uint64_t> offset;
    std::string digits;
    while (!left || *left > 0) {
        const auto block = TRY(m_input.peek(kTarBlock));
        if (block.size() < kTarBlock)
            return Error{ErrorCode::Truncated, "tar: sparse map"};
        if (m_dataLeft < kTarBlock) {
            member.fault = Error{ErrorCode::Corrupt, "tar: sparse map longer than the data"};
            return {};
        }
        for (const char c : asText(block)) {
            if (left && *left == 0)
                break;
            if (c != '\n') {
                digits.push_back(c);
                if (digits.size() > 20)
                    break;
                continue;
            }
            const auto number = parseDecimal(digits);
            digits.clear();
            if (!number || (!left && *number > m_limits.headerBlock / sizeof(TarExtent))) {
                digits.assign(21, ' ');
                break;
            }
            if (!left) {
                left = *number * 2;
                continue;
            }
            if (offset)
                member.sparseMap.push_back({*offset, *number});
            offset = offset ? std::nullopt : number;
            --*left;
        }
        m_input.consume(kTarBlock);
        m_dataLeft -= kTarBlock;
        member.storedSize -= kTarBlock;
        if (digits.size() > 20) {
            member.fault = Error{ErrorCode::Corrupt, "tar: sparse map"};
            return {};
        }
    }
    return {};
}

Result<void> TarWalker::deliver(const TarMember& member, LaneReceiver& lane, Result<void>& fault)
{
    if (member.fault) {
        fault = *member.fault;
        return {};
    }
    const auto give = [&](std::uint64_t length) -> Result<void> {
        const auto before = m_input.position();
        const auto taken = m_input.deliver(lane, length, fault);
        m_dataLeft -= std::min(m_dataLeft, m_input.position() - before);
        return taken;
    };
    if (!member.isSparse)
        return give(member.storedSize);
    std::uint64_t at = 0;
    for (const auto& extent : member.sparseMap) {
        if (extent.offset > at)
            TRY(lane.hole(extent.offset - at));
        TRY(give(extent.length));
        if (!fault)
            return {};
        at = extent.offset + extent.length;
    }
    if (member.size > at)
        TRY(lane.hole(member.size - at));
    return {};
}

}
