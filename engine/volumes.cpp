#include "engine/volumes.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

#include <strings.h>

namespace vantoro {

namespace {

constexpr unsigned kMostVolumes = 100'000;

struct NumberedName {
    std::string base; // with the dot
    std::size_t digits = 0;
};

std::optional<NumberedName> splitNumber(std::string_view name)
{
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || name.size() - dot - 1 < 3)
        return std::nullopt;
    const auto digits = name.substr(dot + 1);
    if (!std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    return NumberedName{std::string(name.substr(0, dot + 1)), digits.size()};
}

std::string numbered(const NumberedName& name, unsigned number)
{
    auto digits = std::to_string(number);
    if (digits.size() < name.digits)
        digits.insert(0, name.digits - digits.size(), '0');
    return name.base + digits;
}

bool hasHeaderOfItsOwn(const std::string& path)
{
    const auto source = openFileSource(path);
    if (!source)
        return false;
    const auto head = readBlock(**source, 0, 8);
    if (!head)
        return false;
    const auto text = asText(*head);
    return text.starts_with("Rar!\x1A\x07") || text.starts_with("\x60\xEA") || text.starts_with("MSCF");
}

}

std::string FolderVolumes::find(std::string_view name) const
{
    if (name.empty() || name.find('/') != std::string_view::npos || name == "." || name == "..")
        return {};
    auto exact = m_folder + "/" + std::string(name);
    std::error_code error;
    if (std::filesystem::exists(exact, error))
        return exact;
    const std::lock_guard lock(m_mutex);
    if (!m_namesKnown) {
        m_namesKnown = true;
        for (std::filesystem::directory_iterator it(m_folder, error), end; !error && it != end; it.increment(error))
            m_names.push_back(it->path().filename().string());
    }
    for (const auto& known : m_names) {
        if (known.size() == name.size() && ::strncasecmp(known.data(), name.data(), name.size()) == 0)
            return m_folder + "/" + known;
    }
    return {};
}

Result<SourcePtr> FolderVolumes::openVolume(std::string_view name)
{
    const auto path = find(name);
    if (path.empty()) {
        const std::lock_guard lock(m_mutex);
        m_missing = name;
        return Error{ErrorCode::MissingVolume, "no such volume beside the archive"};
    }
    return openFileSource(path);
}

std::string FolderVolumes::missing() const
{
    const std::lock_guard lock(m_mutex);
    return m_missing;
}

std::optional<CutSet> findCutSet(const FolderVolumes& folder, std::string_view name)
{
    const auto number = splitNumber(name);
    if (!number)
        return std::nullopt;
    CutSet set;
    for (unsigned i = 1; i < kMostVolumes; ++i) {
        set.next = numbered(*number, i);
        const auto path = folder.find(set.next);
        if (path.empty()) {
            set.hasGap = !folder.find(numbered(*number, i + 1)).empty();
            break;
        }
        set.names.push_back(std::filesystem::path(path).filename().string());
    }
    const auto second = set.names.size() > 1 ? folder.find(set.names[1]) : std::string();
    if (!second.empty() && hasHeaderOfItsOwn(second))
        return std::nullopt;
    // The piece that was opened is there; without a first one the set has a gap at its start.
    set.hasGap = set.hasGap || set.names.empty();
    return set;
}

}
