#include "engine/formats/tar_pax.h"

#include <algorithm>
#include <charconv>

namespace vantoro {

namespace {

constexpr std::size_t kMostAttributes = 256;

/// Seconds with a fraction, perhaps negative: "1350244992.023960108".
std::optional<Timestamp> parseTime(std::string_view text)
{
    Timestamp time;
    const auto end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, time.seconds);
    if (error != std::errc())
        return std::nullopt;
    time.isSet = true;
    if (rest == end || *rest != '.')
        return time;
    std::uint32_t scale = 100'000'000;
    for (auto digit = rest + 1; digit != end && *digit >= '0' && *digit <= '9'; ++digit, scale /= 10)
        time.nanoseconds += scale * static_cast<std::uint32_t>(*digit - '0');
    // The fraction counts away from zero, nanoseconds count forward.
    if (text.starts_with('-') && time.nanoseconds > 0) {
        --time.seconds;
        time.nanoseconds = 1'000'000'000 - time.nanoseconds;
    }
    return time;
}

std::string decodeBase64(std::string_view text)
{
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (const char c : text) {
        const auto digit = kDigits.find(c);
        if (digit == std::string_view::npos)
            break;
        bits = bits << 6 | static_cast<std::uint32_t>(digit);
        count += 6;
        if (count >= 8) {
            count -= 8;
            out.push_back(static_cast<char>(bits >> count & 0xFF));
        }
    }
    return out;
}

std::string decodePercent(std::string_view text)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned value = 0;
        const auto* const digits = text.data() + i + 1;
        if (text[i] == '%' && i + 2 < text.size() && std::from_chars(digits, digits + 2, value, 16).ptr == digits + 2) {
            out.push_back(static_cast<char>(value));
            i += 2;
        } else {
            out.push_back(text[i]);
        }
    }
    return out;
}

constexpr std::string_view kStarAttribute = "SCHILY.xattr.";
constexpr std::string_view kLibarchiveAttribute = "LIBARCHIVE.xattr.";
constexpr std::string_view kGnuSparse = "GNU.sparse.";

}

std::optional<std::uint64_t> parseDecimal(std::string_view text)
{
    std::uint64_t value = 0;
    const auto end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || rest != end || value >> 63 != 0)
        return std::nullopt;
    return value;
}

Result<void> TarRecords::parse(ConstBytes block)
{
    auto text = asText(block);
    while (!text.empty() && text.front() != '\0') {
        // "25 path=some/where/a.txt\n": the length counts itself and the line feed.
        const auto space = text.find(' ');
        const auto length = parseDecimal(text.substr(0, std::min<std::size_t>(space, 20)));
        if (space == std::string_view::npos || !length || *length < space + 3 || *length > text.size()
            || text[static_cast<std::size_t>(*length) - 1] != '\n')
            return Error{ErrorCode::Corrupt, "tar: length of an extended record"};
        const auto record = text.substr(space + 1, static_cast<std::size_t>(*length) - space - 2);
        const auto equals = record.find('=');
        if (equals == std::string_view::npos)
            return Error{ErrorCode::Corrupt, "tar: extended record without a value"};
        TRY(take(record.substr(0, equals), record.substr(equals + 1)));
        text.remove_prefix(static_cast<std::size_t>(*length));
    }
    return {};
}

Result<void> TarRecords::take(std::string_view key, std::string_view value)
{
    if (key == "path") {
        path = value;
    } else if (key == "linkpath") {
        linkPath = value;
    } else if (key == "size") {
        size = parseDecimal(value);
        if (!size)
            return Error{ErrorCode::Corrupt, "tar: size in an extended record"};
    } else if (key == "mtime") {
        modified = parseTime(value);
    } else if (key == "atime") {
        accessed = parseTime(value);
    } else if (key == "LIBARCHIVE.creationtime") {
        created = parseTime(value);
    } else if (key == "uname") {
        owner = value;
    } else if (key == "gname") {
        group = value;
    } else if (key == "comment") {
        comment = value;
    } else if (key == "hdrcharset") {
        namesAreBinary = value == "BINARY";
    } else if (key == "SCHILY.realsize") {
        realSize = parseDecimal(value);
    } else if (key.starts_with(kStarAttribute)) {
        TRY(takeAttribute(key.substr(kStarAttribute.size()), std::string(value)));
    } else if (key.starts_with(kLibarchiveAttribute)) {
        TRY(takeAttribute(decodePercent(key.substr(kLibarchiveAttribute.size())), decodeBase64(value)));
    } else if (key.starts_with(kGnuSparse)) {
        if (!TRY(takeSparse(key.substr(kGnuSparse.size()), value)))
            return Error{ErrorCode::Corrupt, "tar: sparse map in an extended record"};
    }
    return {};
}

Result<bool> TarRecords::takeSparse(std::string_view key, std::string_view value)
{
    if (key == "name") {
        sparseName = value;
        return true;
    }
    if (key == "map") { // 0.1: offset,length,offset,length…
        sparseMap.clear();
        hasSparseMap = true;
        std::optional<std::uint64_t> offset;
        while (!value.empty()) {
            const auto comma = std::min(value.find(','), value.size());
            const auto number = parseDecimal(value.substr(0, comma));
            if (!number)
                return false;
            if (offset)
                sparseMap.push_back({*offset, *number});
            offset = offset ? std::nullopt : number;
            value.remove_prefix(std::min(comma + 1, value.size()));
        }
        return !offset;
    }
    const auto number = parseDecimal(value);
    if (!number)
        return false;
    if (key == "major") {
        sparseMajor = static_cast<unsigned>(std::min<std::uint64_t>(*number, 99));
    } else if (key == "minor") {
        sparseMinor = static_cast<unsigned>(std::min<std::uint64_t>(*number, 99));
    } else if (key == "size" || key == "realsize") {
        realSize = *number;
    } else if (key == "offset") { // 0.0: pairs of records
        m_pendingOffset = *number;
        hasSparseMap = true;
    } else if (key == "numbytes") {
        if (!m_pendingOffset)
            return false;
        sparseMap.push_back({*m_pendingOffset, *number});
        m_pendingOffset.reset();
    }
    return true;
}

Result<void> TarRecords::takeAttribute(std::string_view name, std::string value)
{
    const auto known = std::find_if(attributes.begin(), attributes.end(), [&](auto& a) { return a.first == name; });
    if (known != attributes.end())
        known->second = std::move(value);
    else if (attributes.size() < kMostAttributes)
        attributes.emplace_back(name, std::move(value));
    return {};
}

}
