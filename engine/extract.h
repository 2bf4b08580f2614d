#pragma once

#include "engine/open.h"

namespace vantoro {

enum class FolderMode : std::uint8_t {
    Auto, ///< an enclosing folder only when there is more than one top item
    Always,
    Never, ///< entries go straight into the destination
};

struct ExtractOptions {
    std::string destination; ///< an existing folder
    FolderMode folder = FolderMode::Auto;
    std::string enclosingName; ///< of the enclosing folder; empty: the archive's stem
    std::optional<std::vector<std::uint64_t>> selection; ///< entry indices, any order; nothing: all
    CharsetId charset = kCharsetUnknown; ///< for names without a declared charset; unknown: detect
    /// Detection below this confidence asks the delegate.
    float charsetThreshold = 0.0F;
    bool keepBroken = false; ///< keep damaged entries as NAME.damaged
    bool archiveDateToFolder = false; ///< the enclosing folder gets the archive's date
    bool archiveDateToSoloItem = false;
    bool resetSoloItemDate = false; ///< a solo item gets the current time
    /// Path of the hidden folder for extractIntoHiddenFolder(); its name is ".Vantoro<n>". extractArchive() ignores it.
    std::string hiddenFolderPath;
    unsigned lanes = 0; ///< 0: as many as processors
};

/// An entry as it is told to people: decoded, cleaned name. Not escaped for terminals: see printable().
struct EntryNote {
    std::uint64_t index = 0;
    std::string name;
    EntryKind kind = EntryKind::File;
};

struct EntryProblem {
    EntryNote entry; ///< name empty: the archive as a whole
    Error error;
};

struct ProgressNote {
    std::uint64_t written = 0; ///< bytes of decoded data
    std::uint64_t writtenTotal = 0; ///< 0 when not known
    std::uint64_t packed = 0; ///< packed bytes read
    std::uint64_t packedTotal = 0;
    std::uint64_t entries = 0; ///< finished
    std::uint64_t entriesTotal = 0; ///< 0 when not known
    std::string currentName;
    double fraction() const; ///< 0 to 1, by bytes where known
};

struct SizeQuestion {
    enum class Kind : std::uint8_t { Ratio, Space, Crowd };
    Kind kind = Kind::Ratio;
    std::uint64_t expected = 0; ///< bytes (Ratio, Space) or entries (Crowd)
    std::uint64_t available = 0; ///< Space: free bytes less the reserve
    std::uint64_t packed = 0; ///< size of the archive
};

/// Asked and told by an extraction, always on the thread that called it, one call at a time.
class ExtractDelegate {
public:
    virtual ~ExtractDelegate() = default;
    virtual void willExtract(const EntryNote&) {}
    virtual void progressed(const ProgressNote&) {} ///< at most 20 times a second
    /// An entry was refused or damaged. False stops the extraction (Cancelled).
    virtual bool entryFailed(const EntryProblem&) { return true; }
    /// Which charset the undeclared names have; nothing stops (EncodingNeeded). `name` is the one at hand.
    virtual std::optional<CharsetId> chooseCharset(std::string_view name, const Detection&) { return std::nullopt; }
    /// Whether to go on although the archive grows out of proportion. False: BombRefused.
    virtual bool allowsSize(const SizeQuestion&) { return false; }
};

struct ExtractReport {
    std::vector<EntryProblem> problems; ///< what was refused or damaged, in order
    std::uint64_t problemCount = 0; ///< `problems` keeps the first 10,000
    std::vector<std::string> notes; ///< what changed without loss: shortened names, refused links in sum
    /// What stands in the destination now: the enclosing folder or the solo item; empty with FolderMode::Never or when
    /// nothing came out.
    std::string createdItem;
    bool wasSolo = false; ///< createdItem is the archive's single top item, not an enclosing folder
    std::uint64_t entries = 0, bytes = 0; ///< written
};

/// Extracts into a hidden folder ".Vantoro<n>" of the destination and renames the result to a free name at the end.
/// On an Error nothing is left in the destination (FolderMode::Never: whole files stay).
Result<ExtractReport> extractArchive(OpenedArchive& archive, const ExtractOptions& options, ExtractDelegate& delegate,
                                     const CancelToken& cancel = {});

/// The same without the last step, for callers that place the result themselves: `options.hiddenFolderPath` is made,
/// stays, and holds `createdItem`; AlreadyExists when that name is taken. The caller removes it with removeHiddenFolder().
Result<ExtractReport> extractIntoHiddenFolder(OpenedArchive& archive, const ExtractOptions& options,
                                              ExtractDelegate& delegate, const CancelToken& cancel = {});

/// Removes a ".Vantoro<n>" folder that this process made or that sweepOrphans() would remove; never through a link.
void removeHiddenFolder(const std::string& path);
/// Removes the hidden folders of dead processes among `paths`: name matches, a real folder of ours, lock free.
/// Returns those that are gone now, removed or missing.
std::vector<std::string> sweepOrphans(const std::vector<std::string>& paths);
/// `wanted` if free, else "name 1.ext", "name 2.ext" … beside it. A hint: the rename decides.
std::string uniquePath(const std::string& wanted);
/// Renames without overwriting; takes the next free name when `wanted` is taken meanwhile. Returns the final path.
Result<std::string> moveToUniquePath(const std::string& from, const std::string& wanted);

/// Keeps the list of hidden folders in a file, so that a later start can sweep after a crash.
class OrphanList {
public:
    virtual ~OrphanList() = default;
    virtual void remember(const std::string& path) = 0; ///< before the folder is made; on disk on return
    virtual void forget(const std::string& path) = 0;
};
/// Null: none is kept. Process-wide, set once at start; outlives every extraction.
void setOrphanList(OrphanList* list);

/// Control characters, line breaks and direction overrides as escapes: for terminals, logs and widgets.
std::string printable(std::string_view utf8);

}
