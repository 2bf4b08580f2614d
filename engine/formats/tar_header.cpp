#include "engine/formats/tar_header.h"

#include <algorithm>
#include <bit>

namespace vantoro {

namespace {

// Field positions of POSIX.1-1988 (ustar); what follows the group name differs between the dialects.
constexpr std::size_t kName = 0, kNameLength = 100;
constexpr std::size_t kMode = 100, kUser = 108, kGroup = 116, kIdLength = 8;
constexpr std::size_t kSize = 124, kModified = 136, kLongNumber = 12;
constexpr std::size_t kChecksum = 148, kChecksumLength = 8;
constexpr std::size_t kType = 156;
constexpr std::size_t kLinkName = 157;
constexpr std::size_t kMagic = 257;
constexpr std::size_t kOwnerName = 265, kGroupName = 297, kOwnerLength = 32;
constexpr std::size_t kPrefix = 345, kPrefixLength = 155;
constexpr std::size_t kStarPrefixLength = 131, kStarAccessed = 476, kStarMagic = 508;
constexpr std::size_t kGnuAccessed = 345, kGnuSparse = 386, kGnuIsExtended = 482, kGnuRealSize = 483;
constexpr std::size_t kGnuSparseCount = 4, kGnuExtensionCount = 21, kExtensionIsExtended = 504;

std::string_view textField(ConstBytes block, std::size_t position, std::size_t length)
{
    const auto field = asText(block.subspan(position, length));
    return field.substr(0, field.find('\0'));
}

std::optional<std::int64_t> numberField(ConstBytes block, std::size_t position, std::size_t length)
{
    return parseTarNumber(block.subspan(position, length));
}

std::optional<std::int64_t> parseBinary(ConstBytes field)
{
    // The first bit says that the number is binary; the second is its sign.
    const bool negative = (std::to_integer<unsigned>(field[0]) & 0x40) != 0;
    std::uint64_t value = negative ? ~std::uint64_t{0} : 0;
    for (std::size_t i = 0; i < field.size(); ++i) {
        auto byte = std::to_integer<std::uint64_t>(field[i]);
        if (i == 0)
            byte = negative ? byte | 0x80 : byte & 0x7F;
        const auto high = value >> 55; // what the shift would push out, with the sign bit that remains
        if (high != (negative ? 0x1FF : 0))
            return std::nullopt;
        value = value << 8 | byte;
    }
    return static_cast<std::int64_t>(value);
}

Result<void> appendSparse(ConstBytes block, std::size_t position, std::size_t count, std::vector<TarExtent>& map)
{
    for (std::size_t i = 0; i < count; ++i, position += 2 * kLongNumber) {
        if (block[position] == std::byte{0})
            break;
        const auto offset = numberField(block, position, kLongNumber);
        const auto length = numberField(block, position + kLongNumber, kLongNumber);
        if (!offset || !length || *offset < 0 || *length < 0)
            return Error{ErrorCode::Corrupt, "tar: sparse map"};
        map.push_back({static_cast<std::uint64_t>(*offset), static_cast<std::uint64_t>(*length)});
    }
    return {};
}

struct Sum {
    std::int64_t bytes = 0;
    std::int64_t negatives = 0; ///< bytes from 0x80 on
};

/// Of whole words, at most 64: eight bytes at a time in four lanes of 16 bits, which that many cannot overflow.
Sum sumOf(ConstBytes bytes)
{
    constexpr std::uint64_t kEven = 0x00FF00FF00FF00FF;
    std::uint64_t lanes = 0;
    Sum sum;
    for (; bytes.size() >= sizeof lanes; bytes = bytes.subspan(sizeof lanes)) {
        std::uint64_t word;
        std::memcpy(&word, bytes.data(), sizeof word);
        lanes += (word & kEven) + (word >> 8 & kEven);
        sum.negatives += std::popcount(word & 0x8080808080808080);
    }
    for (; lanes != 0; lanes >>= 16)
        sum.bytes += static_cast<std::int64_t>(lanes & 0xFFFF);
    return sum;
}

bool looksNumeric(ConstBytes field)
{
    if (std::to_integer<unsigned>(field[0]) >= 0x80)
        return true;
    return std::all_of(field.begin(), field.end(), [](std::byte byte) {
        const auto c = static_cast<char>(byte);
        return c == ' ' || c == '\0' || (c >= '0' && c <= '7');
    });
}

}

std::optional<std::int64_t> parseTarNumber(ConstBytes field)
{
    if (field.empty())
        return std::nullopt;
    if ((std::to_integer<unsigned>(field[0]) & 0x80) != 0)
        return parseBinary(field);
    auto text = asText(field);
    text = text.substr(std::min(text.find_first_not_of(std::string_view(" \0", 2)), text.size()));
    std::uint64_t value = 0;
    for (const char c : text) {
        if (c == ' ' || c == '\0')
            break;
        if (c < '0' || c > '7' || value >> 60 != 0)
            return std::nullopt;
        value = value << 3 | static_cast<std::uint64_t>(c - '0');
    }
    return static_cast<std::int64_t>(value);
}

std::string TarHeader::path() const
{
    std::string whole(prefix);
    if (!whole.empty() && whole.back() != '/')
        whole += '/';
    return whole.append(name);
}

TarHeader TarHeader::parse(ConstBytes block)
{
    TarHeader header;
    header.name = textField(block, kName, kNameLength);
    header.type = static_cast<char>(block[kType]);
    header.linkName = textField(block, kLinkName, kNameLength);
    header.mode = numberField(block, kMode, kIdLength);
    header.size = numberField(block, kSize, kLongNumber);
    header.modified = numberField(block, kModified, kLongNumber);
    const auto magic = asText(block.subspan(kMagic, 8));
    if (!magic.starts_with("ustar"))
        return header;
    header.owner = textField(block, kOwnerName, kOwnerLength);
    header.group = textField(block, kGroupName, kOwnerLength);
    if (magic.substr(5, 2) == "  ") {
        header.dialect = Dialect::Gnu;
        if (block[kGnuAccessed] != std::byte{0})
            header.accessed = numberField(block, kGnuAccessed, kLongNumber);
    } else if (asText(block.subspan(kStarMagic, 4)) == std::string_view("tar\0", 4)) {
        header.dialect = Dialect::Star;
        header.prefix = textField(block, kPrefix, kStarPrefixLength);
        header.accessed = numberField(block, kStarAccessed, kLongNumber);
    } else {
        header.dialect = Dialect::Ustar;
        header.prefix = textField(block, kPrefix, kPrefixLength);
    }
    return header;
}

bool isTarHeader(ConstBytes block)
{
    if (block.size() < kTarBlock)
        return false;
    const auto stored = numberField(block, kChecksum, kChecksumLength);
    if (!stored)
        return false;
    // The checksum's own field counts as spaces; as signed bytes, each from 0x80 on is 256 less.
    const auto all = sumOf(block.first(kTarBlock));
    const auto own = sumOf(block.subspan(kChecksum, kChecksumLength));
    const auto plain = all.bytes - own.bytes + std::int64_t{' '} * std::int64_t{kChecksumLength};
    return *stored == plain || *stored == plain - 256 * (all.negatives - own.negatives);
}

bool isPlausibleTarHeader(ConstBytes block)
{
    if (!isTarHeader(block) || isZeroBlock(block.first(kTarBlock)))
        return false;
    if (asText(block.subspan(kMagic, 5)) == "ustar")
        return true;
    for (const auto position : {kMode, kUser, kGroup}) {
        if (!looksNumeric(block.subspan(position, kIdLength)))
            return false;
    }
    return block[kName] != std::byte{0} && looksNumeric(block.subspan(kSize, kLongNumber))
        && looksNumeric(block.subspan(kModified, kLongNumber));
}

bool isZeroBlock(ConstBytes block)
{
    return std::all_of(block.begin(), block.end(), [](std::byte byte) { return byte == std::byte{0}; });
}

Result<TarSparseHeader> parseOldSparse(ConstBytes header, std::vector<TarExtent>& map)
{
    map.clear();
    TRY(appendSparse(header, kGnuSparse, kGnuSparseCount, map));
    return TarSparseHeader{numberField(header, kGnuRealSize, kLongNumber), header[kGnuIsExtended] != std::byte{0}};
}

Result<bool> parseOldSparseExtension(ConstBytes block, std::vector<TarExtent>& map)
{
    TRY(appendSparse(block, 0, kGnuExtensionCount, map));
    return block[kExtensionIsExtended] != std::byte{0};
}

}
