#include "engine/formats/cpio.h"

#include "engine/formats/cpio_walker.h"
#include "engine/formats/sequential_archive.h"

namespace vantoro {

namespace {

/// Views into `member`.
Entry describe(const CpioMember& member)
{
    Entry entry;
    entry.index = member.index;
    entry.name = member.name;
    entry.kind = member.kind;
    if (member.kind == EntryKind::File)
        entry.size = entry.packedSize = member.header.size;
    entry.modified.seconds = member.header.modified;
    entry.modified.isSet = true;
    entry.mode = member.header.mode;
    entry.linkTarget = member.linkTarget;
    return entry;
}

class CpioArchive final : public SequentialArchive {
public:
    CpioArchive(SourcePtr source, StreamFactory stream, const OpenContext& context)
        : SequentialArchive("cpio", std::move(source), std::move(stream), context)
    {
    }

    Result<void> list(EntryVisitor& visitor) override
    {
        return walk(nullptr, [&](CpioWalker&, std::span<CpioMember> members) -> Result<Result<void>> {
            for (const auto& member : members)
                TRY(visitor.visit(describe(member)));
            return Result<void>();
        });
    }

    Result<void> read(const ReadRequest& request, Lanes& lanes) override
    {
        return walk(request.packedBytesRead, [&](CpioWalker& walker, std::span<CpioMember> members) {
            return readMembers(walker, members, request, lanes.lane(0));
        });
    }

private:
    /// Calls `step` for the members that belong together. Its outer Result stops everything; the inner one says that
    /// the input can be read no further.
    template <class F> Result<void> walk(std::atomic<std::uint64_t>* counter, F&& step)
    {
        const auto input = TRY(openInput(counter));
        CpioWalker walker(*input, limits());
        std::uint64_t count = 0;
        const auto endWith = [&](const Error& error) -> Result<void> {
            return error.code == ErrorCode::LimitExceeded ? error : endWithFault(error, *input, count);
        };
        for (;;) {
            TRY(cancel().check());
            const auto members = walker.next();
            if (!members)
                return endWith(members.error());
            if (members->empty())
                return finish(*input, count);
            count += members->size();
            const auto fault = TRY(step(walker, *members));
            if (!fault)
                return endWith(fault.error());
        }
    }

    /// The data go to the first name that is wanted; the others become links to it.
    Result<Result<void>> readMembers(CpioWalker& walker, std::span<CpioMember> members, const ReadRequest& request,
                                     LaneReceiver& lane)
    {
        const CpioMember* first = nullptr;
        for (auto& member : members) {
            if (!request.isChosen(member.index))
                continue;
            if (first) {
                member.linkTarget = first->name;
                TRY(begin(member, lane));
                continue;
            }
            // A link whose file is not wanted stands for it, where its data are at hand.
            const bool replacesFile = &member != &members.front()
                || (member.kind == EntryKind::HardLink && !member.header.storesDataOnce()
                    && !request.isChosen(member.targetIndex));
            const bool hasData = member.kind == EntryKind::File || replacesFile;
            if (hasData)
                member.kind = EntryKind::File;
            first = &member;
            const auto fault = TRY(readMember(walker, member, hasData, lane));
            if (!fault)
                return fault;
        }
        return Result<void>();
    }

    /// What has no data is complete at once.
    static Result<void> begin(const CpioMember& member, LaneReceiver& lane)
    {
        if (TRY(lane.begin(describe(member))) == LaneReceiver::Want::Skip)
            return {};
        return lane.end({});
    }

    Result<Result<void>> readMember(CpioWalker& walker, const CpioMember& member, bool hasData, LaneReceiver& lane)
    {
        if (!hasData) {
            TRY(begin(member, lane));
            return Result<void>();
        }
        if (TRY(lane.begin(describe(member))) == LaneReceiver::Want::Skip)
            return Result<void>();
        Result<void> fault;
        auto taken = walker.deliver(lane, fault);
        if (!taken && taken.error().code != ErrorCode::EntryRefused)
            return taken.error();
        if (!fault && stopsAtOnce(fault.error()))
            return fault.error();
        TRY(lane.end(taken ? fault : taken));
        // A wrong sum is this entry's alone.
        return fault || fault.error().code == ErrorCode::ChecksumMismatch ? Result<void>() : fault;
    }
};

Match probeCpio(const ProbeInput& input)
{
    const auto header = CpioHeader::parse(input.head);
    if (!header || header->nameSize < 2 || header->nameSize > 4096
        || input.head.size() < header->length() + header->nameSize)
        return Match::No;
    const auto name = asText(input.head.subspan(header->length(), header->nameSize));
    if (name.find('\0') != name.size() - 1)
        return Match::No;
    const bool isText = header->storesDataOnce() || header->kind == CpioHeader::Kind::Odc;
    return isText ? Match::Sure : Match::Likely;
}

Result<ArchivePtr> openCpio(SourcePtr source, const OpenContext& context)
{
    return ArchivePtr(std::make_unique<CpioArchive>(std::move(source), nullptr, context));
}

Result<ArchivePtr> openCpioStream(StreamFactory stream, const OpenContext& context)
{
    return ArchivePtr(std::make_unique<CpioArchive>(nullptr, std::move(stream), context));
}

constexpr std::string_view kExtensions[] = {"cpio"};

}

const FormatRow kCpioFormat{"cpio", "cpio archive", kExtensions, &probeCpio, &openCpio, &openCpioStream};

}
