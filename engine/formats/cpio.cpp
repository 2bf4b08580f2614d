#include "engine/formats/cpio.h"

#include "engine/formats/cpio_walker.h"

#include <algorithm>

namespace vantoro {

namespace {

bool stopsAtOnce(const Error& error)
{
    return error.code == ErrorCode::Cancelled || error.code == ErrorCode::OutOfMemory
        || error.code == ErrorCode::Internal || error.code == ErrorCode::LimitExceeded;
}

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

class CpioArchive final : public Archive {
public:
    CpioArchive(SourcePtr source, StreamFactory stream, const OpenContext& context)
        : m_source(std::move(source))
        , m_stream(std::move(stream))
        , m_cancel(context.cancel)
        , m_limits(context.limits)
    {
        m_info.format = "cpio";
        m_info.listsCheaply = m_source != nullptr;
    }

    const ArchiveInfo& info() const override { return m_info; }

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
        const auto isChosen = [&](std::uint64_t index) {
            return !request.selection
                || std::binary_search(request.selection->begin(), request.selection->end(), index);
        };
        return walk(request.packedBytesRead, [&](CpioWalker& walker, std::span<CpioMember> members) {
            return readMembers(walker, members, isChosen, lanes.lane(0));
        });
    }

private:
    /// Calls `step` for the members that belong together. Its outer Result stops everything; the inner one says that
    /// the input can be read no further.
    template <class F> Result<void> walk(std::atomic<std::uint64_t>* counter, F&& step)
    {
        m_info.damage.reset();
        m_info.firstDoubtfulEntry.reset();
        const auto input = m_source ? std::make_unique<EntryInput>(m_source, counter, m_cancel)
                                    : std::make_unique<EntryInput>(TRY(m_stream()), m_cancel);
        CpioWalker walker(*input, m_limits);
        std::uint64_t count = 0;
        for (;;) {
            TRY(m_cancel.check());
            const auto members = walker.next();
            if (!members)
                return endWithFault(members.error(), *input, count);
            if (members->empty())
                break;
            count += members->size();
            const auto fault = TRY(step(walker, *members));
            if (!fault)
                return endWithFault(fault.error(), *input, count);
        }
        if (m_source)
            return {};
        const auto drained = input->drain(); // so that the checksum of what is around the archive is met
        return drained ? drained : endWithFault(drained.error(), *input, count);
    }

    /// The data go to the first name that is wanted; the others become links to it.
    template <class F>
    Result<Result<void>> readMembers(CpioWalker& walker, std::span<CpioMember> members, F&& isChosen,
                                     LaneReceiver& lane)
    {
        const CpioMember* first = nullptr;
        for (auto& member : members) {
            if (!isChosen(member.index))
                continue;
            if (first) {
                member.linkTarget = first->name;
                TRY(begin(member, lane));
                continue;
            }
            // A link whose file is not wanted stands for it, where its data are at hand.
            const bool replacesFile = &member != &members.front()
                || (member.kind == EntryKind::HardLink && !member.header.storesDataOnce()
                    && !isChosen(member.targetIndex));
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

    /// The bytes cannot be read any further. What was delivered stays, as far as it can be trusted.
    Result<void> endWithFault(const Error& error, const EntryInput& input, std::uint64_t entries)
    {
        if (stopsAtOnce(error) || (entries == 0 && error.code != ErrorCode::TrailingData))
            return error;
        m_info.damage = error;
        const bool castsDoubt = error.code == ErrorCode::ChecksumMismatch || error.code == ErrorCode::Corrupt
            || error.code == ErrorCode::SizeMismatch;
        if (!m_source && castsDoubt && input.trustedEntries() < entries)
            m_info.firstDoubtfulEntry = input.trustedEntries();
        return {};
    }

    SourcePtr m_source; // one of the two
    StreamFactory m_stream;
    CancelToken m_cancel;
    Limits m_limits;
    ArchiveInfo m_info;
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
