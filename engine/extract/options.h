#pragma once

#include "engine/text/charset.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

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

}
