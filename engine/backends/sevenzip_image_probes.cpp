#include "engine/backends/sevenzip_image_probes.h"

#include <algorithm>
#include <bit>

namespace vantoro::sevenzip {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kSector = 512;
constexpr std::size_t kDiscSector = 2048;

bool has(ConstBytes head, std::size_t at, std::string_view signature)
{
    return head.size() >= at + signature.size() && asText(head.subspan(at, signature.size())) == signature;
}

ByteReader readerAt(ConstBytes head, std::size_t at)
{
    ByteReader in(head);
    in.seek(at);
    return in;
}

bool isPowerOfTwo(std::uint64_t value, std::uint64_t least, std::uint64_t most)
{
    return std::has_single_bit(value) && value >= least && value <= most;
}

std::vector<std::byte> tail(const ProbeInput& input, std::size_t size)
{
    if (!input.source || input.source->size() < size)
        return {};
    return readBlock(*input.source, input.source->size() - size, size).value_or(std::vector<std::byte>());
}

Match sureIf(bool holds) { return holds ? Match::Sure : Match::No; }
Match likelyIf(bool holds) { return holds ? Match::Likely : Match::No; }

bool hasBootMark(ConstBytes head) { return has(head, 510, "\x55\xAA"); }

/// Descriptors of an optical disc, from sector 16.
struct Disc {
    bool hasIso = false;
    bool hasUdf = false;
    bool hasJoliet = false;
    std::uint64_t rootAt = 0;
};

Disc readDisc(ConstBytes head)
{
    Disc disc;
    for (std::size_t sector = 16; sector < 64; ++sector) {
        const auto at = sector * kDiscSector;
        if (head.size() < at + kDiscSector)
            break;
        const auto id = asText(head.subspan(at + 1, 5));
        if (id == "CD001") {
            disc.hasIso = true;
            const auto type = std::to_integer<unsigned>(head[at]);
            disc.hasJoliet = disc.hasJoliet || type == 2;
            if (type == 1)
                disc.rootAt = std::uint64_t{readerAt(head, at + 158).le32()} * kDiscSector;
        } else if (id == "NSR02" || id == "NSR03") {
            disc.hasUdf = true;
        } else if (id != "BEA01" && id != "TEA01" && id != "BOOT2" && id != "CDW02") {
            break;
        }
    }
    return disc;
}

/// Whether the first record of the ISO root carries Rock Ridge's mark.
bool hasRockRidge(const ProbeInput& input, const Disc& disc)
{
    if (!input.source || disc.rootAt == 0)
        return false;
    const auto root = readBlock(*input.source, disc.rootAt, 64);
    return root && has(*root, 34, "SP\x07\x01\xBE\xEF");
}

}

Match probeUdf(const ProbeInput& input)
{
    const auto disc = readDisc(input.head);
    if (!disc.hasUdf)
        return Match::No;
    // A disc with both: the ISO part of Windows' discs holds a note only; where it has long names it has everything.
    const bool isIsoWhole = disc.hasIso && (disc.hasJoliet || hasRockRidge(input, disc));
    return isIsoWhole ? Match::Stub : Match::Sure;
}

Match probeIso(const ProbeInput& input) { return likelyIf(readDisc(input.head).hasIso); }

Match probeDmg(const ProbeInput& input)
{
    const auto trailer = tail(input, kSector);
    ByteReader in(trailer);
    const auto signature = in.text(4);
    const auto version = in.be32();
    const auto size = in.be32();
    return sureIf(in.ok() && signature == "koly" && version == 4 && size == kSector);
}

Match probeVhd(const ProbeInput& input)
{
    const auto isFooter = [](ConstBytes footer) {
        auto in = readerAt(footer, 12);
        return has(footer, 0, "conectix") && in.be32() == 0x00010000 && in.ok();
    };
    return sureIf(isFooter(input.head) || isFooter(tail(input, kSector)));
}

Match probeVhdx(const ProbeInput& input) { return sureIf(has(input.head, 0, "vhdxfile")); }

Match probeVmdk(const ProbeInput& input)
{
    auto in = readerAt(input.head, 4);
    const auto version = in.le32();
    const bool isSparse = (has(input.head, 0, "KDMV") || has(input.head, 0, "COWD")) && version >= 1 && version <= 3;
    return sureIf((isSparse && in.ok()) || has(input.head, 0, "# Disk DescriptorFile"));
}

Match probeVdi(const ProbeInput& input) { return sureIf(has(input.head, 0x40, "\x7F\x10\xDA\xBE")); }

Match probeQcow(const ProbeInput& input)
{
    auto in = readerAt(input.head, 4);
    const auto version = in.be32();
    return sureIf(in.ok() && has(input.head, 0, "QFI\xFB") && version >= 1 && version <= 3);
}

Match probeSquashfs(const ProbeInput& input)
{
    if (!has(input.head, 0, "hsqs") && !has(input.head, 0, "sqsh"))
        return Match::No;
    const bool isLittle = has(input.head, 0, "hsqs");
    auto in = readerAt(input.head, 12);
    const auto blockSize = isLittle ? in.le32() : in.be32();
    in.seek(28);
    const auto major = isLittle ? in.le16() : in.be16();
    if (!in.ok() || major < 1 || major > 4)
        return Match::No;
    return sureIf(major < 4 || isPowerOfTwo(blockSize, 4096, 1 << 20));
}

Match probeCramfs(const ProbeInput& input)
{
    const bool hasMagic = has(input.head, 0, "\x45\x3D\xCD\x28") || has(input.head, 0, "\x28\xCD\x3D\x45");
    return sureIf(hasMagic && has(input.head, 16, "Compressed ROMFS"));
}

Match probeExt(const ProbeInput& input)
{
    auto in = readerAt(input.head, 1024);
    const auto inodes = in.le32();
    const auto blocks = in.le32();
    in.skip(4);
    const auto freeBlocks = in.le32();
    const auto freeInodes = in.le32();
    in.skip(4);
    const auto blockShift = in.le32();
    in.seek(1024 + 56);
    const auto magic = in.le16();
    in.seek(1024 + 76);
    const auto revision = in.le32();
    return likelyIf(in.ok() && magic == 0xEF53 && inodes > 0 && blocks > 0 && freeBlocks <= blocks
                    && freeInodes <= inodes && blockShift <= 6 && revision <= 1);
}

Match probeFat(const ProbeInput& input)
{
    if (!hasBootMark(input.head) || !(has(input.head, 0, "\xEB") || has(input.head, 0, "\xE9")))
        return Match::No;
    auto in = readerAt(input.head, 11);
    const auto sectorSize = in.le16();
    const auto clusterSectors = in.u8();
    const auto reserved = in.le16();
    const auto tables = in.u8();
    in.seek(21);
    const auto medium = in.u8();
    const bool isNamed = has(input.head, 54, "FAT1") || has(input.head, 82, "FAT32");
    return likelyIf(in.ok() && isNamed && isPowerOfTwo(sectorSize, 512, 4096) && isPowerOfTwo(clusterSectors, 1, 128)
                    && reserved > 0 && tables >= 1 && tables <= 2 && medium >= 0xF0);
}

Match probeNtfs(const ProbeInput& input)
{
    auto in = readerAt(input.head, 11);
    return sureIf(has(input.head, 3, "NTFS    ") && hasBootMark(input.head) && isPowerOfTwo(in.le16(), 256, 4096));
}

Match probeHfs(const ProbeInput& input)
{
    auto in = readerAt(input.head, 1026);
    const auto version = in.be16();
    in.seek(1064);
    const auto blockSize = in.be32();
    const bool isPlus = has(input.head, 1024, "H+") && version == 4;
    const bool isExtended = has(input.head, 1024, "HX") && version == 5;
    return sureIf(in.ok() && (isPlus || isExtended) && isPowerOfTwo(blockSize, 512, 1 << 20));
}

Match probeApfs(const ProbeInput& input)
{
    auto in = readerAt(input.head, 36);
    return sureIf(has(input.head, 32, "NXSB") && isPowerOfTwo(in.le32(), 4096, 65536));
}

Match probeGpt(const ProbeInput& input)
{
    for (const std::size_t sector : {std::size_t{512}, std::size_t{4096}}) {
        auto in = readerAt(input.head, sector + 8);
        const auto revision = in.le32();
        const auto headerSize = in.le32();
        if (in.ok() && has(input.head, sector, "EFI PART") && revision == 0x00010000 && headerSize >= 92
            && headerSize <= sector)
            return Match::Sure;
    }
    return Match::No;
}

Match probeApm(const ProbeInput& input)
{
    auto in = readerAt(input.head, 2);
    const auto blockSize = in.be16();
    return likelyIf(in.ok() && has(input.head, 0, "ER") && isPowerOfTwo(blockSize, 512, 4096)
                    && has(input.head, blockSize, "PM\0\0"sv));
}

Match probeMbr(const ProbeInput& input)
{
    if (!hasBootMark(input.head) || !input.source)
        return Match::No;
    const auto sectors = input.source->size() / kSector;
    unsigned used = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        auto in = readerAt(input.head, 446 + i * 16);
        const auto status = in.u8();
        in.skip(3);
        const auto type = in.u8();
        in.skip(3);
        const std::uint64_t start = in.le32();
        const std::uint64_t length = in.le32();
        if (status != 0 && status != 0x80)
            return Match::No;
        if (type == 0 && length == 0)
            continue;
        if (type == 0 || start == 0 || length == 0 || start >= sectors || start + length > sectors + sectors / 8)
            return Match::No;
        ++used;
    }
    return likelyIf(used > 0);
}

}
