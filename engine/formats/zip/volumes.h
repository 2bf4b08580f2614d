#pragma once

#include "engine/formats/zip/headers.h"

namespace vantoro::zip {

/// The parts of an archive one behind the other. Positions in headers count from the start of a part ("disk").
struct VolumeSet {
    SourcePtr source; ///< all parts joined; reading where a part is missing gives MissingVolume
    std::vector<std::uint64_t> starts; ///< of each part in `source`
    std::vector<std::string> names; ///< empty for a single file
    std::string missing; ///< the first part that is not there
    std::optional<EndRecord> end; ///< in positions of `source`; nothing when there is none

    /// Position in `source`; nothing when there is no such part or it is beyond its end.
    std::optional<std::uint64_t> locate(std::uint64_t disk, std::uint64_t offset) const;
};

/// Finds the end record and, by its number of disks and the name, the other parts: x.z01, x.z02 … x.zip and
/// x.zx01 … x.zipx, from whichever was opened. MissingVolume when the last one is not there.
Result<VolumeSet> openVolumes(SourcePtr opened, const OpenContext& context);

/// Whether `name` is that of a part but the last.
bool isPartName(std::string_view name);

/// The end record of a file, positions and offsets as stored.
Result<std::optional<EndRecord>> findEndRecord(const ByteSource& source);

}
