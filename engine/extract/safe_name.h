#pragma once

#include "engine/formats/archive.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vantoro {

/// Turns a decoded name into components that may be created beneath a folder: the only place that judges names.
/// UnsafeName for what could leave the folder or deceive the system calls. No component at all means the root itself.
class NameCleaner {
public:
    /// The views last until the next call, and no longer than `utf8`. They may be longer than a file system takes.
    Result<std::span<const std::string_view>> clean(std::string_view utf8, PathStyle style);

private:
    std::string m_replaced;
    std::vector<std::string_view> m_components;
};

/// The target of a symbolic link with the same characters replaced as in names; UnsafeLink when it is absolute, empty,
/// too long or holds a NUL.
Result<std::string> cleanLinkTarget(std::string_view utf8, PathStyle style);

inline constexpr std::size_t kMostNameBytes = 255; ///< of one component, on nearly every file system
inline constexpr std::size_t kMostTargetBytes = 4095;

/// At most `most` bytes of a component, cut between characters; the last extension stays.
std::string shortenedName(std::string_view name, std::size_t most = kMostNameBytes);
/// "name 1.ext", or "name 1" for a folder, whose dots are no extension.
std::string numberedName(std::string_view name, unsigned number, bool isFolder, std::size_t most = kMostNameBytes);
/// The components with '/' between them.
std::string joinedName(std::span<const std::string_view> components);

}
