#pragma once

#include "engine/formats/iso_walker.h"

namespace vantoro {

/// Turns items of a volume into entries and delivers their data.
class IsoReader {
public:
    IsoReader(SourcePtr source, const IsoVolume& volume, CancelToken cancel)
        : m_source(std::move(source))
        , m_volume(volume)
        , m_cancel(std::move(cancel))
    {
    }

    /// Views into `item`.
    Entry describe(const IsoItem& item) const;
    Result<void> read(const IsoItem& item, const Entry& entry, LaneReceiver& lane) const;

    /// Everything that `request` names, on as many threads as there are lanes and work for: what costs most is making
    /// the files. A lane gets runs of neighbouring entries of one folder, so that two threads seldom create files in
    /// the same one.
    Result<void> readAll(IsoWalker& walker, const ReadRequest& request, Lanes& lanes) const;

private:
    Result<void> copyExtents(const IsoItem& item, LaneReceiver& lane, bool& stopsAll) const;
    Result<void> decodeZisofs(const IsoItem& item, LaneReceiver& lane, bool& stopsAll) const;

    SourcePtr m_source;
    const IsoVolume& m_volume;
    CancelToken m_cancel;
};

}
