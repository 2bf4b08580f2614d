#pragma once

#include "engine/formats/archive.h"

#include <memory>
#include <string>
#include <vector>

namespace vantoro {

struct OpenOptions {
    PasswordProvider* passwords = nullptr; ///< outlives the archive; null: encrypted archives fail with PasswordNeeded
    CancelToken cancel;
    Limits limits;
    std::string* missingVolume = nullptr; ///< where to put the bare name of an absent volume; may be null
};

/// An archive opened from the file system, with the paths of its volumes.
class OpenedArchive {
public:
    virtual ~OpenedArchive() = default;
    virtual Archive& archive() = 0;
    /// The path that was opened.
    virtual const std::string& path() const = 0;
    /// Paths of every volume of the set in order, the opened one among them; one path for a single file.
    virtual std::vector<std::string> volumePaths() const = 0;
    /// Sum of the sizes of all volumes, in bytes.
    virtual std::uint64_t packedSize() const = 0;
    /// The archive's name without all extensions that archives have ("a.tar.gz", "a.part1.rar" -> "a"); never empty.
    virtual std::string stem() const = 0;
};

/// Opens the archive at `path`, any volume of a set. Sniffs the content; the extension only chooses between equals.
/// NotAnArchive when no reader knows it, MissingVolume (named through OpenOptions::missingVolume) when a part that is
/// needed to open the set is absent.
Result<std::unique_ptr<OpenedArchive>> openArchive(const std::string& path, const OpenOptions& options = {});

/// Name without archive extensions, by the same rule as OpenedArchive::stem(), for a bare file name.
std::string archiveStem(std::string_view fileName);

/// Call at the start of a program that runs for long: archives are then decoded by the build that the program is of,
/// even when it is updated meanwhile.
void holdDecoders();

/// Call at the start of a program that ends with its last archive: it waits for its decoders to be gone at its own end.
void leaveDecodersBehind();

/// A sentence about the process in which decoders run: "decoders run confined", or what is missing.
std::string describeDecoders();

struct FormatDescription {
    std::string id, displayName;
    std::vector<std::string> extensions;
};
/// Everything that can be opened.
std::vector<FormatDescription> supportedFormats();

}
