#include "engine/formats/zip/headers.h"

#include <algorithm>

namespace vantoro::zip {

namespace {

constexpr std::uint16_t kZip64Id = 0x0001, kAesId = 0x9901;
constexpr std::uint32_t kTypeMask = 0xF000, kFolderType = 0x4000, kLinkType = 0xA000;
constexpr std::uint32_t kDosFolder = 0x10;

/// The zip64 field holds 8-byte values for those fields alone that are saturated, in a fixed order. A field shorter
/// than needed keeps the short values.
void applyZip64(DirectoryHeader& header, ConstBytes field)
{
    ByteReader in(field);
    const auto take = [&](std::uint64_t& value) {
        if (value == kSaturated32 && in.remaining() >= 8)
            value = in.le64();
    };
    take(header.size);
    take(header.packed);
    take(header.localOffset);
    if (header.disk == kSaturated16 && in.remaining() >= 4)
        header.disk = in.le32();
}

}

Result<std::size_t> DirectoryHeader::lengthOf(ConstBytes block)
{
    constexpr std::size_t kNameLengthAt = 28;
    ByteReader in(block);
    const auto signature = in.le32();
    if (in.ok() && signature != kDirectorySignature)
        return Error{ErrorCode::Corrupt, "zip: directory header signature"};
    in.seek(kNameLengthAt);
    std::size_t length = kDirectorySize;
    for (int part = 0; part < 3; ++part) // name, extra, comment
        length += in.le16();
    if (!in.ok() || length > block.size())
        return Error{ErrorCode::Truncated, "zip: directory header"};
    return length;
}

Result<DirectoryHeader> DirectoryHeader::parse(ConstBytes block)
{
    DirectoryHeader header;
    header.length = TRY(lengthOf(block));
    ByteReader in(block.first(header.length));
    in.skip(5); // signature and version made by: nothing depends on it
    header.host = in.u8();
    header.versionNeeded = in.le16();
    header.flags = in.le16();
    header.method = static_cast<Method>(in.le16());
    header.dosTime = in.le32();
    header.crc = in.le32();
    header.packed = in.le32();
    header.size = in.le32();
    const auto nameLength = in.le16();
    const auto extraLength = in.le16();
    const auto commentLength = in.le16();
    header.disk = in.le16();
    in.skip(2); // internal attributes
    header.external = in.le32();
    header.localOffset = in.le32();
    header.name = in.text(nameLength);
    header.extra = in.take(extraLength);
    header.comment = in.text(commentLength);
    if (header.size == kSaturated32 || header.packed == kSaturated32 || header.localOffset == kSaturated32
        || header.disk == kSaturated16) {
        forEachExtra(header.extra, [&](std::uint16_t id, ConstBytes field) {
            if (id == kZip64Id)
                applyZip64(header, field);
        });
    }
    return header;
}

bool DirectoryHeader::hasDosNames() const
{
    switch (static_cast<Host>(host)) {
    case Host::Fat:
    case Host::Ntfs:
    case Host::Mvs:
    case Host::Vfat:
        return true;
    default:
        return false;
    }
}

std::optional<std::uint32_t> DirectoryHeader::mode() const
{
    const bool isUnix = host == static_cast<std::uint8_t>(Host::Unix) || host == static_cast<std::uint8_t>(Host::MacOs);
    if (!isUnix || external >> 16 == 0)
        return {};
    return external >> 16;
}

bool DirectoryHeader::isFolder() const
{
    if (name.ends_with('/') || (hasDosNames() && name.ends_with('\\')))
        return true;
    if (const auto unixMode = mode(); unixMode && (*unixMode & kTypeMask) != 0)
        return (*unixMode & kTypeMask) == kFolderType;
    return (external & kDosFolder) != 0 && size == 0;
}

bool DirectoryHeader::isSymbolicLink() const
{
    const auto unixMode = mode();
    return unixMode && (*unixMode & kTypeMask) == kLinkType;
}

std::optional<AesField> DirectoryHeader::aes() const
{
    std::optional<AesField> result;
    if (method != Method::Aes)
        return result;
    forEachExtra(extra, [&](std::uint16_t id, ConstBytes field) {
        if (id != kAesId || field.size() < 7)
            return;
        ByteReader in(field);
        AesField aes;
        aes.version = in.le16();
        in.skip(2); // "AE"
        aes.strength = in.u8();
        aes.method = static_cast<Method>(in.le16());
        if (aes.strength >= 1 && aes.strength <= 3)
            result = aes;
    });
    return result;
}

Method DirectoryHeader::realMethod() const
{
    const auto field = aes();
    return field ? field->method : method;
}

bool DirectoryHeader::hasChecksum() const
{
    const auto field = aes();
    return !field || field->version == 1;
}

Result<LocalHeader> LocalHeader::parse(ConstBytes block)
{
    ByteReader in(block);
    const auto signature = in.le32();
    LocalHeader header;
    header.versionNeeded = in.le16();
    header.flags = in.le16();
    header.method = in.le16();
    header.dosTime = in.le32();
    header.crc = in.le32();
    header.packed = in.le32();
    header.size = in.le32();
    header.nameLength = in.le16();
    header.extraLength = in.le16();
    if (!in.ok())
        return Error{ErrorCode::Truncated, "zip: local header"};
    if (signature != kLocalSignature)
        return Error{ErrorCode::Corrupt, "zip: local header signature"};
    return header;
}

void LocalHeader::applyExtra(ConstBytes extra)
{
    forEachExtra(extra, [&](std::uint16_t id, ConstBytes field) {
        if (id != kZip64Id)
            return;
        isZip64 = true;
        ByteReader in(field);
        if (size == kSaturated32 && in.remaining() >= 8)
            size = in.le64();
        if (packed == kSaturated32 && in.remaining() >= 8)
            packed = in.le64();
    });
}

namespace {

struct MethodName {
    std::uint16_t method;
    const char* name;
};

constexpr MethodName kMethodNames[] = {
    {0, "Stored"},       {1, "Shrink"},  {2, "Reduce1"},  {3, "Reduce2"},    {4, "Reduce3"},
    {5, "Reduce4"},      {6, "Implode"}, {7, "Tokenize"}, {8, "Deflate"},    {9, "Deflate64"},
    {10, "DCL Implode"}, {12, "BZip2"},  {14, "LZMA"},    {20, "Zstandard"}, {93, "Zstandard"},
    {94, "MP3"},         {95, "XZ"},     {96, "JPEG"},    {97, "WavPack"},   {98, "PPMd"},
};

const MethodName* findMethod(std::uint16_t method)
{
    for (const auto& row : kMethodNames) {
        if (row.method == method)
            return &row;
    }
    return nullptr;
}

}

std::string methodName(const DirectoryHeader& header)
{
    std::string name;
    if (const auto aes = header.aes())
        name = "AES-" + std::to_string(64 + 64 * aes->strength) + " ";
    else if (header.has(kStrongEncryption))
        name = "Strong encryption ";
    else if (header.has(kEncrypted))
        name = "ZipCrypto ";
    const auto method = static_cast<std::uint16_t>(header.realMethod());
    const auto* row = findMethod(method);
    return name + (row ? row->name : "Method " + std::to_string(method));
}

bool isKnownMethod(std::uint16_t method)
{
    return findMethod(method) != nullptr || method == static_cast<std::uint16_t>(Method::Aes);
}

}
