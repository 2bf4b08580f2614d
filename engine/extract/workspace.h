#pragma once

#include "engine/extract/hidden_folder.h"
#include "engine/extract/options.h"
#include "engine/io/cancel.h"

#include <optional>

namespace vantoro {

/// Where the result of an extraction ends up.
enum class Ending : std::uint8_t {
    InDestination, ///< renamed to a free name there
    InHiddenFolder, ///< stays in options.hiddenFolderPath
};

/// The places of one job: the destination, the hidden folder, and the root that entries are written into, which is a
/// folder in the hidden one, or the destination itself without an enclosing folder. Gone at the end with all that has
/// not been moved out.
class Workspace {
public:
    static Result<Workspace> create(const ExtractOptions& options, Ending ending);

    /// A handle of the root.
    Result<UniqueFd> root() const;
    /// Where files are written before they are whole; -1 when the whole root is hidden.
    int hiddenFiles() const { return m_writesInPlace ? m_hidden.fd() : -1; }
    int anyFolder() const { return m_hidden.fd(); } ///< on the file system that is written to
    bool writesInPlace() const { return m_writesInPlace; }
    mode_t umask() const { return m_umask; }
    bool isInMemory() const { return m_isInMemory; } ///< tmpfs and the like
    bool tellsNamesApart() const; ///< "a" from "A", and composed letters from others
    bool hasForeignLink(const std::string& name) const;

    /// Everything of the job on disk, so that a power cut shows all or nothing. Cancelled when it takes too long.
    Result<void> flush(const CancelToken& cancel) const;
    /// Renames the one item `name` of the root, or the root itself as `name`, to a free name. Returns the path.
    Result<std::string> moveItem(const std::string& name, bool isFolder, std::optional<timespec> date);
    Result<std::string> moveRoot(const std::string& name, std::optional<timespec> date);
    void keep() { m_hidden.leaveStanding(); }

private:
    Workspace(UniqueFd destination, HiddenFolder hidden, UniqueFd root, std::string resultPath, bool writesInPlace);
    Result<void> inspect();
    Result<std::string> moveOut(int from, const char* item, const std::string& name, bool isFolder);
    int target() const { return m_destination ? m_destination.get() : m_hidden.fd(); }

    UniqueFd m_destination; ///< empty when the result stays in the hidden folder
    HiddenFolder m_hidden;
    UniqueFd m_root; ///< in the hidden folder
    std::string m_resultPath; ///< of the folder that the result is moved to
    bool m_writesInPlace;
    mode_t m_umask = 0;
    bool m_isInMemory = false;
};

}
