#pragma once

#include "engine/write/options.h"

namespace vantoro {

/// Writes an archive of `inputs` to `target`, under a hidden name beside it until it is whole; what stood at `target`
/// stays until then, and for good when creating fails. Sources that cannot be read are left out and reported.
Result<CreateReport> createArchive(const std::string& target, const std::vector<CreateInput>& inputs,
                                   const CreateOptions& options, CreateDelegate& delegate);

struct CreatableKind {
    std::string kind; ///< also the file-name extension: "tar.gz"
    std::string displayName;
    bool takesPassword = false;
    bool singleFile = false; ///< for one plain file alone
};
/// In the order in which they are offered.
std::vector<CreatableKind> creatableKinds();
/// The kind that a file name asks for ("a.tar.gz" -> "tar.gz"); empty when none does.
std::string kindOfName(std::string_view fileName);

}
