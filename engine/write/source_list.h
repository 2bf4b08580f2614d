#pragma once

#include "engine/formats/archive.h"
#include "engine/write/options.h"

#include <sys/stat.h>

namespace vantoro {

/// One entry to be written.
struct SourceItem {
    std::string path;
    std::string name; ///< in the archive, '/' between components, none in front or behind
    EntryKind kind = EntryKind::File; ///< File, Folder or SymbolicLink
    std::uint64_t size = 0; ///< of a file when it was looked at
    std::uint32_t mode = 0; ///< with type bits
    std::uint32_t userId = 0, groupId = 0;
    Timestamp modified, accessed;
    std::string linkTarget;
};

struct SourceList {
    std::vector<SourceItem> items; ///< folders before what they hold
    std::vector<CreateProblem> problems;
    std::uint64_t totalSize = 0;
};

/// Walks the inputs; links are not followed. Devices, pipes, sockets and the archive itself (`target`) are left out and
/// reported. Cancelled when asked to stop.
Result<SourceList> collectSources(const std::vector<CreateInput>& inputs, const CreateOptions& options,
                                  const std::string& target);

/// Opens a file of the list for reading. SourceUnreadable when it vanished or is no regular file any more.
Result<int> openSourceFile(const SourceItem& item, struct stat* status);

}
