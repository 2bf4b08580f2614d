#include "engine/formats/zip/entry_view.h"

#include "engine/crypto/crc32.h"
#include "engine/formats/stored_time.h"

namespace vantoro::zip {

namespace {

constexpr std::uint16_t kNtfsId = 0x000A, kPkUnixId = 0x000D, kTimestampId = 0x5455, kOldUnixId = 0x5855,
                        kUnixOwnerId = 0x7875, kUnicodePathId = 0x7075, kUnicodeCommentId = 0x6375;

Timestamp unixTime(std::uint32_t seconds) { return {.seconds = static_cast<std::int32_t>(seconds), .isSet = true}; }

struct Times {
    Timestamp modified, accessed, created;
};

Times readNtfs(ConstBytes field)
{
    Times times;
    ByteReader in(field);
    in.skip(4);
    while (in.ok() && in.remaining() >= 4) {
        const auto tag = in.le16();
        const auto size = in.le16();
        const auto value = in.take(size);
        if (tag != 1 || value.size() < 24)
            continue;
        ByteReader stamps(value);
        times.modified = fileTime(stamps.le64());
        times.accessed = fileTime(stamps.le64());
        times.created = fileTime(stamps.le64());
    }
    return times;
}

/// The copy in the directory holds the modification time alone, whatever the flags say.
Times readExtended(ConstBytes field)
{
    Times times;
    ByteReader in(field);
    const auto flags = in.u8();
    for (const auto& [bit, stamp] : {std::pair{1, &times.modified}, {2, &times.accessed}, {4, &times.created}}) {
        if ((flags & bit) != 0 && in.remaining() >= 4)
            *stamp = unixTime(in.le32());
    }
    return times;
}

Times readOldUnix(ConstBytes field)
{
    Times times;
    ByteReader in(field);
    const auto accessed = in.le32();
    const auto modified = in.le32();
    if (in.ok()) {
        times.accessed = unixTime(accessed);
        times.modified = unixTime(modified);
    }
    return times;
}

/// Text of a Unicode field, which counts only when its checksum is that of the text it stands for.
std::string_view unicodeText(ConstBytes field, std::string_view plain)
{
    ByteReader in(field);
    const auto version = in.u8();
    const auto crc = in.le32();
    if (!in.ok() || version != 1 || crc != crc32(0, asBytes(plain)))
        return {};
    const auto text = asText(in.rest());
    return isValidUtf8(text) ? text : std::string_view();
}

std::string numberText(ByteReader& in)
{
    const auto bytes = in.take(in.u8());
    std::uint64_t value = 0;
    for (std::size_t i = std::min<std::size_t>(bytes.size(), 8); i-- > 0;)
        value = value << 8 | std::to_integer<std::uint64_t>(bytes[i]);
    return std::to_string(value);
}

}

const Entry& EntryView::fill(std::uint64_t index, const DirectoryHeader& header, bool isSizeCredible)
{
    m_entry = Entry();
    m_entry.index = index;
    m_entry.name = header.name;
    m_entry.comment = header.comment;
    if (header.has(kUtf8) && isValidUtf8(header.name))
        m_entry.nameCharset = kCharsetUtf8;
    m_entry.pathStyle = header.hasDosNames() ? PathStyle::Dos : PathStyle::Unix;
    m_entry.kind = header.isFolder() ? EntryKind::Folder
        : header.isSymbolicLink()    ? EntryKind::SymbolicLink
                                     : EntryKind::File;
    m_entry.mode = header.mode();
    m_entry.isEncrypted = header.has(kEncrypted);
    if (isSizeCredible) {
        m_entry.size = header.size;
        m_entry.packedSize = header.packed;
        if (header.hasChecksum() && m_entry.kind != EntryKind::Folder)
            m_entry.checksum = {Checksum::Kind::Crc32, header.crc};
    }
    nameMethod(header);
    fillExtras(header);
    fillTimes(header);
    return m_entry;
}

void EntryView::nameMethod(const DirectoryHeader& header)
{
    // Mostly that of the entry before.
    const auto aes = header.aes();
    const auto key = static_cast<std::uint64_t>(header.method) | std::uint64_t{header.flags} << 16
        | (aes ? std::uint64_t{aes->strength} << 32 | static_cast<std::uint64_t>(aes->method) << 40 : 0);
    if (key != m_methodKey) {
        m_method = methodName(header);
        m_methodKey = key;
    }
    m_entry.method = m_method;
}

void EntryView::fillExtras(const DirectoryHeader& header)
{
    forEachExtra(header.extra, [&](std::uint16_t id, ConstBytes field) {
        if (id == kUnicodePathId && m_entry.nameCharset == kCharsetUnknown) {
            if (const auto text = unicodeText(field, header.name); !text.empty()) {
                m_entry.name = text;
                m_entry.nameCharset = kCharsetUtf8;
            }
        } else if (id == kUnicodeCommentId) {
            // In the charset of the name, so it counts where that is UTF-8 too.
            if (const auto text = unicodeText(field, header.comment); !text.empty())
                m_entry.comment = text;
        } else if (id == kUnixOwnerId) {
            ByteReader in(field);
            in.skip(1);
            m_owner = numberText(in);
            m_group = numberText(in);
            if (in.ok()) {
                m_entry.owner = m_owner;
                m_entry.group = m_group;
            }
        }
    });
}

void EntryView::fillTimes(const DirectoryHeader& header)
{
    Times ntfs, extended, old;
    forEachExtra(header.extra, [&](std::uint16_t id, ConstBytes field) {
        if (id == kNtfsId)
            ntfs = readNtfs(field);
        else if (id == kTimestampId)
            extended = readExtended(field);
        else if (id == kOldUnixId || id == kPkUnixId)
            old = readOldUnix(field);
    });
    const auto firstSet = [](std::initializer_list<Timestamp> stamps) {
        for (const auto& stamp : stamps) {
            if (stamp.isSet)
                return stamp;
        }
        return Timestamp();
    };
    m_entry.modified = firstSet({ntfs.modified, extended.modified, old.modified});
    m_entry.accessed = firstSet({ntfs.accessed, extended.accessed, old.accessed});
    m_entry.created = firstSet({ntfs.created, extended.created});
    if (!m_entry.modified.isSet)
        m_entry.modified = nearestDosTime(header.dosTime);
}

}
