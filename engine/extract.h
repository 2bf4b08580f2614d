#pragma once

#include "engine/extract/hidden_folder.h"
#include "engine/extract/options.h"
#include "engine/extract/orphan_file.h"
#include "engine/extract/printable.h"
#include "engine/extract/report.h"
#include "engine/extract/unique_path.h"
#include "engine/open.h"

namespace vantoro {

/// Extracts into a hidden folder ".Vantoro<n>" of the destination and renames the result to a free name at the end.
/// On an Error nothing is left in the destination (FolderMode::Never: whole files stay).
Result<ExtractReport> extractArchive(OpenedArchive& archive, const ExtractOptions& options, ExtractDelegate& delegate,
                                     const CancelToken& cancel = {});

/// The same without the last step, for callers that place the result themselves: `options.hiddenFolderPath` is made,
/// stays, and holds `createdItem`; AlreadyExists when that name is taken. The caller removes it with
/// removeHiddenFolder().
Result<ExtractReport> extractIntoHiddenFolder(OpenedArchive& archive, const ExtractOptions& options,
                                              ExtractDelegate& delegate, const CancelToken& cancel = {});

}
