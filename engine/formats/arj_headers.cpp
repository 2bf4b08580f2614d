#include "engine/formats/arj_headers.h"

#include "engine/crypto/crc32.h"
#include "engine/formats/stored_time.h"

namespace vantoro::arj {

namespace {

using namespace std::string_view_literals;

constexpr auto kMark = "\x60\xEA"sv;
constexpr std::size_t kSmallest = 30; // bytes of a basic header without name
constexpr std::size_t kLargest = 2600;
constexpr std::size_t kStubSearch = 1 << 20; // bytes of a program in front

/// Size of the basic header, 0 for the end mark; nothing when there is no header.
std::optional<std::size_t> headerSize(ConstBytes block)
{
    ByteReader in(block);
    const auto mark = in.text(kMark.size());
    const std::size_t size = in.le16();
    if (!in.ok() || mark != kMark || (size != 0 && (size < kSmallest || size > kLargest)))
        return std::nullopt;
    return size;
}

bool hasRightChecksum(ConstBytes block, std::size_t size)
{
    ByteReader in(block);
    in.skip(4);
    const auto basic = in.take(size);
    const auto stored = in.le32();
    return in.ok() && crc32(0, basic) == stored;
}

std::string textUntilNul(ByteReader& in)
{
    std::string text;
    while (in.remaining() > 0) {
        const auto c = static_cast<char>(in.u8());
        if (c == 0)
            break;
        text.push_back(c);
    }
    return text;
}

Result<Header> parse(ConstBytes basic)
{
    ByteReader in(basic);
    Header header;
    const std::size_t firstSize = in.u8();
    in.skip(2); // versions
    header.host = static_cast<Host>(in.u8());
    header.flags = in.u8();
    header.method = in.u8();
    header.kind = static_cast<Kind>(in.u8());
    header.modifier = in.u8();
    header.time = in.le32();
    header.packedSize = in.le32();
    header.size = in.le32();
    header.crc = in.le32();
    in.skip(2); // offset of the file part of the name
    header.mode = in.le16();
    header.encryptionVersion = in.u8();
    if (firstSize >= 34) {
        in.seek(30);
        header.partPosition = in.le32();
    }
    in.seek(firstSize);
    header.name = textUntilNul(in);
    header.comment = textUntilNul(in);
    if (!in.ok() || firstSize < kSmallest)
        return Error{ErrorCode::Corrupt, "arj: header too short"};
    return header;
}

/// Passes over the extended headers, which say nothing that is needed.
Result<std::uint64_t> skipExtensions(const ByteSource& source, std::uint64_t position)
{
    for (;;) {
        const auto block = TRY(readBlock(source, position, 2));
        ByteReader in(block);
        const std::size_t size = in.le16();
        if (!in.ok())
            return Error{ErrorCode::Truncated, "arj: extended header"};
        position += 2;
        if (size == 0)
            return position;
        position += size + 4;
    }
}

}

Timestamp Header::modified() const
{
    if (time == 0)
        return {};
    if (isUnix())
        return {.seconds = static_cast<std::int64_t>(time), .isSet = true};
    return dosTime(time);
}

Result<std::optional<Header>> readHeader(const ByteSource& source, std::uint64_t position)
{
    const auto block = TRY(readBlock(source, position, 4 + kLargest + 4));
    if (block.size() < 4)
        return Error{ErrorCode::Truncated, "arj: header"};
    const auto size = headerSize(block);
    if (!size)
        return Error{ErrorCode::Corrupt, "arj: no header where one must be"};
    if (*size == 0)
        return std::optional<Header>();
    if (block.size() < 4 + *size + 4)
        return Error{ErrorCode::Truncated, "arj: header"};
    if (!hasRightChecksum(block, *size))
        return Error{ErrorCode::Corrupt, "arj: checksum of a header"};
    auto header = TRY(parse(ConstBytes(block).subspan(4, *size)));
    header.position = position;
    header.dataPosition = TRY(skipExtensions(source, position + 4 + *size + 4));
    return std::optional(std::move(header));
}

bool isMainHeader(ConstBytes head)
{
    const auto size = headerSize(head);
    if (!size || *size == 0 || !hasRightChecksum(head, *size))
        return false;
    const auto header = parse(head.subspan(4, *size));
    return header && header->kind == Kind::Main;
}

std::optional<std::uint64_t> findStart(const ByteSource& source)
{
    const auto head = readBlock(source, 0, kStubSearch);
    if (!head)
        return std::nullopt;
    const auto text = asText(*head);
    for (std::size_t at = 0; (at = text.find(kMark, at)) != std::string_view::npos; ++at) {
        if (isMainHeader(ConstBytes(*head).subspan(at)))
            return at;
    }
    return std::nullopt;
}

}
