#pragma once

#include "engine/io/cancel.h"
#include "engine/io/secret.h"

#include <optional>
#include <string>
#include <vector>

namespace vantoro {

/// Something to be archived.
struct CreateInput {
    std::string path; ///< empty: a folder of the given name that stands nowhere on disk
    std::string name; ///< in the archive, with '/' between components; empty: the path's last component
    bool withContents = true; ///< a folder with everything below it; otherwise its own entry alone
};

struct CreateOptions {
    std::string kind; ///< "zip", "7z", "tar.gz", "gz" …: see creatableKinds()
    std::optional<unsigned> level; ///< 0 (fast, or stored) to 9 (small); nothing: what suits the kind
    Secret password; ///< empty: no encryption. zip and 7z only
    bool encryptNames = false; ///< 7z only
    bool classicEncryption = false; ///< zip: the old, weak cipher, for programs that know no other
    bool storeTimes = true;
    bool solid = true; ///< 7z only
    bool reproducible = false; ///< sorted, fixed times, no owners: identical input gives identical bytes
    std::vector<std::string> exclude; ///< patterns (fnmatch) against names in the archive and their last components
    unsigned threads = 0; ///< 0: as many as processors
    CancelToken cancel;
};

/// Something that did not go into the archive, or not as it should.
struct CreateProblem {
    std::string path;
    Error error;
};

struct CreateProgress {
    std::uint64_t bytes = 0, bytesTotal = 0; ///< of the sources
    std::uint64_t entries = 0, entriesTotal = 0;
    std::string currentName;
};

/// Told by a creation, on the thread that called it.
class CreateDelegate {
public:
    virtual ~CreateDelegate() = default;
    virtual void progressed(const CreateProgress&) {} ///< at most 20 times a second
    virtual void sourceFailed(const CreateProblem&) {} ///< left out: unreadable, vanished, changed, special
};

struct CreateReport {
    std::vector<CreateProblem> problems;
    std::uint64_t entries = 0, bytes = 0; ///< archived
    std::uint64_t archiveSize = 0;
};

}
