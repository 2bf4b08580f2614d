#include "engine/backends/sevenzip_com.h"

namespace vantoro::sevenzip {

namespace {

// A byte that is not part of valid UTF-8 is handed over as U+EF00 + byte.
constexpr std::uint32_t kEscapeBase = 0xEF00;
constexpr std::uint32_t kEscapeFirst = 0xEF80;
constexpr std::uint32_t kEscapeLast = 0xEFFF;
constexpr std::uint32_t kReplacement = 0xFFFD;

bool isHighSurrogate(std::uint32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLowSurrogate(std::uint32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

void appendUtf8(std::string& text, std::uint32_t c)
{
    const auto put = [&](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | c >> 6);
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | c >> 12);
        put(0x80 | (c >> 6 & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | c >> 18);
        put(0x80 | (c >> 12 & 0x3F));
        put(0x80 | (c >> 6 & 0x3F));
        put(0x80 | (c & 0x3F));
    }
}

enum class Escapes : std::uint8_t { Undo, Keep };

std::string toBytes(const wchar_t* units, std::size_t count, Escapes escapes)
{
    std::string text(count, '\0');
    std::size_t plain = 0; // most names are ASCII throughout
    while (plain < count && static_cast<std::uint32_t>(units[plain]) < 0x80) {
        text[plain] = static_cast<char>(units[plain]);
        ++plain;
    }
    text.resize(plain);
    for (std::size_t i = plain; i < count; ++i) {
        auto c = static_cast<std::uint32_t>(units[i]);
        if (c < 0x80) {
            text.push_back(static_cast<char>(c));
            continue;
        }
        if (escapes == Escapes::Undo && c >= kEscapeFirst && c <= kEscapeLast) {
            text.push_back(static_cast<char>(c & 0xFF));
            continue;
        }
        if (isHighSurrogate(c) && i + 1 < count && isLowSurrogate(static_cast<std::uint32_t>(units[i + 1])))
            c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<std::uint32_t>(units[++i]) - 0xDC00);
        else if (isHighSurrogate(c) || isLowSurrogate(c) || c > 0x10FFFF)
            c = kReplacement;
        appendUtf8(text, c);
    }
    return text;
}

Bstr allocate(const std::wstring& units)
{
    const auto bytes = units.size() * sizeof(wchar_t);
    auto* block = static_cast<char*>(std::malloc(4 + bytes + sizeof(wchar_t)));
    if (!block)
        return nullptr;
    const auto size = static_cast<std::uint32_t>(bytes);
    std::memcpy(block, &size, sizeof size);
    std::memcpy(block + 4, units.c_str(), bytes + sizeof(wchar_t));
    return reinterpret_cast<Bstr>(block + 4);
}

/// Length of the well-formed UTF-8 sequence at the front of `text` and its character; 0 when there is none.
std::size_t sequence(std::string_view text, std::uint32_t& c)
{
    const auto byte = [&](std::size_t i) { return static_cast<std::uint32_t>(static_cast<unsigned char>(text[i])); };
    const auto lead = byte(0);
    const std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (length > text.size() || (lead >= 0x80 && lead < 0xC2) || lead > 0xF4)
        return 0;
    c = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
        c = c << 6 | (byte(i) & 0x3F);
    }
    const bool isOverlong = (length == 3 && c < 0x800) || (length == 4 && c < 0x10000);
    return isOverlong || (c >= 0xD800 && c < 0xE000) || c > 0x10FFFF ? 0 : length;
}

}

std::string rawTextOf(const wchar_t* units, std::size_t count) { return toBytes(units, count, Escapes::Undo); }
std::string unicodeTextOf(const wchar_t* units, std::size_t count) { return toBytes(units, count, Escapes::Keep); }

Bstr makeBstr(std::string_view utf8)
{
    std::wstring units;
    units.reserve(utf8.size());
    while (!utf8.empty()) {
        std::uint32_t c = 0;
        const auto length = sequence(utf8, c);
        if (length == 0) {
            units.push_back(static_cast<wchar_t>(kEscapeBase + static_cast<unsigned char>(utf8.front())));
        } else if (c >= 0x10000) {
            units.push_back(static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10)));
            units.push_back(static_cast<wchar_t>(0xDC00 + (c & 0x3FF)));
        } else {
            units.push_back(static_cast<wchar_t>(c));
        }
        utf8.remove_prefix(length == 0 ? 1 : length);
    }
    return allocate(units);
}

Bstr makeRawBstr(std::string_view bytes)
{
    std::wstring units;
    units.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        units.push_back(static_cast<wchar_t>(value < 0x80 ? value : kEscapeBase + value));
    }
    return allocate(units);
}

std::uint64_t Variant::number(std::uint64_t fallback) const
{
    switch (type) {
    case VariantType::U8:
        return u8;
    case VariantType::U16:
        return u16;
    case VariantType::U32:
        return u32;
    case VariantType::U64:
        return u64;
    case VariantType::I32:
        return i32 < 0 ? fallback : static_cast<std::uint64_t>(i32);
    case VariantType::I64:
        return i64 < 0 ? fallback : static_cast<std::uint64_t>(i64);
    default:
        return fallback;
    }
}

bool Variant::isNumber() const { return number(0) != 0 || number(1) == 0; }

std::string Variant::rawText() const
{
    return type == VariantType::Text ? rawTextOf(text, bstrBytes(text) / sizeof(wchar_t)) : std::string();
}

std::string Variant::unicodeText() const
{
    return type == VariantType::Text ? unicodeTextOf(text, bstrBytes(text) / sizeof(wchar_t)) : std::string();
}

}
