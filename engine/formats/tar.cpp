#include "engine/formats/tar.h"

#include "engine/formats/sequential_archive.h"
#include "engine/formats/tar_walker.h"

#include <algorithm>

namespace vantoro {

namespace {

/// Makes an Entry of a member; the views last as long as the member.
class EntryView {
public:
    const Entry& show(const TarMember& member, std::uint64_t index)
    {
        m_entry = {};
        m_entry.index = index;
        m_entry.name = member.name;
        m_entry.nameCharset = member.nameCharset;
        m_entry.kind = member.kind;
        if (member.kind == EntryKind::File) {
            m_entry.size = member.size;
            m_entry.packedSize = member.storedSize;
        }
        m_entry.modified = member.modified;
        m_entry.accessed = member.accessed;
        m_entry.created = member.created;
        m_entry.mode = member.mode;
        m_entry.owner = member.owner;
        m_entry.group = member.group;
        m_entry.comment = member.comment;
        m_entry.linkTarget = member.linkTarget;
        m_attributes.clear();
        for (const auto& [name, value] : member.attributes)
            m_attributes.push_back({name, asBytes(value)});
        m_entry.attributes = m_attributes;
        return m_entry;
    }

private:
    Entry m_entry;
    std::vector<ExtendedAttribute> m_attributes;
};

class TarArchive final : public SequentialArchive {
public:
    TarArchive(SourcePtr source, StreamFactory stream, const OpenContext& context)
        : SequentialArchive("tar", std::move(source), std::move(stream), context)
    {
    }

    Result<void> list(EntryVisitor& visitor) override
    {
        auto input = TRY(openInput(nullptr));
        TarWalker walker(*input, limits(), cancel());
        EntryView view;
        TarMember member;
        std::uint64_t index = 0;
        for (;;) {
            const auto more = walker.next(member);
            if (!more)
                return endWithFault(more.error(), *input, index, walker.damage());
            if (!*more)
                return finish(*input, index, walker.damage());
            if (index == limits().entries)
                return Error{ErrorCode::LimitExceeded, "tar: number of entries"};
            TRY(visitor.visit(view.show(member, index++)));
        }
    }

    Result<void> read(const ReadRequest& request, Lanes& lanes) override
    {
        auto input = TRY(openInput(request.packedBytesRead));
        TarWalker walker(*input, limits(), cancel());
        EntryView view;
        TarMember member;
        auto& lane = lanes.lane(0);
        std::size_t chosen = 0; // of the selection, passed
        std::uint64_t index = 0;
        for (;;) {
            // Without a checksum around it nothing behind the last chosen entry matters.
            if (!isStream() && request.selection && chosen == request.selection->size())
                return {};
            const auto more = walker.next(member);
            if (!more)
                return endWithFault(more.error(), *input, index, walker.damage());
            if (!*more)
                return finish(*input, index, walker.damage());
            const auto current = index++;
            if (request.selection) {
                if (chosen == request.selection->size() || (*request.selection)[chosen] != current)
                    continue;
                ++chosen;
            }
            const auto fault = TRY(readMember(walker, view.show(member, current), member, lane));
            if (!fault && fault.error().code != ErrorCode::EntryRefused && !member.fault)
                return endWithFault(fault.error(), *input, index, walker.damage());
        }
    }

private:
    /// Errors of the receiver are returned as they are; the inner result is the entry's.
    Result<Result<void>> readMember(TarWalker& walker, const Entry& entry, const TarMember& member, LaneReceiver& lane)
    {
        if (TRY(lane.begin(entry)) == LaneReceiver::Want::Skip)
            return Result<void>();
        Result<void> fault;
        const auto taken = walker.deliver(member, lane, fault);
        if (!taken && taken.error().code != ErrorCode::EntryRefused)
            return taken.error();
        if (!taken)
            fault = taken;
        if (!fault && stopsAtOnce(fault.error()))
            return fault.error();
        TRY(lane.end(fault));
        return fault;
    }
};

bool isNamedTar(std::string_view name)
{
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos)
        return false;
    std::string extension(name.substr(dot + 1));
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
    return extension == "tar" || extension == "gtar" || extension == "pax";
}

Match probeTar(const ProbeInput& input)
{
    constexpr std::size_t kLargestEmpty = 64 << 10;
    const auto head = input.head;
    if (head.size() < kTarBlock)
        return Match::No;
    if (isPlausibleTarHeader(head))
        return asText(head.subspan(257, 5)) == "ustar" ? Match::Sure : Match::Likely;
    // An end mark and nothing else is an empty tar only if the file is small and says so: images begin with zeros too.
    const bool isWhole = !input.source || input.source->size() == head.size();
    const bool isEmptyTar = isWhole && head.size() <= kLargestEmpty && head.size() % kTarBlock == 0
        && head.size() >= 2 * kTarBlock && isZeroBlock(head);
    return isEmptyTar && isNamedTar(input.name) ? Match::ByName : Match::No;
}

Result<ArchivePtr> openTar(SourcePtr source, const OpenContext& context)
{
    return ArchivePtr(std::make_unique<TarArchive>(std::move(source), nullptr, context));
}

Result<ArchivePtr> openTarStream(StreamFactory stream, const OpenContext& context)
{
    return ArchivePtr(std::make_unique<TarArchive>(nullptr, std::move(stream), context));
}

constexpr std::string_view kExtensions[] = {"tar", "gtar", "pax", "cbt"};

}

const FormatRow kTarFormat{"tar", "tar archive", kExtensions, &probeTar, &openTar, &openTarStream};

}
