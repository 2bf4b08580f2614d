#include "engine/registry.h"

#include <algorithm>
#include <cctype>

namespace vantoro {

namespace {

bool isNumber(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool isKnown(std::string_view extension)
{
    const auto has = [&](const auto* row) {
        return std::find(row->extensions.begin(), row->extensions.end(), extension) != row->extensions.end();
    };
    return std::any_of(containerFormats().begin(), containerFormats().end(), has)
        || std::any_of(streamFormats().begin(), streamFormats().end(), has);
}

/// ".001", ".z01", ".zx01", ".r00", ".a01", ".c00": the number of a volume.
bool isVolumeNumber(std::string_view extension)
{
    if (isNumber(extension))
        return extension.size() >= 3;
    for (const std::string_view prefix : {"zx", "z", "r", "s", "a", "c"}) {
        if (extension.starts_with(prefix) && extension.size() == prefix.size() + 2
            && isNumber(extension.substr(prefix.size())))
            return true;
    }
    return false;
}

bool isPart(std::string_view extension) { return extension.starts_with("part") && isNumber(extension.substr(4)); }

}

std::string extensionOf(std::string_view fileName)
{
    const auto dot = fileName.rfind('.');
    if (dot == std::string_view::npos || dot == 0)
        return {};
    std::string extension(fileName.substr(dot + 1));
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

std::string stemOf(std::string_view fileName)
{
    auto stem = fileName;
    bool stripped = false;
    while (true) {
        const auto extension = extensionOf(stem);
        if (extension.empty() || !(isKnown(extension) || isVolumeNumber(extension) || (stripped && isPart(extension))))
            break;
        stem.remove_suffix(extension.size() + 1);
        stripped = true;
    }
    return std::string(stem.empty() ? fileName : stem);
}

}
