#include "engine/backends/sevenzip_probes.h"

#include "engine/crypto/crc32.h"

#include <algorithm>
#include <functional>

namespace vantoro::sevenzip {

namespace {

using namespace std::string_view_literals;

constexpr auto k7zSignature = "7z\xBC\xAF\x27\x1C"sv;
constexpr std::size_t k7zHeader = 32;
constexpr auto kCabSignature = "MSCF\0\0\0\0"sv;
constexpr std::size_t kCabHeader = 36;
constexpr auto kCompoundSignature = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv;
constexpr std::size_t kStubSearch = 4 << 20; // bytes in front of the archive of a self-extractor

bool startsWith(ConstBytes head, std::string_view signature, std::size_t at = 0)
{
    return head.size() >= at + signature.size() && asText(head.subspan(at, signature.size())) == signature;
}

bool isProgram(ConstBytes head)
{
    return startsWith(head, "MZ")
        || startsWith(head,
                      "\x7F"
                      "ELF")
        || startsWith(head, "#!") || startsWith(head, "\xCF\xFA\xED\xFE") || startsWith(head, "\xCE\xFA\xED\xFE")
        || startsWith(head, "\xCA\xFE\xBA\xBE");
}

/// The first 32 bytes of a 7z: signature, version, and a checksum over where the headers are.
bool isStartHeader(ConstBytes header)
{
    ByteReader in(header);
    in.skip(k7zSignature.size() + 2);
    const auto crc = in.le32();
    const auto covered = in.take(20);
    return in.ok() && startsWith(header, k7zSignature) && crc32(0, covered) == crc;
}

/// The header of a cabinet: reserved fields empty, offsets in it, version 1.3.
bool isCabHeader(ConstBytes header, std::uint64_t available)
{
    ByteReader in(header);
    in.skip(kCabSignature.size());
    const auto size = in.le32();
    in.skip(4);
    const auto filesAt = in.le32();
    in.skip(4);
    const auto minor = in.u8();
    const auto major = in.u8();
    const auto folders = in.le16();
    return in.ok() && startsWith(header, kCabSignature) && major == 1 && minor <= 3 && filesAt >= kCabHeader
        && filesAt <= size && (folders > 0 || size <= available);
}

using Check = std::function<bool(ConstBytes header, std::uint64_t position)>;

/// Searches behind the first bytes of a program for `signature` with a header around it that `check` accepts.
std::optional<std::uint64_t> searchStub(const ByteSource& source, std::string_view signature, std::size_t headerSize,
                                        const Check& check)
{
    constexpr std::size_t kBlock = 256 << 10;
    for (std::uint64_t start = 0; start < kStubSearch; start += kBlock) {
        const auto block = readBlock(source, start, kBlock + headerSize);
        if (!block || block->size() < headerSize)
            return std::nullopt;
        const auto text = asText(*block);
        for (std::size_t at = 0; (at = text.find(signature, at)) != std::string_view::npos && at < kBlock; ++at) {
            if (at + headerSize <= block->size() && check(ConstBytes(*block).subspan(at, headerSize), start + at))
                return start + at;
        }
    }
    return std::nullopt;
}

}

std::optional<std::uint64_t> find7zInStub(const ByteSource& source)
{
    return searchStub(source, k7zSignature, k7zHeader,
                      [](ConstBytes header, std::uint64_t) { return isStartHeader(header); });
}

std::optional<std::uint64_t> findCabInStub(const ByteSource& source)
{
    return searchStub(source, kCabSignature, kCabHeader, [&](ConstBytes header, std::uint64_t position) {
        ByteReader in(header);
        in.seek(8);
        return isCabHeader(header, 0) && in.le32() <= source.size() - position;
    });
}

std::optional<std::uint64_t> findSquashfsInStub(const ByteSource& source)
{
    // An AppImage is an ELF program with "AI\2" in its padding; the file system follows the section table.
    const auto header = readBlock(source, 0, 64);
    if (!header
        || !startsWith(*header,
                       "\x7F"
                       "ELF")
        || !startsWith(*header, "AI\x02", 8))
        return std::nullopt;
    const bool is64 = (*header)[4] == std::byte{2};
    ByteReader in(*header);
    in.seek(is64 ? 0x28 : 0x20);
    const std::uint64_t sectionsAt = is64 ? in.le64() : in.le32();
    in.seek(is64 ? 0x3A : 0x2E);
    const std::uint64_t sectionSize = in.le16();
    const std::uint64_t sections = in.le16();
    const auto end = sectionsAt + sectionSize * sections;
    const auto start = readBlock(source, end, 4);
    if (!in.ok() || sectionsAt > source.size() || !start || !startsWith(*start, "hsqs"))
        return std::nullopt;
    return end;
}

Match probe7z(const ProbeInput& input)
{
    if (startsWith(input.head, k7zSignature)) {
        if (input.head.size() < k7zHeader)
            return Match::Likely;
        return isStartHeader(input.head.first(k7zHeader)) ? Match::Sure : Match::Likely;
    }
    return isProgram(input.head) && input.source && find7zInStub(*input.source) ? Match::Stub : Match::No;
}

Match probeCab(const ProbeInput& input)
{
    if (startsWith(input.head, kCabSignature)) {
        const bool isWhole = input.head.size() >= kCabHeader
            && isCabHeader(input.head.first(kCabHeader), input.source ? input.source->size() : 0);
        return isWhole ? Match::Sure : Match::No;
    }
    return isProgram(input.head) && input.source && findCabInStub(*input.source) ? Match::Stub : Match::No;
}

Match probeChm(const ProbeInput& input)
{
    ByteReader in(input.head);
    const auto signature = in.text(4);
    const auto version = in.le32();
    const auto headerSize = in.le32();
    return in.ok() && signature == "ITSF" && version >= 2 && version <= 4 && headerSize >= 0x58 && headerSize <= 0x100
        ? Match::Sure
        : Match::No;
}

Match probeHxs(const ProbeInput& input)
{
    ByteReader in(input.head);
    const auto signature = in.text(8);
    const auto version = in.le32();
    return in.ok() && signature == "ITOLITLS" && version == 1 ? Match::Sure : Match::No;
}

namespace {

struct CompoundHeader {
    std::uint64_t directoryAt = 0;
};

/// [MS-CFB] 2.2: byte order, sector size by version, position of the directory.
std::optional<CompoundHeader> compoundHeader(ConstBytes head)
{
    ByteReader in(head);
    in.seek(26);
    const auto version = in.le16();
    const auto byteOrder = in.le16();
    const auto sectorShift = in.le16();
    in.seek(48);
    const auto directory = in.le32();
    const bool isSound = in.ok() && startsWith(head, kCompoundSignature) && byteOrder == 0xFFFE
        && ((version == 3 && sectorShift == 9) || (version == 4 && sectorShift == 12));
    if (!isSound)
        return std::nullopt;
    return CompoundHeader{(std::uint64_t{directory} + 1) << sectorShift};
}

}

Match probeMsi(const ProbeInput& input)
{
    const auto header = compoundHeader(input.head);
    if (!header || !input.source)
        return Match::No;
    const auto root = readBlock(*input.source, header->directoryAt, 128);
    // The class of the root: 000C1084 an installer, 1082 a transform, 1086 a patch.
    constexpr auto kClassEnd = "\x0C\0\0\0\0\0\xC0\0\0\0\0\0\0\x46"sv;
    if (!root || root->size() < 128 || !startsWith(*root, kClassEnd, 82))
        return Match::No;
    const auto kind = std::to_integer<unsigned>((*root)[80]);
    const auto family = std::to_integer<unsigned>((*root)[81]);
    return family == 0x10 && kind >= 0x82 && kind <= 0x86 ? Match::Sure : Match::No;
}

Match probeCompound(const ProbeInput& input) { return compoundHeader(input.head) ? Match::Sure : Match::No; }

Match probeWim(const ProbeInput& input)
{
    ByteReader in(input.head);
    const auto signature = in.text(8);
    const auto headerSize = in.le32();
    return in.ok() && signature == "MSWIM\0\0\0"sv && headerSize >= 0x60 && headerSize <= 0x400 ? Match::Sure
                                                                                                : Match::No;
}

Match probeNsis(const ProbeInput& input)
{
    // The installer's first header stands at a multiple of 512 behind the program: flags, a mark, "NullsoftInst".
    constexpr auto kMark = "\xEF\xBE\xAD\xDENullsoftInst"sv;
    if (!startsWith(input.head, "MZ") || !input.source)
        return Match::No;
    const auto found = searchStub(*input.source, kMark, 24, [&](ConstBytes header, std::uint64_t position) {
        ByteReader in(header);
        in.skip(kMark.size());
        const auto headerSize = in.le32();
        const auto dataSize = in.le32();
        return position % 512 == 4 && headerSize > 0 && dataSize >= 28;
    });
    return found ? Match::Stub : Match::No;
}

Match probeXar(const ProbeInput& input)
{
    ByteReader in(input.head);
    const auto signature = in.text(4);
    const auto headerSize = in.be16();
    const auto version = in.be16();
    const auto packedToc = in.be64();
    return in.ok() && signature == "xar!" && headerSize >= 28 && headerSize <= 256 && version <= 1 && packedToc > 0
        ? Match::Sure
        : Match::No;
}

namespace {

constexpr std::size_t kZipEnd = 22;

/// The end record of a zip in the last 64 KiB, with a directory that starts as one.
bool hasZipEnd(const ByteSource& source)
{
    const auto size = source.size();
    const auto from = size > 0x10000 + kZipEnd ? size - 0x10000 - kZipEnd : 0;
    const auto tail = readBlock(source, from, 0x10000 + kZipEnd);
    if (!tail)
        return false;
    const auto text = asText(*tail);
    for (auto at = text.rfind("PK\5\6"sv); at != std::string_view::npos && at > 0;
         at = text.rfind("PK\5\6"sv, at - 1)) {
        ByteReader in(ConstBytes(*tail).subspan(at));
        in.skip(10);
        const auto entries = in.le16();
        const auto directorySize = in.le32();
        const auto position = from + at;
        if (!in.ok() || entries == 0 || directorySize > position)
            continue;
        const auto first = readBlock(source, position - directorySize, 4);
        if (first && startsWith(*first, "PK\1\2"sv))
            return true;
    }
    return false;
}

}

Match probeZip(const ProbeInput& input)
{
    ByteReader in(input.head);
    auto signature = in.text(4);
    if (signature == "PK\7\x08"sv || signature == "PK00"sv) // the mark of a split archive goes before
        signature = in.text(4);
    const auto version = in.le16() & 0xFF;
    if (in.ok() && signature == "PK\3\4"sv && version < 100)
        return Match::Sure;
    if (signature == "PK\5\6"sv && input.head.size() >= kZipEnd)
        return Match::Sure;
    return isProgram(input.head) && input.source && hasZipEnd(*input.source) ? Match::Stub : Match::No;
}

Match probeLzh(const ProbeInput& input)
{
    // Size and checksum of the header, then the method: "-lh5-".
    const auto method = input.head.size() >= 21 ? asText(input.head.subspan(2, 5)) : std::string_view();
    const bool isMethod = method.starts_with("-l") && (method.size() == 5 && method[4] == '-')
        && (method[2] == 'h' || method[2] == 'z');
    return isMethod && std::to_integer<unsigned>(input.head[20]) <= 3 ? Match::Likely : Match::No;
}

}
