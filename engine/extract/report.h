#pragma once

#include "engine/formats/archive.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantoro {

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
    virtual std::optional<CharsetId> chooseCharset(std::string_view name, const Detection&)
    {
        (void)name;
        return std::nullopt;
    }
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

}
