#include "engine/formats/lha_header.h"

#include "engine/crypto/crc16.h"
#include "engine/formats/stored_time.h"
#include "engine/text/utf16.h"

#include <algorithm>
#include <sys/stat.h>

namespace vantoro {

namespace {

constexpr std::size_t kLeastHeader = 21; // up to the level
constexpr std::size_t kMostHeader = 1 << 20; // of level 3, with all extensions
constexpr std::size_t kLevelAt = 20;
constexpr char kSeparator = '\xFF'; // between folders in extended headers

bool isMethod(std::string_view text)
{
    return text.size() == 5 && text[0] == '-' && (text[1] == 'l' || text[1] == 'p') && text[4] == '-'
        && (text[2] == 'h' || text[2] == 'z' || text[2] == 'm');
}

Timestamp unixTime(std::uint32_t seconds)
{
    Timestamp time;
    time.isSet = seconds != 0;
    time.seconds = seconds;
    return time;
}

/// Folders are divided by U+FFFF.
std::string unicodeName(ConstBytes bytes)
{
    constexpr std::string_view kDivider = "\uFFFF";
    auto name = utf8FromUtf16(bytes, std::endian::little);
    for (auto at = name.find(kDivider); at != std::string::npos; at = name.find(kDivider, at))
        name.replace(at, kDivider.size(), "/");
    return name;
}

CharsetId charsetOfCodePage(std::uint32_t codePage)
{
    if (codePage == 65001)
        return kCharsetUtf8;
    const auto* charset = findCharset("CP" + std::to_string(codePage));
    return charset ? charset->id : kCharsetUnknown;
}

/// What the extended headers add; names are put together at the end because their order is free.
struct Extensions {
    std::string folder, file;
    std::optional<std::string> unicodeFolder, unicodeFile;
    std::uint32_t codePage = 0;
    std::optional<std::uint16_t> headerCrc;
    std::optional<Timestamp> unixModified;

    void take(unsigned type, ConstBytes data, LhaHeader& header);
};

void Extensions::take(unsigned type, ConstBytes data, LhaHeader& header)
{
    ByteReader in(data);
    switch (type) {
    case 0x00:
        headerCrc = in.le16();
        break;
    case 0x01:
        file = asText(data);
        break;
    case 0x02:
        folder = asText(data);
        std::replace(folder.begin(), folder.end(), kSeparator, '/');
        break;
    case 0x3F:
        header.comment = asText(data);
        break;
    case 0x41:
        header.created = fileTime(in.le64());
        header.modified = fileTime(in.le64());
        header.accessed = fileTime(in.le64());
        break;
    case 0x42:
        header.packedSize = in.le64();
        header.size = in.le64();
        break;
    case 0x44:
        unicodeFile = unicodeName(data);
        break;
    case 0x45:
        unicodeFolder = unicodeName(data);
        break;
    case 0x46:
        codePage = in.le32();
        break;
    case 0x50:
        header.mode = in.le16();
        break;
    case 0x52:
        header.group = asText(data);
        break;
    case 0x53:
        header.owner = asText(data);
        break;
    case 0x54:
        unixModified = unixTime(in.le32());
        break;
    default:
        break;
    }
}

std::string joined(const std::string& folder, const std::string& file)
{
    const bool needsSlash = !folder.empty() && !file.empty() && folder.back() != '/';
    return folder + (needsSlash ? "/" : "") + file;
}

/// One header, parsed from a block that holds all of it.
class Parser {
public:
    Parser(const ByteSource& source, std::uint64_t position) : m_source(source), m_position(position) {}

    Result<LhaHeader> parse()
    {
        m_block = TRY(readBlock(m_source, m_position, 4096));
        if (m_block.size() < kLeastHeader + 1)
            return Error{ErrorCode::Truncated, "lha: header"};
        ByteReader in(m_block);
        in.skip(2);
        m_header.method = in.text(5);
        if (!isMethod(m_header.method))
            return Error{ErrorCode::Corrupt, "lha: no header where one should be"};
        m_header.packedSize = in.le32();
        m_header.size = in.le32();
        const auto stamp = in.le32();
        m_header.level = std::to_integer<unsigned>(m_block[kLevelAt]);
        if (m_header.level > 3)
            return Error{ErrorCode::UnsupportedFeature, "lha: header level"};
        m_header.modified = m_header.level < 2 ? dosTime(stamp) : unixTime(stamp);
        TRY(m_header.level < 2 ? parseOldLevels() : parseNewLevels());
        finishNames();
        return std::move(m_header);
    }

private:
    Result<void> need(std::size_t size)
    {
        if (size > kMostHeader)
            return Error{ErrorCode::Corrupt, "lha: header size"};
        if (m_block.size() < size)
            m_block = TRY(readBlock(m_source, m_position, size));
        if (m_block.size() < size)
            return Error{ErrorCode::Truncated, "lha: header"};
        return {};
    }

    /// Levels 0 and 1: a size byte, a sum, the name in the middle.
    Result<void> parseOldLevels()
    {
        const std::size_t size = std::to_integer<std::size_t>(m_block[0]) + 2;
        TRY(need(size));
        unsigned sum = 0;
        for (std::size_t i = 2; i < size; ++i)
            sum += std::to_integer<unsigned>(m_block[i]);
        if ((sum & 0xFF) != std::to_integer<unsigned>(m_block[1]))
            return Error{ErrorCode::Corrupt, "lha: header checksum"};
        ByteReader in(ConstBytes(m_block).first(size));
        in.seek(kLevelAt + 1);
        m_extensions.file = in.text(in.u8());
        m_header.crc = in.le16();
        if (!in.ok())
            return Error{ErrorCode::Corrupt, "lha: name length"};
        m_header.dataPosition = m_position + size;
        if (m_header.level == 0) {
            parseLevel0Area(in);
            return {};
        }
        m_header.system = static_cast<char>(in.u8());
        return parseChain(size - 2, 2);
    }

    void parseLevel0Area(ByteReader& in)
    {
        constexpr std::size_t kUnixArea = 11;
        if (in.remaining() == 0)
            return;
        if (m_header.method[1] == 'p') {
            m_header.comment = asText(in.rest()); // PMarc 2
            return;
        }
        m_header.system = static_cast<char>(in.u8());
        if (m_header.system != 'U' || in.remaining() < kUnixArea)
            return;
        in.skip(1); // version
        m_header.modified = unixTime(in.le32());
        m_header.mode = in.le16();
    }

    /// Levels 2 and 3: everything that varies stands in extended headers.
    Result<void> parseNewLevels()
    {
        ByteReader in(m_block);
        const unsigned wide = m_header.level == 2 ? 2 : 4;
        std::size_t size = in.le16();
        in.seek(kLevelAt + 1);
        m_header.crc = in.le16();
        m_header.system = static_cast<char>(in.u8());
        if (m_header.level == 3) {
            if (size != 4)
                return Error{ErrorCode::Corrupt, "lha: word size"};
            size = in.le32();
        }
        const auto chain = in.position();
        if (!in.ok() || size < chain + wide)
            return Error{ErrorCode::Corrupt, "lha: header size"};
        TRY(need(size));
        m_headerSize = size;
        m_header.dataPosition = m_position + size;
        return parseChain(chain, wide);
    }

    /// Extended headers: each ends with the size of the next, the first size stands at `at`. In level 1 they lie
    /// behind the header and count as packed data.
    Result<void> parseChain(std::size_t at, unsigned wide)
    {
        std::size_t headerCrcAt = 0;
        std::size_t end = at + wide;
        for (;;) {
            TRY(need(end));
            ByteReader in(ConstBytes(m_block).subspan(end - wide));
            const std::size_t size = wide == 2 ? in.le16() : in.le32();
            if (size == 0)
                break;
            if (size < wide + 1U || size > kMostHeader - end)
                return Error{ErrorCode::Corrupt, "lha: extended header size"};
            if (m_headerSize != 0 && end + size > m_headerSize)
                return Error{ErrorCode::Corrupt, "lha: extended header past the end"};
            TRY(need(end + size));
            const auto extension = ConstBytes(m_block).subspan(end, size - wide);
            const auto type = std::to_integer<unsigned>(extension[0]);
            if (type == 0)
                headerCrcAt = end + 1;
            m_extensions.take(type, extension.subspan(1), m_header);
            end += size;
        }
        if (m_header.level == 1) {
            const auto extensions = end - at - wide;
            if (extensions > m_header.packedSize)
                return Error{ErrorCode::Corrupt, "lha: extended headers larger than the entry"};
            m_header.packedSize -= extensions;
            m_header.dataPosition = m_position + end;
            m_headerSize = end;
        }
        return checkCrc(headerCrcAt);
    }

    /// The CRC of the header is taken with its own field as zero.
    Result<void> checkCrc(std::size_t fieldAt)
    {
        if (fieldAt == 0 || fieldAt + 2 > m_headerSize)
            return {};
        std::fill_n(m_block.begin() + static_cast<std::ptrdiff_t>(fieldAt), 2, std::byte{0});
        if (crc16Arc(0, ConstBytes(m_block).first(m_headerSize)) != *m_extensions.headerCrc)
            return Error{ErrorCode::Corrupt, "lha: header checksum"};
        return {};
    }

    void finishNames()
    {
        auto& extensions = m_extensions;
        if (const auto comment = extensions.file.find('\0');
            comment != std::string::npos && (m_header.system == 'A' || m_header.level == 0)) {
            // Amiga programs hide a comment behind the name.
            m_header.comment = extensions.file.substr(comment + 1);
            extensions.file.resize(comment);
        }
        if (extensions.unicodeFile && (extensions.unicodeFolder || extensions.folder.empty())) {
            m_header.name = joined(extensions.unicodeFolder.value_or(""), *extensions.unicodeFile);
            m_header.nameCharset = kCharsetUtf8;
        } else {
            m_header.name = joined(extensions.folder, extensions.file);
            if (extensions.codePage != 0)
                m_header.nameCharset = charsetOfCodePage(extensions.codePage);
        }
        if (extensions.unixModified)
            m_header.modified = *extensions.unixModified;
        if (m_header.method == "-lhd-" && (!m_header.mode || S_ISLNK(*m_header.mode)))
            splitLink();
    }

    /// Links on Unix are stored as folders named "link|target".
    void splitLink()
    {
        const auto bar = m_header.name.find('|');
        if (bar == std::string::npos)
            return;
        m_header.linkTarget = m_header.name.substr(bar + 1);
        m_header.name.resize(bar);
    }

    const ByteSource& m_source;
    std::uint64_t m_position;
    std::vector<std::byte> m_block;
    std::size_t m_headerSize = 0;
    LhaHeader m_header;
    Extensions m_extensions;
};

}

Result<std::optional<LhaHeader>> LhaHeader::read(const ByteSource& source, std::uint64_t position)
{
    const auto start = TRY(readBlock(source, position, 7));
    constexpr std::byte kEnd{0}, kPadding{0x1A};
    // From level 2 on the first byte is the low one of a size, and may be zero in a header.
    const bool isHeader = start.size() == 7 && isMethod(asText(ConstBytes(start).subspan(2)));
    if (start.empty() || (!isHeader && (start[0] == kEnd || start[0] == kPadding)))
        return std::nullopt;
    return std::optional(TRY(Parser(source, position).parse()));
}

bool LhaHeader::looksRight(ConstBytes bytes)
{
    return bytes.size() > kLevelAt && isMethod(asText(bytes.subspan(2, 5)))
        && std::to_integer<unsigned>(bytes[kLevelAt]) <= 3;
}

}
