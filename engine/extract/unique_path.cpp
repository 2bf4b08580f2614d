#include "engine/extract/unique_path.h"

#include "engine/extract/filesystem.h"
#include "engine/extract/safe_name.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace vantoro {

namespace {

constexpr unsigned kMostNumbers = 1'000'000;

std::string numberedPath(const std::string& wanted, unsigned number, bool isFolder)
{
    const auto slash = wanted.rfind('/');
    const auto start = slash == std::string::npos ? 0 : slash + 1;
    return wanted.substr(0, start) + numberedName(std::string_view(wanted).substr(start), number, isFolder);
}

bool exists(const std::string& path)
{
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0;
}

bool isFolder(const std::string& path)
{
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}

std::string uniquePath(const std::string& wanted)
{
    auto path = wanted;
    for (unsigned number = 1; exists(path) && number < kMostNumbers; ++number)
        path = numberedPath(wanted, number, false);
    return path;
}

Result<std::string> moveToUniquePath(const std::string& from, const std::string& wanted)
{
    const bool folder = isFolder(from);
    auto path = wanted;
    for (unsigned number = 1; number < kMostNumbers; ++number) {
        const int reason = renameNoReplace(AT_FDCWD, from.c_str(), AT_FDCWD, path.c_str());
        if (reason == 0)
            return path;
        if (reason != EEXIST)
            return destinationError(reason, "move into place");
        path = numberedPath(wanted, number, folder);
    }
    return Error{ErrorCode::AlreadyExists, "no free number", EEXIST};
}

}
