#pragma once

#include "engine/extract/filesystem.h"

#include <string>
#include <vector>

namespace vantoro {

/// Keeps the list of hidden folders in a file, so that a later start can sweep after a crash.
class OrphanList {
public:
    virtual ~OrphanList() = default;
    virtual void remember(const std::string& path) = 0; ///< before the folder is made; outlives this process
    virtual void forget(const std::string& path) = 0;
    /// The work takes its time: what is listed shall outlive a power cut as well.
    virtual void settle() {}
};
/// Null: none is kept. Process-wide, set once at start; outlives every extraction.
void setOrphanList(OrphanList* list);
void settleOrphanList();

/// Removes a ".Vantoro<n>" folder that this process made or that sweepOrphans() would remove; never through a link.
void removeHiddenFolder(const std::string& path);
/// Removes the hidden folders of dead processes among `paths`: name matches, a real folder of ours, lock free.
/// Returns those that are gone now, removed or missing.
std::vector<std::string> sweepOrphans(const std::vector<std::string>& paths);

/// A ".Vantoro<n>" of this process: locked while it stands, removed with everything in it at the end.
class HiddenFolder {
public:
    /// The next free number in `destination`, which is `destinationPath`.
    static Result<HiddenFolder> create(int destination, const std::string& destinationPath);
    /// This very folder; AlreadyExists when the name is taken.
    static Result<HiddenFolder> createAt(const std::string& path);

    HiddenFolder(HiddenFolder&&) noexcept = default;
    HiddenFolder& operator=(HiddenFolder&&) = delete;
    ~HiddenFolder() { remove(); }

    int fd() const { return m_folder.get(); }
    const std::string& path() const { return m_path; }
    void remove();
    /// Stays, locked, until removeHiddenFolder() or the end of the process.
    void leaveStanding();

private:
    HiddenFolder(UniqueFd parent, std::string name, std::string path, UniqueFd folder);
    static Result<HiddenFolder> tryCreate(int parent, const std::string& name, const std::string& path);

    UniqueFd m_parent;
    std::string m_name;
    std::string m_path;
    UniqueFd m_folder; ///< holds the lock; empty once removed or left
};

}
