#include "engine/extract/printable.h"

#include <cstdio>

namespace vantoro {

namespace {

/// One character of UTF-8; a byte that starts none stands for itself, marked by `valid`.
struct Character {
    char32_t code = 0;
    std::size_t length = 1;
    bool valid = false;
};

Character characterAt(std::string_view text, std::size_t at)
{
    const auto first = static_cast<unsigned char>(text[at]);
    if (first < 0x80)
        return {first, 1, true};
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || length > text.size() - at)
        return {first};
    char32_t code = first & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[at + i]);
        if ((next & 0xC0) != 0x80)
            return {first};
        code = (code << 6) | (next & 0x3FU);
    }
    return {code, length, true};
}

bool isHarmless(char32_t code)
{
    if (code < 0x20 || (code >= 0x7F && code < 0xA0))
        return false; // controls of both sets
    if (code == 0x2028 || code == 0x2029 || code == 0xFEFF)
        return false; // line ends, and a mark that nobody sees
    if (code >= 0xD800 && code < 0xE000)
        return false;
    return !(code >= 0x200B && code <= 0x200F) && !(code >= 0x202A && code <= 0x202E)
        && !(code >= 0x2060 && code <= 0x2069);
}

void appendEscape(std::string& out, const Character& character)
{
    char escape[16];
    if (!character.valid || character.code < 0x80)
        std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned>(character.code));
    else
        std::snprintf(escape, sizeof escape, "\\u%04X", static_cast<unsigned>(character.code));
    out += escape;
}

}

std::string printable(std::string_view utf8)
{
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const auto character = characterAt(utf8, at);
        if (character.valid && isHarmless(character.code))
            out.append(utf8.substr(at, character.length));
        else
            appendEscape(out, character);
        at += character.length;
    }
    return out;
}

}
