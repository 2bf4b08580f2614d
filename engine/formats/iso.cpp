#include "engine/formats/iso.h"

#include "engine/codecs/zisofs.h"
#include "engine/formats/iso_walker.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::uint64_t kCopyStep = 8 << 20; // the stop flag is asked between steps
constexpr std::size_t kDecodeStep = 256 << 10;

class IsoArchive final : public Archive {
public:
    IsoArchive(SourcePtr source, const IsoVolume& volume, const OpenContext& context)
        : m_source(std::move(source))
        , m_volume(volume)
        , m_cancel(context.cancel)
        , m_limits(context.limits)
    {
        m_info.format = "iso";
    }

    const ArchiveInfo& info() const override { return m_info; }

    Result<void> list(EntryVisitor& visitor) override
    {
        IsoWalker walker(*m_source, m_volume, m_limits);
        while (const auto* item = TRY(walker.next())) {
            TRY(m_cancel.check());
            TRY(visitor.visit(describe(*item)));
        }
        m_info.damage = walker.damage();
        return {};
    }

    Result<void> read(const ReadRequest& request, Lanes& lanes) override
    {
        IsoWalker walker(*m_source, m_volume, m_limits);
        const auto isChosen = [&](std::uint64_t index) {
            return !request.selection
                || std::binary_search(request.selection->begin(), request.selection->end(), index);
        };
        while (const auto* item = TRY(walker.next())) {
            TRY(m_cancel.check());
            if (!isChosen(item->index))
                continue;
            auto entry = describe(*item);
            if (item->kind == EntryKind::HardLink && !isChosen(item->firstIndex)) {
                entry.kind = EntryKind::File; // the file itself is not wanted, so this name stands for it
                entry.linkTarget = {};
                entry.size = item->size();
            }
            TRY(readItem(*item, entry, lanes.lane(0), request.packedBytesRead));
        }
        m_info.damage = walker.damage();
        return {};
    }

private:
    Entry describe(const IsoItem& item) const
    {
        Entry entry;
        entry.index = item.index;
        entry.name = item.path;
        entry.nameCharset = m_volume.names == IsoVolume::Names::Joliet ? kCharsetUtf8 : kCharsetUnknown;
        entry.kind = item.kind;
        entry.modified = item.modified;
        entry.created = item.rockRidge.created;
        entry.accessed = item.rockRidge.accessed;
        entry.mode = item.rockRidge.mode;
        if (item.kind == EntryKind::File || item.kind == EntryKind::ResourceFork) {
            entry.size = item.size();
            entry.packedSize = item.packedSize;
            entry.method = item.rockRidge.zisofs ? "zisofs" : "";
        }
        if (item.kind == EntryKind::HardLink)
            entry.linkTarget = item.firstPath;
        else if (item.rockRidge.linkTarget)
            entry.linkTarget = *item.rockRidge.linkTarget;
        return entry;
    }

    Result<void> readItem(const IsoItem& item, const Entry& entry, LaneReceiver& lane,
                          std::atomic<std::uint64_t>* packedBytesRead) const
    {
        if (TRY(lane.begin(entry)) == LaneReceiver::Want::Skip)
            return {};
        if (entry.kind != EntryKind::File && entry.kind != EntryKind::ResourceFork)
            return lane.end({});
        Result<void> outcome;
        bool stopsAll = false; // the receiver's wish or the user's, not this entry's damage
        if (item.isInterleaved)
            outcome = Error{ErrorCode::UnsupportedFeature, "iso: interleaved file"};
        else if (item.rockRidge.zisofs)
            outcome = decodeZisofs(item, lane, stopsAll);
        else
            outcome = copyExtents(item, lane, stopsAll);
        if (stopsAll)
            return outcome;
        if (packedBytesRead)
            packedBytesRead->fetch_add(item.packedSize, std::memory_order_relaxed);
        return lane.end(outcome);
    }

    Result<void> copyExtents(const IsoItem& item, LaneReceiver& lane, bool& stopsAll) const
    {
        for (const auto& extent : item.extents) {
            for (std::uint64_t done = 0; done < extent.length;) {
                const auto step = std::min(extent.length - done, kCopyStep);
                auto copied = m_cancel.check();
                if (copied)
                    copied = lane.copy(*m_source, extent.position + done, step, nullptr);
                if (!copied) {
                    const auto code = copied.error().code;
                    stopsAll = code != ErrorCode::Io && code != ErrorCode::Truncated && code != ErrorCode::EntryRefused;
                    return copied;
                }
                done += step;
            }
        }
        return {};
    }

    Result<void> decodeZisofs(const IsoItem& item, LaneReceiver& lane, bool& stopsAll) const
    {
        if (!item.rockRidge.zisofs->isKnownVersion)
            return Error{ErrorCode::UnsupportedMethod, "iso: zisofs version"};
        std::vector<SourcePtr> parts;
        for (const auto& extent : item.extents)
            parts.push_back(windowSource(m_source, extent.position, extent.length));
        const auto stream = TRY(openZisofs(joinedSource(std::move(parts)), item.size(), m_cancel));
        for (;;) {
            const auto into = lane.room(kDecodeStep);
            const auto count = stream->read(into);
            stopsAll = !count && count.error().code == ErrorCode::Cancelled;
            if (TRY(count) == 0)
                return {};
            const auto taken = lane.data(into.first(*count));
            stopsAll = !taken && taken.error().code != ErrorCode::EntryRefused;
            TRY(taken);
        }
    }

    SourcePtr m_source;
    IsoVolume m_volume;
    CancelToken m_cancel;
    Limits m_limits;
    ArchiveInfo m_info;
};

Match probeIso(const ProbeInput& input)
{
    constexpr std::size_t kFirst = kIsoDescriptors, kLast = 32 * kIsoSector;
    if (input.head.size() < kFirst + kIsoSector || asText(input.head.subspan(kFirst + 1, 5)) != "CD001")
        return Match::No;
    for (std::size_t at = kFirst; at < kLast && at + kIsoSector <= input.head.size(); at += kIsoSector) {
        const auto id = asText(input.head.subspan(at + 1, 5));
        if (id == "NSR02" || id == "NSR03")
            return Match::Likely;
    }
    return Match::Sure;
}

Result<ArchivePtr> openIso(SourcePtr source, const OpenContext& context)
{
    const auto volume = TRY(IsoVolume::open(*source));
    return ArchivePtr(std::make_unique<IsoArchive>(std::move(source), volume, context));
}

constexpr std::string_view kExtensions[] = {"iso", "cdr"};

}

constexpr FormatRow kIsoFormat{"iso", "ISO 9660 disc image", kExtensions, &probeIso, &openIso};

}
