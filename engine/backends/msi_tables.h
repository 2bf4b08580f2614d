#pragma once

#include "engine/io/source.h"
#include "engine/text/charset.h"

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace vantoro {

/// What a Windows installer database says of the files that it installs. Its cabinets know them by keys only.
struct MsiFiles {
    std::unordered_map<std::string, std::string> paths; ///< by key, '/' between the folders
    std::vector<std::string> cabinets; ///< as named in the database: "#stream" inside the file, else a file beside it
    CharsetId charset = kCharsetUnknown; ///< of the paths
};

/// The bytes of a table or of the string pool ("_StringPool", "File" …); nothing when there is none.
using MsiStreamReader = std::function<std::optional<std::vector<std::byte>>(std::string_view name)>;

/// Corrupt where the database contradicts itself; NotAnArchive when it installs no files.
Result<MsiFiles> readMsiFiles(const MsiStreamReader& streams);

}
