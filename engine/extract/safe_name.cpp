#include "engine/extract/safe_name.h"

#include <algorithm>
#include <array>

namespace vantoro {

namespace {

constexpr std::size_t kMostPathBytes = 4000;
constexpr std::size_t kMostFolders = 512; ///< file managers cannot delete deeper trees
constexpr std::size_t kMostExtensionBytes = 32;

/// Bytes of a direction override at `at`, where \xE2 stands (U+202A-202E, U+2066-2069), else 0: they make "exe.jpg" of
/// "gpj.exe".
std::size_t overrideLength(std::string_view text, std::size_t at)
{
    if (text.size() - at < 3)
        return 0;
    const auto second = static_cast<unsigned char>(text[at + 1]);
    const auto third = static_cast<unsigned char>(text[at + 2]);
    const bool embeds = second == 0x80 && third >= 0xAA && third <= 0xAE;
    const bool isolates = second == 0x81 && third >= 0xA6 && third <= 0xA9;
    return embeds || isolates ? 3 : 0;
}

/// What may be unwanted, or the start of it.
constexpr auto kSuspects = [] {
    std::array<bool, 256> suspects{};
    for (const char c : {'\n', '\r', '\x1B', '\xE2'})
        suspects[static_cast<unsigned char>(c)] = true;
    return suspects;
}();

/// Bytes at `at` that a name must not hold.
std::size_t unwantedLength(std::string_view text, std::size_t at)
{
    const char c = text[at];
    if (!kSuspects[static_cast<unsigned char>(c)])
        return 0;
    return c == '\xE2' ? overrideLength(text, at) : 1;
}

/// `text` itself, or a copy in `buffer` with every unwanted character as '_'.
std::string_view withoutUnwanted(std::string_view text, std::string& buffer)
{
    std::size_t at = 0;
    while (at < text.size() && unwantedLength(text, at) == 0)
        ++at;
    if (at == text.size())
        return text;
    buffer.assign(text.substr(0, at));
    while (at < text.size()) {
        const auto length = unwantedLength(text, at);
        buffer += length > 0 ? '_' : text[at];
        at += std::max<std::size_t>(length, 1);
    }
    return buffer;
}

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool startsWithDrive(std::string_view component)
{
    return component.size() >= 2 && isLetter(component[0]) && component[1] == ':';
}

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

std::string_view cutBetweenCharacters(std::string_view text, std::size_t most)
{
    if (text.size() <= most)
        return text;
    while (most > 0 && isContinuation(text[most]))
        --most;
    return text.substr(0, most);
}

/// Where the extension starts, dot included; the size of the name when it has none.
std::size_t extensionStart(std::string_view name)
{
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || name.size() - dot > kMostExtensionBytes)
        return name.size();
    return dot;
}

}

Result<std::span<const std::string_view>> NameCleaner::clean(std::string_view utf8, PathStyle style)
{
    if (utf8.find('\0') != std::string_view::npos)
        return Error{ErrorCode::UnsafeName, "NUL in a name"};
    const auto text = withoutUnwanted(utf8, m_replaced);
    const auto separators = style == PathStyle::Dos ? std::string_view("/\\") : std::string_view("/");
    m_components.clear();
    std::size_t bytes = 0;
    for (std::size_t at = 0; at <= text.size();) {
        const auto end = std::min(text.find_first_of(separators, at), text.size());
        auto component = text.substr(at, end - at);
        at = end + 1;
        if (style == PathStyle::Dos && m_components.empty() && startsWithDrive(component))
            component.remove_prefix(2);
        if (component.empty() || component == ".")
            continue;
        if (component == "..")
            return Error{ErrorCode::UnsafeName, "'..' in a name"};
        bytes += component.size() + 1;
        if (bytes > kMostPathBytes + 1 || m_components.size() > kMostFolders)
            return Error{ErrorCode::UnsafeName, "name too long or too deep"};
        m_components.push_back(component);
    }
    return std::span<const std::string_view>(m_components);
}

Result<std::string> cleanLinkTarget(std::string_view utf8, PathStyle style)
{
    if (utf8.empty() || utf8.size() > kMostTargetBytes || utf8.find('\0') != std::string_view::npos)
        return Error{ErrorCode::UnsafeLink, "link target empty, too long or with a NUL"};
    std::string buffer;
    std::string target(withoutUnwanted(utf8, buffer));
    if (style == PathStyle::Dos)
        std::replace(target.begin(), target.end(), '\\', '/');
    if (target.front() == '/' || (style == PathStyle::Dos && startsWithDrive(target)))
        return Error{ErrorCode::UnsafeLink, "absolute link target"};
    return target;
}

std::string shortenedName(std::string_view name, std::size_t most)
{
    if (name.size() <= most)
        return std::string(name);
    const auto extension = name.substr(extensionStart(name));
    std::string result(cutBetweenCharacters(name, most - extension.size()));
    return result.append(extension);
}

std::string numberedName(std::string_view name, unsigned number, bool isFolder, std::size_t most)
{
    const auto extension = isFolder ? std::string_view() : name.substr(extensionStart(name));
    const auto suffix = " " + std::to_string(number);
    const auto base = name.substr(0, name.size() - extension.size());
    std::string result(cutBetweenCharacters(base, most - suffix.size() - extension.size()));
    return result.append(suffix).append(extension);
}

std::string joinedName(std::span<const std::string_view> components)
{
    std::size_t length = components.size();
    for (const auto component : components)
        length += component.size();
    std::string result;
    result.reserve(length);
    for (const auto component : components) {
        if (!result.empty())
            result += '/';
        result += component;
    }
    return result;
}

}
