#include "engine/formats/rar/text.h"

#include "engine/formats/stored_time.h"
#include "engine/text/utf16.h"

#include <algorithm>

namespace vantoro {

namespace {

std::string utf8FromUnits(std::span<const std::uint16_t> units)
{
    return utf8FromUtf16(std::as_bytes(units), std::endian::native);
}

/// The compact UTF-16 behind an 8-bit name; nothing when it is damaged.
std::optional<std::string> compactUnicode(std::string_view plain, ConstBytes coded)
{
    ByteReader in{coded};
    const auto high = static_cast<std::uint16_t>(in.u8() << 8);
    std::vector<std::uint16_t> units;
    std::uint8_t flags = 0;
    unsigned flagCount = 0;
    const auto plainAt = [&](std::size_t at) -> std::optional<std::uint8_t> {
        if (at < plain.size())
            return static_cast<std::uint8_t>(plain[at]);
        return std::nullopt;
    };
    while (in.remaining() > 0) {
        if (flagCount == 0) {
            flags = in.u8();
            flagCount = 4;
            if (in.remaining() == 0)
                break;
        }
        const auto kind = flags >> 6;
        flags = static_cast<std::uint8_t>(flags << 2);
        --flagCount;
        if (kind == 0) {
            units.push_back(in.u8());
        } else if (kind == 1) {
            units.push_back(static_cast<std::uint16_t>(high + in.u8()));
        } else if (kind == 2) {
            units.push_back(in.le16());
        } else {
            const auto count = in.u8();
            const auto isShifted = (count & 0x80) != 0;
            const auto shift = isShifted ? in.u8() : 0;
            for (unsigned i = 0; i < (count & 0x7FU) + 2; ++i) {
                const auto byte = plainAt(units.size());
                if (!byte)
                    return std::nullopt;
                units.push_back(isShifted ? static_cast<std::uint16_t>(high + ((*byte + shift) & 0xFF)) : *byte);
            }
        }
        if (!in.ok() || units.size() > 4 * plain.size() + 1024)
            return std::nullopt;
    }
    if (!in.ok() || units.empty())
        return std::nullopt;
    return utf8FromUnits(units);
}

}

void setOldName(RarMember& member, ConstBytes field, bool isUnicode, bool fromDos)
{
    const auto text = asText(field);
    const auto end = text.find('\0');
    const auto plain = text.substr(0, end);
    member.name = plain;
    member.charset = kCharsetUnknown;
    // The separator is a backslash whatever the host.
    member.pathStyle = PathStyle::Dos;
    if (!isUnicode)
        return;
    if (end == std::string_view::npos) {
        if (!isValidUtf8(plain))
            return;
    } else if (auto unicode = compactUnicode(plain, field.subspan(end + 1))) {
        member.name = *std::move(unicode);
    } else {
        return;
    }
    member.charset = kCharsetUtf8;
    std::replace(member.name.begin(), member.name.end(), '\\', '/');
    member.pathStyle = fromDos ? PathStyle::Dos : PathStyle::Unix;
}

RarNewText newText(std::string_view field, bool fromWindows)
{
    RarNewText result;
    result.text = field.substr(0, field.find('\0'));
    if (fromWindows)
        std::replace(result.text.begin(), result.text.end(), '\\', '_');
    // Bytes that were no text: U+FFFE in front of the first of them, each as U+E000 + byte.
    const auto mark = result.text.find("\xEF\xBF\xBE");
    if (mark != std::string::npos) {
        std::string raw = result.text.substr(0, mark);
        for (auto rest = std::string_view(result.text).substr(mark + 3); !rest.empty();) {
            const auto second = rest.size() >= 3 ? static_cast<std::uint8_t>(rest[1]) : 0;
            if (rest[0] == '\xEE' && (second == 0x82 || second == 0x83)) {
                raw.push_back(static_cast<char>((second & 3) << 6 | (rest[2] & 0x3F)));
                rest.remove_prefix(3);
            } else {
                raw.push_back(rest[0]);
                rest.remove_prefix(1);
            }
        }
        result.text = std::move(raw);
    }
    if (!isValidUtf8(result.text))
        result.charset = kCharsetUnknown;
    return result;
}

std::string guessedText(std::string_view bytes)
{
    if (isValidUtf8(bytes))
        return std::string(bytes);
    CharsetDetector detector;
    detector.add(bytes);
    return decode(bytes, detector.detect().charset);
}

Timestamp unixTime(std::uint32_t seconds, std::uint32_t nanoseconds)
{
    return {.seconds = seconds, .nanoseconds = nanoseconds, .isSet = true};
}

void readExtendedTimes(ByteReader& in, RarMember& member)
{
    const auto flags = in.le16();
    // Four nibbles, highest first; the fourth time, of archiving, is not kept.
    std::array<Timestamp*, 3> targets{&member.modified, &member.created, &member.accessed};
    for (unsigned i = 0; i < targets.size() && in.ok(); ++i) {
        const auto nibble = flags >> (12 - 4 * i) & 15U;
        if ((nibble & 8) == 0)
            continue;
        auto time = i == 0 ? member.modified : nearestDosTime(in.le32());
        std::uint32_t ticks = 0; // of 100 ns
        for (unsigned k = 0; k < (nibble & 3); ++k)
            ticks = static_cast<std::uint32_t>(in.u8()) << 16 | ticks >> 8;
        if (!in.ok() || !time.isSet)
            return;
        if ((nibble & 4) != 0)
            ++time.seconds;
        time.nanoseconds = std::min(ticks, 9'999'999U) * 100;
        *targets[i] = time;
    }
}

}
