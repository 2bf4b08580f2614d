#pragma once

#include "engine/extract/hidden_folder.h"

#include <mutex>

namespace vantoro {

/// The list of hidden folders as a text file, a path a line, shared by all processes of a user. Where the file cannot
/// be kept, extractions go on without it.
class OrphanFile final : public OrphanList {
public:
    /// Makes the folders of `path` when there is something to remember.
    explicit OrphanFile(std::string path) : m_path(std::move(path)) {}

    void remember(const std::string& path) override;
    void forget(const std::string& path) override;
    void settle() override;
    /// Removes what dead processes have left; at start.
    void sweep();

private:
    class Locked;

    const std::string m_path;
    std::mutex m_mutex;
};

/// $XDG_STATE_HOME/vantoro/unfinished or its usual place; empty when there is no home.
std::string defaultOrphanFilePath();

}
