#include "platform/XADListing.h"

#include <algorithm>
#include <limits>

namespace vantoro {
namespace {

constexpr std::size_t kMostShownBytes = 4000;
constexpr std::size_t kMostShownParts = 512;
constexpr std::size_t kAskEvery = 256; // entries between looks at the clock
constexpr auto kTellEvery = std::chrono::milliseconds(50);

XADEntryTable::Row rowOf(const Entry& entry)
{
    XADEntryTable::Row row;
    row.isFolder = entry.kind == EntryKind::Folder;
    row.isEncrypted = entry.isEncrypted;
    row.isLink = entry.kind == EntryKind::SymbolicLink || entry.kind == EntryKind::HardLink;
    row.hasSize = entry.size.has_value();
    constexpr std::uint64_t kMost = std::numeric_limits<qint64>::max();
    row.size = static_cast<qint64>(std::min(entry.size.value_or(0), kMost));
    row.hasDate = entry.modified.isSet;
    row.dateIsLocal = entry.modified.isLocal;
    row.date = entry.modified.seconds;
    return row;
}

void append(std::string& path, std::string_view part)
{
    if (!path.empty())
        path += '/';
    path += part;
}

}

std::string presentableName(std::string_view utf8, PathStyle style)
{
    const auto separators = style == PathStyle::Dos ? std::string_view("/\\") : std::string_view("/");
    std::string path;
    std::string_view last;
    std::size_t parts = 0;
    for (std::size_t at = 0; at <= utf8.size();) {
        const auto end = std::min(utf8.find_first_of(separators, at), utf8.size());
        const auto part = utf8.substr(at, end - at);
        at = end + 1;
        if (part.empty() || part == ".")
            continue;
        last = part == ".." ? std::string_view("_") : part;
        append(path, last);
        ++parts;
    }
    if (parts > kMostShownParts || path.size() > kMostShownBytes)
        path = std::string("…/").append(last.substr(0, kMostShownBytes));
    std::ranges::replace(path, '\0', '_');
    std::ranges::replace(path, '\n', '_');
    return path;
}

XADListing::XADListing(const XADListingWatch& watch) : m_watch(watch) {}

Result<void> XADListing::visit(const Entry& entry)
{
    const auto index = static_cast<std::size_t>(m_table->count());
    m_hasEncryptedEntries |= entry.isEncrypted;
    if (EntryNames::isUndeclared(entry.name, entry.nameCharset)) {
        m_detector.add(entry.name);
        m_waiting.push_back({static_cast<quint32>(index), entry.nameCharset, entry.pathStyle});
        m_table->add(rowOf(entry), entry.name);
    } else {
        const auto name = EntryNames(kCharsetUtf8).decoded(entry.name, entry.nameCharset, m_decoded);
        m_table->add(rowOf(entry), shown(name, entry.pathStyle, index));
    }
    return index % kAskEvery == 0 ? tell() : m_watch.cancel.check();
}

std::string_view XADListing::shown(std::string_view utf8, PathStyle style, std::size_t index)
{
    m_shown.clear();
    if (const auto parts = m_cleaner.clean(utf8, style)) {
        for (const auto part : *parts)
            append(m_shown, part);
    } else {
        m_shown = presentableName(utf8, style);
    }
    if (m_shown.empty())
        m_shown = "entry " + std::to_string(index);
    return m_shown;
}

Result<void> XADListing::tell()
{
    const auto now = std::chrono::steady_clock::now();
    if (m_watch.counted && now >= m_nextTold) {
        m_watch.counted(m_table->count());
        m_nextTold = now + kTellEvery;
    }
    return m_watch.cancel.check();
}

std::shared_ptr<const XADEntryTable> XADListing::finish()
{
    m_charset = m_detector.detect().charset;
    const EntryNames names(m_charset);
    for (const auto& [index, declared, style] : m_waiting)
        m_table->setName(index, shown(names.decoded(m_table->name(index), declared, m_decoded), style, index));
    if (m_watch.counted)
        m_watch.counted(m_table->count());
    return m_table;
}

}
