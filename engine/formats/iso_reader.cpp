#include "engine/formats/iso_reader.h"

#include "engine/codecs/zisofs.h"
#include "engine/formats/side_by_side.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::uint64_t kCopyStep = 8 << 20; // the stop flag is asked between steps
constexpr std::size_t kDecodeStep = 256 << 10;
constexpr std::size_t kRunEntries = 256;
constexpr std::uint64_t kRunBytes = 8 << 20;

/// Cuts what the walker finds into runs of neighbours.
class IsoCutter {
public:
    IsoCutter(IsoWalker& walker, const ReadRequest& request) : m_walker(walker), m_request(request) {}

    Result<std::optional<std::vector<IsoItem>>> next()
    {
        std::vector<IsoItem> run;
        std::uint64_t bytes = 0;
        for (;;) {
            if (!m_ahead)
                m_ahead = TRY(nextChosen());
            if (!m_ahead || (!run.empty() && (run.size() == kRunEntries || bytes > kRunBytes || !isNeighbour(run))))
                break;
            bytes += m_ahead->size();
            run.push_back(*std::move(m_ahead));
            m_ahead.reset();
        }
        return run.empty() ? std::nullopt : std::optional(std::move(run));
    }

private:
    Result<std::optional<IsoItem>> nextChosen()
    {
        while (const auto* item = TRY(m_walker.next())) {
            if (m_request.isChosen(item->index))
                return std::optional(*item);
            if (m_request.selection->empty() || item->index > m_request.selection->back())
                break;
        }
        return std::optional<IsoItem>();
    }
    bool isNeighbour(const std::vector<IsoItem>& run) const
    {
        const auto folder
            = [](const IsoItem& item) { return std::string_view(item.path).substr(0, item.path.rfind('/') + 1); };
        return folder(run.back()) == folder(*m_ahead);
    }

    IsoWalker& m_walker;
    const ReadRequest& m_request;
    std::optional<IsoItem> m_ahead;
};

}

Entry IsoReader::describe(const IsoItem& item) const
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

Result<void> IsoReader::read(const IsoItem& item, const Entry& entry, LaneReceiver& lane) const
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
    return stopsAll ? outcome : lane.end(outcome);
}

Result<void> IsoReader::copyExtents(const IsoItem& item, LaneReceiver& lane, bool& stopsAll) const
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

Result<void> IsoReader::decodeZisofs(const IsoItem& item, LaneReceiver& lane, bool& stopsAll) const
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

Result<void> IsoReader::readAll(IsoWalker& walker, const ReadRequest& request, Lanes& lanes) const
{
    IsoCutter cutter(walker, request);
    const auto readRun = [&](const std::vector<IsoItem>& run, LaneReceiver& lane) -> Result<void> {
        for (const auto& item : run) {
            TRY(m_cancel.check());
            auto entry = describe(item);
            if (item.kind == EntryKind::HardLink && !request.isChosen(item.firstIndex)) {
                entry.kind = EntryKind::File; // the file itself is not wanted, so this name stands for it
                entry.linkTarget = {};
                entry.size = item.size();
            }
            TRY(read(item, entry, lane));
            if (request.packedBytesRead)
                request.packedBytesRead->fetch_add(item.packedSize, std::memory_order_relaxed);
        }
        return {};
    };
    return readSideBySide(
        lanes, lanes.count(), [&] { return cutter.next(); },
        [&](LaneReceiver& lane) { return [&](const std::vector<IsoItem>& run) { return readRun(run, lane); }; });
}

}
