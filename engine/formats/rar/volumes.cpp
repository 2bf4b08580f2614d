#include "engine/formats/rar/volumes.h"

#include <algorithm>
#include <optional>

namespace vantoro {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string_view extensionOf(std::string_view name)
{
    const auto dot = name.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

std::string lowered(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), lower);
    return result;
}

bool isProgram(std::string_view extension)
{
    const auto plain = lowered(extension);
    return plain == "exe" || plain == "sfx" || plain == "com";
}

std::string withExtension(std::string_view name, std::string_view extension)
{
    const auto old = extensionOf(name);
    std::string result(name.substr(0, name.size() - old.size()));
    if (old.empty())
        result += '.';
    // "ARCHIVE.RAR" goes on with "ARCHIVE.R00".
    const auto isUpper
        = !old.empty() && std::any_of(old.begin(), old.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
    for (const auto c : extension)
        result += isUpper && c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return result;
}

struct Digits {
    std::size_t start = 0, end = 0;
};

std::optional<Digits> lastDigits(std::string_view name, std::size_t before)
{
    auto end = std::min(before, name.size());
    while (end > 0 && !isDigit(name[end - 1]))
        --end;
    if (end == 0)
        return std::nullopt;
    auto start = end;
    while (start > 0 && isDigit(name[start - 1]))
        --start;
    return Digits{start, end};
}

/// The digits that count volumes: the last group, but the first in "x.part01of12.rar".
std::optional<Digits> counterOf(std::string_view name)
{
    const auto last = lastDigits(name, name.size());
    if (!last)
        return std::nullopt;
    const auto before = lastDigits(name, last->start);
    if (before) {
        const auto between = name.substr(before->end, last->start - before->end);
        const auto dot = name.rfind('.', before->start);
        if (between.find('.') == std::string_view::npos && dot != std::string_view::npos && dot < before->start)
            return before;
    }
    return last;
}

std::string nextNumber(std::string_view name, Digits digits)
{
    std::string result(name);
    for (auto at = digits.end; at > digits.start;) {
        --at;
        if (result[at] != '9') {
            ++result[at];
            return result;
        }
        result[at] = '0';
    }
    return result.insert(digits.start, 1, '1');
}

std::string firstNumber(std::string_view name, Digits digits)
{
    std::string result(name);
    std::fill(result.begin() + static_cast<std::ptrdiff_t>(digits.start),
              result.begin() + static_cast<std::ptrdiff_t>(digits.end), '0');
    result[digits.end - 1] = '1';
    return result;
}

/// "r07", "s42": the extension of a later volume with old names.
bool isLetterVolume(std::string_view extension)
{
    return extension.size() == 3 && lower(extension[0]) >= 'r' && lower(extension[0]) <= 'z' && isDigit(extension[1])
        && isDigit(extension[2]);
}

std::vector<std::string> nextByLetters(std::string_view name)
{
    const auto extension = extensionOf(name);
    if (!isLetterVolume(extension))
        return {withExtension(name, "r00")};
    std::string next(name);
    const auto letter = next.size() - 3;
    if (next[letter + 2]++ != '9')
        return {next};
    next[letter + 2] = '0';
    if (next[letter + 1]++ != '9')
        return {next};
    next[letter + 1] = '0';
    if (lower(next[letter]++) == 'z')
        return {};
    return {next};
}

std::vector<std::string> nextByNumbers(std::string_view name)
{
    const auto digits = counterOf(name);
    if (!digits)
        return {};
    auto next = nextNumber(name, *digits);
    if (isProgram(extensionOf(next)))
        return {withExtension(next, "rar"), next};
    return {next};
}

void addNew(std::vector<std::string>& names, std::string_view own, std::vector<std::string> more)
{
    for (auto& name : more) {
        if (name != own && std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(std::move(name));
    }
}

std::vector<std::string> withPrograms(const std::string& name)
{
    return {name, withExtension(name, "exe"), withExtension(name, "sfx")};
}

}

std::vector<std::string> nextRarVolumes(std::string_view name, RarNaming naming)
{
    std::vector<std::string> names;
    const auto byLetters = naming == RarNaming::Letters;
    addNew(names, name, byLetters ? nextByLetters(name) : nextByNumbers(name));
    addNew(names, name, byLetters ? nextByNumbers(name) : nextByLetters(name));
    return names;
}

std::vector<std::string> firstRarVolumes(std::string_view name, RarNaming naming)
{
    std::vector<std::string> names;
    const auto extension = extensionOf(name);
    if (isLetterVolume(extension) || naming == RarNaming::Letters)
        addNew(names, name, withPrograms(withExtension(name, "rar")));
    if (const auto digits = counterOf(name); digits && (naming == RarNaming::Numbers || !isLetterVolume(extension)))
        addNew(names, name, withPrograms(firstNumber(name, *digits)));
    return names;
}

}
