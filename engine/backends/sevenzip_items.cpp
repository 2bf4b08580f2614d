#include "engine/backends/sevenzip_items.h"

#include "engine/backends/sevenzip_reparse.h"
#include "engine/formats/stored_time.h"

#include <algorithm>

namespace vantoro::sevenzip {

namespace {

// Windows attributes; with kHasUnixMode the upper half is a Unix mode.
constexpr std::uint32_t kAttributeReparse = 0x400;
constexpr std::uint32_t kHasUnixMode = 0x8000;

Timestamp timestamp(const Variant& value)
{
    if (value.type != VariantType::FileTime)
        return {};
    auto time = fileTime(value.u64);
    if (value.extraNanoseconds < 100)
        time.nanoseconds += value.extraNanoseconds;
    return time;
}

}

Items::Items(const Format& format, Ref<InArchive> handler, std::vector<SourcePtr> files)
    : m_format(format)
    , m_handler(std::move(handler))
    , m_raw(m_handler.query<RawProperties>())
    , m_files(std::move(files))
{
    std::uint32_t count = 0;
    if (m_handler->propertyCount(&count) != kOk)
        count = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        Bstr name = nullptr;
        std::uint32_t id = 0;
        std::uint16_t type = 0;
        if (m_handler->propertyInfo(i, &name, &id, &type) == kOk && id < kKnownProperties)
            m_known.set(id);
        freeBstr(name);
    }
    // Handlers answer these without announcing them.
    for (const auto id : {property::kPath, property::kIsFolder, property::kSize, property::kAttributes,
                          property::kPosixMode, property::kSymbolicLink})
        m_known.set(id);
}

Result<void> Items::load(const Limits& limits, const CancelToken& cancel)
{
    m_total = 0;
    if (m_handler->itemCount(&m_total) != kOk)
        return Error{ErrorCode::Corrupt, "7-Zip: the number of entries is not known"};
    if (m_total > limits.entries)
        return Error{ErrorCode::LimitExceeded, "7-Zip: too many entries"};
    if (!has(property::kIsAlternateStream) && !has(property::kIsAnti))
        return {};
    for (std::uint32_t i = 0; i < m_total; ++i) {
        TRY(cancel.check());
        Variant isAlternate, isAnti;
        read(i, property::kIsAlternateStream, isAlternate);
        read(i, property::kIsAnti, isAnti);
        const bool isSkipped = isAlternate.isTrue() || isAnti.isTrue();
        if (isSkipped && m_isIdentity) { // the first one: all before it are entries
            m_isIdentity = false;
            m_indices.resize(i);
            for (std::uint32_t k = 0; k < i; ++k)
                m_indices[k] = k;
        } else if (!isSkipped && !m_isIdentity) {
            m_indices.push_back(i);
        }
    }
    return {};
}

std::optional<std::uint64_t> Items::entryIndex(std::uint32_t handlerIndex) const
{
    if (m_isIdentity)
        return handlerIndex < m_total ? std::optional<std::uint64_t>(handlerIndex) : std::nullopt;
    const auto found = std::lower_bound(m_indices.begin(), m_indices.end(), handlerIndex);
    if (found == m_indices.end() || *found != handlerIndex)
        return std::nullopt;
    return static_cast<std::uint64_t>(found - m_indices.begin());
}

void Items::read(std::uint32_t item, std::uint32_t id, Variant& value) const
{
    value.clear();
    if (has(id) && m_handler->property(item, id, &value) != kOk)
        value.clear();
}

std::string Items::text(std::uint32_t item, std::uint32_t id, Variant& value) const
{
    read(item, id, value);
    return m_format.names == Format::Names::Unicode ? value.unicodeText() : value.rawText();
}

void Items::fillName(std::uint32_t item, Item& target) const
{
    Variant value;
    target.name = text(item, property::kPath, value);
    switch (m_format.names) {
    case Format::Names::Unicode:
    case Format::Names::Utf8:
        target.entry.nameCharset = isValidUtf8(target.name) ? kCharsetUtf8 : kCharsetUnknown;
        break;
    case Format::Names::Bytes:
        target.entry.nameCharset = kCharsetUnknown;
        break;
    case Format::Names::Cab:
        fillCabName(target);
        break;
    case Format::Names::Zip: {
        read(item, property::kCharacteristics, value);
        const auto traits = value.rawText(); // words, colons and spaces between them
        const bool isDeclared = traits.find("UTF8") != std::string::npos || traits.find(":up") != std::string::npos
            || traits.find(" up") != std::string::npos || traits.starts_with("up");
        target.entry.nameCharset = isDeclared ? kCharsetUtf8 : kCharsetUnknown;
        break;
    }
    }
}

void Items::fillCabName(Item& target) const
{
    if (isAscii(target.name))
        return;
    if (!m_cabNames)
        m_cabNames = readCabNames(m_files);
    const auto found = m_cabNames->find(target.name);
    if (found == m_cabNames->end())
        return;
    target.name = found->second.bytes;
    target.entry.nameCharset = found->second.isUtf8 ? kCharsetUtf8 : kCharsetUnknown;
    target.entry.pathStyle = PathStyle::Dos;
}

std::string Items::reparseTarget(std::uint32_t item) const
{
    const void* data = nullptr;
    std::uint32_t size = 0;
    std::uint32_t type = 0;
    if (!m_raw || m_raw->rawProperty(item, property::kReparsePoint, &data, &size, &type) != kOk || !data)
        return {};
    return linkOfReparsePoint({static_cast<const std::byte*>(data), size});
}

void Items::fillTimes(std::uint32_t item, Entry& entry) const
{
    Variant value;
    read(item, property::kModified, value);
    entry.modified = timestamp(value);
    read(item, property::kCreated, value);
    entry.created = timestamp(value);
    read(item, property::kAccessed, value);
    entry.accessed = timestamp(value);
}

void Items::fillKind(std::uint32_t item, Item& target) const
{
    Entry& entry = target.entry;
    Variant value;
    read(item, property::kIsFolder, value);
    const bool isFolder = value.isTrue();
    entry.kind = isFolder ? EntryKind::Folder : EntryKind::File;

    read(item, property::kAttributes, value);
    const auto attributes = static_cast<std::uint32_t>(value.number());
    read(item, property::kPosixMode, value);
    if (value.isNumber())
        entry.mode = static_cast<std::uint32_t>(value.number());
    else if (attributes & kHasUnixMode)
        entry.mode = attributes >> 16;
    if (entry.mode)
        entry.kind = kindOfMode(*entry.mode).value_or(entry.kind);
    if (isFolder != (entry.kind == EntryKind::Folder)) // a mode that contradicts the structure loses
        entry.kind = isFolder ? EntryKind::Folder : entry.kind == EntryKind::Folder ? EntryKind::File : entry.kind;

    target.linkTarget = text(item, property::kSymbolicLink, value);
    if (target.linkTarget.empty() && (attributes & kAttributeReparse) && !(attributes & kHasUnixMode))
        target.linkTarget = reparseTarget(item);
    if (!target.linkTarget.empty())
        entry.kind = EntryKind::SymbolicLink;
    else if (!isFolder && (attributes & kAttributeReparse) && !(attributes & kHasUnixMode))
        entry.kind = EntryKind::Other; // a reparse point that is no link
    if (has(property::kHardLink) && target.linkTarget.empty()) {
        target.linkTarget = text(item, property::kHardLink, value);
        if (!target.linkTarget.empty())
            entry.kind = EntryKind::HardLink;
    }
}

Result<void> Items::fill(std::uint64_t index, Item& target) const
{
    const auto item = handlerIndex(index);
    Entry& entry = target.entry;
    entry = {};
    entry.index = index;
    entry.pathStyle = m_format.pathStyle;
    fillName(item, target);
    fillKind(item, target);
    fillTimes(item, entry);

    Variant value;
    if (entry.kind != EntryKind::Folder) {
        read(item, property::kSize, value);
        if (value.isNumber() && target.linkTarget.empty()) // a link whose target is known delivers no data
            entry.size = value.number();
        read(item, property::kPackedSize, value);
        if (value.isNumber())
            entry.packedSize = value.number();
        read(item, property::kCrc, value);
        if (value.isNumber())
            entry.checksum = {Checksum::Kind::Crc32, static_cast<std::uint32_t>(value.number())};
        read(item, property::kEncrypted, value);
        entry.isEncrypted = value.isTrue();
        read(item, property::kBlock, value);
        if (value.isNumber())
            entry.solidGroup = static_cast<std::uint32_t>(value.number());
        read(item, property::kMethod, value);
        target.method = value.isNumber() ? std::to_string(value.number()) : value.rawText();
    } else {
        target.method.clear();
    }
    target.owner = text(item, property::kUser, value);
    target.group = text(item, property::kGroup, value);
    target.comment = text(item, property::kComment, value);

    entry.name = target.name;
    entry.linkTarget = target.linkTarget;
    entry.method = target.method;
    entry.owner = target.owner;
    entry.group = target.group;
    entry.comment = target.comment;
    return {};
}

bool Items::isEncrypted(std::uint64_t entry) const
{
    Variant value;
    read(handlerIndex(entry), property::kEncrypted, value);
    return value.isTrue();
}

bool Items::isFolder(std::uint64_t entry) const
{
    Variant value;
    read(handlerIndex(entry), property::kIsFolder, value);
    return value.isTrue();
}

std::optional<std::uint64_t> Items::size(std::uint64_t entry) const
{
    Variant value;
    read(handlerIndex(entry), property::kSize, value);
    return value.isNumber() ? std::optional(value.number()) : std::nullopt;
}

std::optional<std::uint32_t> Items::block(std::uint64_t entry) const
{
    Variant value;
    read(handlerIndex(entry), property::kBlock, value);
    return value.isNumber() ? std::optional(static_cast<std::uint32_t>(value.number())) : std::nullopt;
}

std::string Items::method(std::uint64_t entry) const
{
    Variant value;
    read(handlerIndex(entry), property::kMethod, value);
    return value.rawText();
}

}
