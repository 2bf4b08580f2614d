#pragma once

#include "browse/ArchiveTree.h"
#include "browse/KXUnarchiveWrapper.h"

namespace vantoro {

/// The archive that the page shows. Copies share it, so that work under way outlives a change of archives.
struct BrowsedArchive {
    std::shared_ptr<KXUnarchiveWrapper> wrapper; ///< null: no archive is open
    std::shared_ptr<const ArchiveTree> tree; ///< everything
    std::shared_ptr<const ArchiveTree> shown; ///< what the filter leaves; nodes that the page names are this tree's

    bool isOpen() const { return wrapper != nullptr; }
    QString path() const { return wrapper ? wrapper->archivePath() : QString(); }
    qsizetype entryCount() const { return wrapper ? wrapper->archiveContents()->count() : 0; }
};

}
