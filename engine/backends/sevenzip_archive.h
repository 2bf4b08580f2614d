#pragma once

#include "engine/backends/sevenzip_open.h"

namespace vantoro::sevenzip {

/// An archive that can be looked into without being decoded to somewhere.
class PartsArchive : public Archive {
public:
    /// The data of an entry, readable at any position; null where the format cannot do that.
    virtual SourcePtr part(std::uint64_t entry) const = 0;
};
/// Opens `source` with exactly this handler, as it is.
Result<std::unique_ptr<PartsArchive>> openLayer(const Format& format, const SourcePtr& source,
                                                const OpenContext& context);

/// Opens `source` with exactly this handler of the plug-in library. A disk image that holds one partition or file
/// system is opened down to it.
Result<ArchivePtr> openArchive(const Format& format, SourcePtr source, const OpenContext& context);

/// The file system or partition table that a disk or partition starts with; null when none is known.
const Format* findImageFormat(const ByteSource& source);

}
