#pragma once

#include <string>
#include <vector>

namespace vantoro {

/// Keeps the list of hidden folders in a file, so that a later start can sweep after a crash.
class OrphanList {
public:
    virtual ~OrphanList() = default;
    virtual void remember(const std::string& path) = 0; ///< before the folder is made; on disk on return
    virtual void forget(const std::string& path) = 0;
};
/// Null: none is kept. Process-wide, set once at start; outlives every extraction.
void setOrphanList(OrphanList* list);

/// Removes a ".Vantoro<n>" folder that this process made or that sweepOrphans() would remove; never through a link.
void removeHiddenFolder(const std::string& path);
/// Removes the hidden folders of dead processes among `paths`: name matches, a real folder of ours, lock free.
/// Returns those that are gone now, removed or missing.
std::vector<std::string> sweepOrphans(const std::vector<std::string>& paths);

}
