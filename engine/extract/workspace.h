#pragma once

#include "engine/extract/hidden_folder.h"
#include "engine/extract/options.h"
#include "engine/io/cancel.h"

#include <optional>
#include <span>

namespace vantoro {

/// Where the result of an extraction ends up.
enum class Ending : std::uint8_t {
    InDestination, ///< renamed to a free name there
    InHiddenFolder, ///< stays in options.hiddenFolderPath
};

/// The places of one job: the destination, the hidden folder, and in that the root that entries are written into. Gone
/// at the end with all that has not been moved out.
class Workspace {
public:
    struct RootItem {
        std::string name;
        bool isFolder;
    };

    static Result<Workspace> create(const ExtractOptions& options, Ending ending);

    /// A handle of the root.
    Result<UniqueFd> root() const;
    int anyFolder() const { return m_hidden.fd(); } ///< on the file system that is written to
    mode_t umask() const { return m_umask; }
    bool isInMemory() const { return m_isInMemory; } ///< tmpfs and the like
    bool tellsNamesApart() const; ///< "a" from "A", and composed letters from others
    bool hasForeignLink(const std::string& name) const;

    /// Everything of the job on disk, so that a power cut shows all or nothing. Cancelled when it takes too long.
    Result<void> flush(const CancelToken& cancel) const;
    /// Renames the one item `name` of the root, or the root itself as `name`, to a free name. Returns the path.
    Result<std::string> moveItem(const std::string& name, bool isFolder, std::optional<timespec> date);
    /// Renames all of these items of the root to free names, or none of them.
    Result<void> moveItems(std::span<const RootItem> items);
    Result<std::string> moveRoot(const std::string& name, std::optional<timespec> date);
    void keep() { m_hidden.leaveStanding(); }

private:
    Workspace(UniqueFd destination, HiddenFolder hidden, UniqueFd root, std::string resultPath);
    Result<void> inspect();
    Result<std::string> moveOut(int from, const char* item, const std::string& name, bool isFolder);
    std::string resultPath(const std::string& name) const;
    int target() const { return m_destination ? m_destination.get() : m_hidden.fd(); }

    UniqueFd m_destination; ///< empty when the result stays in the hidden folder
    HiddenFolder m_hidden;
    UniqueFd m_root; ///< in the hidden folder
    std::string m_resultPath; ///< of the folder that the result is moved to
    mode_t m_umask = 0;
    bool m_isInMemory = false;
};

}
