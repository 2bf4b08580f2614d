#pragma once

#include "engine/formats/archive.h"

#include <mutex>

namespace vantoro {

/// The folder in which an archive lies, seen through bare names: the only way in which readers reach other volumes.
class FolderVolumes final : public VolumeProvider {
public:
    explicit FolderVolumes(std::string folder) : m_folder(std::move(folder)) {}

    Result<SourcePtr> openVolume(std::string_view name) override;
    /// Path of a file beside the archive, letter case ignored where the exact name is not there; empty when absent.
    std::string find(std::string_view name) const;
    /// Bare name of the last volume that was asked for in vain.
    std::string missing() const;

private:
    std::string m_folder;
    mutable std::mutex m_mutex;
    mutable std::vector<std::string> m_names; // of the folder, read at the first look that needs it
    mutable bool m_namesKnown = false;
    std::string m_missing;
};

/// A file cut into numbered pieces ("x.7z.001", "x.7z.002" …).
struct CutSet {
    std::vector<std::string> names; ///< bare, from the first piece on
    std::string next; ///< name of the piece behind the last one found
    bool hasGap = false; ///< a piece behind `next` is there
};
/// Nothing when `name` is not such a piece, or is a numbered volume with a header of its own (rar, arj).
std::optional<CutSet> findCutSet(const FolderVolumes& folder, std::string_view name);

}
