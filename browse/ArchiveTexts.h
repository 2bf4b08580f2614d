#pragma once

#include "browse/ArchiveTree.h"
#include "platform/XADArchive.h"

/// The sentences that the page composes of numbers.
namespace vantoro::texts {

/// Between the parts of a line.
QString separator();
/// "12 files, 3 folders, 4.50 MB".
QString folderTotals(const FolderTotals& totals);
/// "Zip · 1,234 entries · 12.00 MB, 4.50 MB packed · encrypted · names in Shift_JIS · 3 volumes".
QString summary(const XADArchiveSummary& about);
/// "12,345 entries".
QString entryCount(qsizetype entries);

}
