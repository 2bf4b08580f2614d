#pragma once

#include "engine/extract/options.h"
#include "engine/extract/report.h"
#include "engine/extract/workspace.h"

#include <time.h>

namespace vantoro {

/// What an extraction knows of the archive besides its entries.
struct ArchiveFacts {
    std::string stem; ///< its name without extensions: of the enclosing folder
    std::uint64_t packedSize = 0; ///< of all volumes
    std::optional<timespec> date; ///< of the archive's own file
    std::string originUrl; ///< mark of where it was downloaded from, inherited by the files; empty: none
};

/// Extracts `archive`. The archive is read and the files are written on threads of the extraction; the delegate is
/// called on this one. On an Error nothing is left (FolderMode::Never: whole files stay).
Result<ExtractReport> runExtraction(Archive& archive, const ArchiveFacts& facts, const ExtractOptions& options,
                                    Ending ending, ExtractDelegate& delegate, const CancelToken& cancel);

}
