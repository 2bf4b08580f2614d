#include "cli/entry_printer.h"

#include "cli/commands.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstring>

namespace vantoro::cli {

namespace {

constexpr const char* kKindNames[] = {"file", "dir", "link", "hardlink", "rsrc", "other"};
constexpr std::size_t kSizeWidth = 13, kDateWidth = 16;

/// Printable ASCII, which goes out as it is. Eight bytes at a time: it is most of the work of a long listing.
bool isPlain(std::string_view name)
{
    constexpr std::uint64_t kEach = 0x0101010101010101;
    while (name.size() >= sizeof kEach) {
        std::uint64_t word;
        std::memcpy(&word, name.data(), sizeof word);
        const auto belowSpace = word - kEach * 0x20, aboveTilde = word + kEach;
        if ((word | belowSpace | aboveTilde) & kEach * 0x80)
            return false;
        name.remove_prefix(sizeof word);
    }
    return std::all_of(name.begin(), name.end(), [](unsigned char c) { return c >= 0x20 && c < 0x7F; });
}

std::string shownLink(const Entry& entry, CharsetId charset)
{
    return entry.kind == EntryKind::HardLink ? shownName(entry.linkTarget, charset, entry.pathStyle)
                                             : decode(entry.linkTarget, charset);
}

}

void EntryPrinter::print(const Entry& entry, CharsetId charset, const std::string& sha256)
{
    ++m_count;
    m_total += entry.size.value_or(0);
    if (m_json)
        printJson(entry, charset, sha256);
    else
        printLine(entry, charset);
}

void EntryPrinter::printSum()
{
    if (!m_json)
        m_out.put(std::to_string(m_count) + (m_count == 1 ? " entry, " : " entries, ") + sizeText(m_total) + "\n");
}

void EntryPrinter::number(std::string_view name, std::optional<std::uint64_t> value)
{
    key(name);
    if (value)
        m_out.putNumber(*value);
    else
        m_out.put("null");
}

void EntryPrinter::printJson(const Entry& entry, CharsetId charset, const std::string& sha256)
{
    m_out.put("{\"index\":");
    m_out.putNumber(entry.index);
    key("name");
    m_out.putJson(shownName(entry.name, charset, entry.pathStyle));
    key("kind");
    m_out.putJson(kKindNames[static_cast<int>(entry.kind)]);
    number("size", entry.size);
    number("packed", entry.packedSize);
    key("mtime");
    entry.modified.isSet ? m_out.putJson(m_dates.seconds(entry.modified)) : m_out.put("null");
    number("mode", entry.mode ? std::optional<std::uint64_t>(*entry.mode) : std::nullopt);
    key("link");
    entry.linkTarget.empty() ? m_out.put("null") : m_out.putJson(shownLink(entry, charset));
    key("encrypted");
    m_out.put(entry.isEncrypted ? "true" : "false");
    key("method");
    m_out.putJson(entry.method);
    key("crc");
    printChecksum(entry.checksum);
    if (!sha256.empty()) {
        key("sha256");
        m_out.putJson(sha256);
    }
    m_out.put("}\n");
}

void EntryPrinter::printChecksum(const Checksum& checksum)
{
    if (checksum.kind != Checksum::Kind::Crc32)
        return m_out.put("null");
    std::array<char, 9> digits;
    std::snprintf(digits.data(), digits.size(), "%08x", checksum.value);
    m_out.putJson({digits.data(), 8});
}

void EntryPrinter::printLine(const Entry& entry, CharsetId charset)
{
    std::array<char, 20> digits{'-'};
    std::size_t length = 1;
    if (entry.size)
        length
            = static_cast<std::size_t>(std::to_chars(digits.begin(), digits.end(), *entry.size).ptr - digits.begin());
    const auto date = m_dates.minutes(entry.modified);
    const auto sizeAt = 1 + kSizeWidth - std::min(length, kSizeWidth);
    const auto dateAt = sizeAt + length + 2;
    const auto end = dateAt + std::max(date.size(), kDateWidth) + 2;
    std::array<char, 128> line; // dates have 64 at most
    std::fill_n(line.begin(), end, ' ');
    line[0] = entry.isEncrypted ? '*' : ' ';
    std::memcpy(line.data() + sizeAt, digits.data(), length);
    std::memcpy(line.data() + dateAt, date.data(), date.size());
    m_out.put({line.data(), end});
    printName(entry, charset);
    if (!entry.linkTarget.empty()) {
        m_out.put(" -> ");
        m_out.put(printable(shownLink(entry, charset)));
    }
    m_out.put("\n");
}

void EntryPrinter::printName(const Entry& entry, CharsetId charset)
{
    const bool isAsItIs = isPlain(entry.name)
        && (entry.pathStyle == PathStyle::Unix || entry.name.find('\\') == std::string_view::npos);
    if (isAsItIs)
        m_out.put(withoutEnds(entry.name));
    else
        m_out.put(printable(shownName(entry.name, charset, entry.pathStyle)));
    if (entry.kind == EntryKind::Folder)
        m_out.put("/");
}

}
