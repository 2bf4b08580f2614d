#include "engine/text/charset.h"

#include "engine/text/converter.h"

#include <algorithm>
#include <cstring>
#include <array>
#include <cctype>

namespace vantoro {

namespace {

// The numbers are kept in settings: append, never renumber. 0 is automatic; 4, 5 and 10 are fixed by the
// application.
constexpr auto kCharsets = std::to_array<Charset>({
    {4, "UTF-8", "Unicode (UTF-8)"},
    {5, "ISO-8859-1", "Western (ISO Latin 1)"},
    {12, "windows-1252", "Western (Windows 1252)"},
    {13, "IBM437", "Western (DOS 437)"},
    {14, "IBM850", "Western (DOS 850)"},
    {15, "macintosh", "Western (Mac OS Roman)"},
    {16, "ISO-8859-15", "Western (ISO Latin 9)"},
    {20, "Shift_JIS", "Japanese (Shift JIS)"},
    {21, "EUC-JP", "Japanese (EUC)"},
    {22, "ISO-2022-JP", "Japanese (ISO 2022-JP)"},
    {25, "GBK", "Chinese, simplified (GBK)"},
    {26, "GB18030", "Chinese, simplified (GB 18030)"},
    {27, "Big5", "Chinese, traditional (Big 5)"},
    {30, "EUC-KR", "Korean (EUC, Windows 949)"},
    {35, "windows-1251", "Cyrillic (Windows 1251)"},
    {36, "IBM866", "Cyrillic (DOS 866)"},
    {37, "KOI8-R", "Cyrillic (KOI8-R)"},
    {38, "KOI8-U", "Cyrillic (KOI8-U)"},
    {39, "ISO-8859-5", "Cyrillic (ISO 8859-5)"},
    {40, "x-mac-cyrillic", "Cyrillic (Mac OS)"},
    {45, "windows-1250", "Central European (Windows 1250)"},
    {46, "IBM852", "Central European (DOS 852)"},
    {47, "ISO-8859-2", "Central European (ISO Latin 2)"},
    {48, "x-mac-centraleurroman", "Central European (Mac OS)"},
    {50, "windows-1253", "Greek (Windows 1253)"},
    {51, "ISO-8859-7", "Greek (ISO 8859-7)"},
    {52, "cp737", "Greek (DOS 737)"},
    {55, "windows-1254", "Turkish (Windows 1254)"},
    {56, "ISO-8859-9", "Turkish (ISO Latin 5)"},
    {57, "IBM857", "Turkish (DOS 857)"},
    {60, "windows-1255", "Hebrew (Windows 1255)"},
    {61, "ISO-8859-8", "Hebrew (ISO 8859-8)"},
    {62, "IBM862", "Hebrew (DOS 862)"},
    {65, "windows-1256", "Arabic (Windows 1256)"},
    {66, "ISO-8859-6", "Arabic (ISO 8859-6)"},
    {67, "IBM864", "Arabic (DOS 864)"},
    {70, "windows-1257", "Baltic (Windows 1257)"},
    {71, "ISO-8859-4", "Baltic (ISO Latin 4)"},
    {72, "ISO-8859-13", "Baltic (ISO Latin 7)"},
    {73, "IBM775", "Baltic (DOS 775)"},
    {75, "windows-1258", "Vietnamese (Windows 1258)"},
    {80, "windows-874", "Thai (Windows 874)"},
    {85, "ISO-8859-3", "South European (ISO Latin 3)"},
    {86, "ISO-8859-10", "Nordic (ISO Latin 6)"},
    {87, "ISO-8859-14", "Celtic (ISO Latin 8)"},
    {88, "IBM865", "Nordic (DOS 865)"},
    {89, "IBM860", "Portuguese (DOS 860)"},
    {90, "IBM863", "Canadian French (DOS 863)"},
    {91, "IBM861", "Icelandic (DOS 861)"},
});

struct Alias {
    std::string_view name; // as normalised() leaves it
    CharsetId id;
};
constexpr auto kAliases = std::to_array<Alias>({
    {"utf", 4},       {"latin1", 5},  {"cp1252", 12}, {"cp437", 13},  {"dos437", 13},     {"cp850", 14},
    {"macroman", 15}, {"latin9", 16}, {"sjis", 20},   {"cp932", 20},  {"windows31j", 20}, {"ms932", 20},
    {"eucjp", 21},    {"gb2312", 25}, {"cp936", 25},  {"euccn", 25},  {"cp950", 27},      {"cp949", 30},
    {"uhc", 30},      {"cp1251", 35}, {"cp866", 36},  {"koi8", 37},   {"cp1250", 45},     {"cp852", 46},
    {"latin2", 47},   {"cp1253", 50}, {"cp1254", 55}, {"latin5", 56}, {"cp857", 57},      {"cp1255", 60},
    {"cp862", 62},    {"cp1256", 65}, {"cp1257", 70}, {"cp775", 73},  {"cp1258", 75},     {"cp874", 80},
    {"tis620", 80},   {"cp865", 88},  {"cp860", 89},  {"cp863", 90},  {"cp861", 91},
});

std::string normalised(std::string_view name)
{
    std::string result;
    for (const char c : name) {
        if (std::isalnum(static_cast<unsigned char>(c)))
            result += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return result;
}

void appendEscaped(std::string& out, std::string_view bytes)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    for (const char c : bytes) {
        const auto value = static_cast<unsigned char>(c);
        out += '%';
        out += kDigits[value >> 4];
        out += kDigits[value & 15];
    }
}

/// Length of the valid UTF-8 sequence at the front (RFC 3629), 0 when there is none.
std::size_t utf8Length(std::string_view text)
{
    const auto at = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
    const auto follows
        = [&](std::size_t i, unsigned low = 0x80, unsigned high = 0xBF) { return at(i) >= low && at(i) <= high; };
    const unsigned lead = at(0);
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return follows(1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        const unsigned low = lead == 0xE0 ? 0xA0 : 0x80;
        const unsigned high = lead == 0xED ? 0x9F : 0xBF;
        return follows(1, low, high) && follows(2) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const unsigned low = lead == 0xF0 ? 0x90 : 0x80;
        const unsigned high = lead == 0xF4 ? 0x8F : 0xBF;
        return follows(1, low, high) && follows(2) && follows(3) ? 4 : 0;
    }
    return 0;
}

std::string decodeUtf8(std::string_view bytes)
{
    std::string out;
    out.reserve(bytes.size());
    while (!bytes.empty()) {
        const auto length = utf8Length(bytes);
        if (length == 0)
            appendEscaped(out, bytes.substr(0, 1));
        else
            out += bytes.substr(0, length);
        bytes.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return out;
}

}

std::span<const Charset> charsets() { return kCharsets; }

const Charset* findCharset(CharsetId id)
{
    const auto found = std::find_if(kCharsets.begin(), kCharsets.end(), [id](const Charset& c) { return c.id == id; });
    return found == kCharsets.end() ? nullptr : &*found;
}

const Charset* findCharset(std::string_view name)
{
    const auto wanted = normalised(name);
    for (const auto& charset : kCharsets) {
        if (normalised(charset.name) == wanted)
            return &charset;
    }
    for (const auto& alias : kAliases) {
        if (alias.name == wanted)
            return findCharset(alias.id);
    }
    return nullptr;
}

bool isAscii(std::string_view bytes)
{
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    while (bytes.size() >= sizeof kHighBits) { // names are mostly ASCII: eight bytes at a time
        std::uint64_t word;
        std::memcpy(&word, bytes.data(), sizeof word);
        if (word & kHighBits)
            return false;
        bytes.remove_prefix(sizeof word);
    }
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isValidUtf8(std::string_view bytes)
{
    if (isAscii(bytes))
        return true;
    while (!bytes.empty()) {
        const auto length = utf8Length(bytes);
        if (length == 0)
            return false;
        bytes.remove_prefix(length);
    }
    return true;
}

bool canDecode(std::string_view bytes, CharsetId charset)
{
    if (charset == kCharsetUtf8 || isAscii(bytes))
        return isValidUtf8(bytes);
    const auto* known = findCharset(charset);
    const auto* converter = known ? converterFor(*known) : nullptr;
    return converter && converter->toUtf8(bytes).isWhole;
}

std::string decode(std::string_view bytes, CharsetId charset)
{
    if (isAscii(bytes))
        return std::string(bytes);
    const auto* known = findCharset(charset);
    const auto* converter = charset == kCharsetUtf8 || !known ? nullptr : converterFor(*known);
    if (!converter)
        return decodeUtf8(bytes);
    std::string out;
    while (true) {
        auto part = converter->toUtf8(bytes);
        out += part.text;
        if (part.isWhole)
            return out;
        appendEscaped(out, bytes.substr(part.used, 1));
        bytes.remove_prefix(part.used + 1);
    }
}

Result<std::string> encode(std::string_view utf8, CharsetId charset)
{
    if (charset == kCharsetUtf8 || isAscii(utf8))
        return std::string(utf8);
    const auto* known = findCharset(charset);
    const auto* converter = known ? converterFor(*known) : nullptr;
    if (!converter)
        return Error{ErrorCode::EncodingNeeded, "charset is not known"};
    return converter->fromUtf8(utf8);
}

}
