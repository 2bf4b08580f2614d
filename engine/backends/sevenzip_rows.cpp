#include "engine/backends/sevenzip_rows.h"

#include "engine/backends/sevenzip_archive.h"
#include "engine/backends/sevenzip_image_probes.h"
#include "engine/backends/sevenzip_msi.h"
#include "engine/backends/sevenzip_probes.h"

#include <array>

namespace vantoro {

namespace sevenzip {

namespace {

using Names = Format::Names;

constexpr Format k7z{.id = "7z", .classId = 0x07};
constexpr Format kCab{.id = "cab", .classId = 0x08, .names = Names::Cab};
constexpr Format kChm{.id = "chm", .classId = 0xE9, .names = Names::Utf8};
constexpr Format kHxs{.id = "hxs", .classId = 0xCE, .names = Names::Utf8};
constexpr Format kCompound{.id = "compound", .classId = 0xE5};
constexpr Format kWim{.id = "wim", .classId = 0xE6};
constexpr Format kNsis{.id = "nsis", .classId = 0x09, .names = Names::Bytes, .findsItself = true};
constexpr Format kXar{.id = "xar", .classId = 0xE1, .names = Names::Utf8};
constexpr Format kZip{.id = "zip", .classId = 0x01, .names = Names::Zip, .findsItself = true};
constexpr Format kLzh{.id = "lzh", .classId = 0x06, .names = Names::Bytes};

constexpr Format kUdf{.id = "udf", .classId = 0xE0};
constexpr Format kIso{.id = "iso", .classId = 0xE7, .names = Names::Bytes};
constexpr Format kSquashfs{.id = "squashfs", .classId = 0xD2, .names = Names::Bytes};
constexpr Format kCramfs{.id = "cramfs", .classId = 0xD3, .names = Names::Bytes};
constexpr Format kExt{.id = "ext", .classId = 0xC7, .names = Names::Bytes};
constexpr Format kFat{.id = "fat", .classId = 0xDA};
constexpr Format kNtfs{.id = "ntfs", .classId = 0xD9};
constexpr Format kHfs{.id = "hfs", .classId = 0xE3};
constexpr Format kApfs{.id = "apfs", .classId = 0xC3, .names = Names::Utf8};

constexpr Format kDmg{.id = "dmg", .classId = 0xE4, .isImage = true};
constexpr Format kVhd{.id = "vhd", .classId = 0xDC, .isImage = true};
constexpr Format kVhdx{.id = "vhdx", .classId = 0xC4, .isImage = true};
constexpr Format kVmdk{.id = "vmdk", .classId = 0xC8, .isImage = true};
constexpr Format kVdi{.id = "vdi", .classId = 0xC9, .isImage = true};
constexpr Format kQcow{.id = "qcow", .classId = 0xCA, .isImage = true};
constexpr Format kGpt{.id = "gpt", .classId = 0xCB, .isImage = true};
constexpr Format kApm{.id = "apm", .classId = 0xD4, .isImage = true};
constexpr Format kMbr{.id = "mbr", .classId = 0xDB, .isImage = true};

template <const Format& format> Result<ArchivePtr> open(SourcePtr source, const OpenContext& context)
{
    return openArchive(format, std::move(source), context);
}

/// For archives that may stand behind a program and count their positions from their own start.
template <const Format& format, std::optional<std::uint64_t> (*findStart)(const ByteSource&)>
Result<ArchivePtr> openBehindStub(SourcePtr source, const OpenContext& context)
{
    const auto head = TRY(readBlock(*source, 0, 4));
    const bool isProgram = asText(head).starts_with("MZ") || asText(head).starts_with("\x7F")
        || asText(head).starts_with("#!") || (!head.empty() && std::to_integer<unsigned>(head[0]) > 0xC0);
    if (isProgram) {
        if (const auto start = findStart(*source)) {
            const auto length = source->size() - *start;
            source = windowSource(std::move(source), *start, length);
        }
    }
    return openArchive(format, std::move(source), context);
}

using Extension = std::string_view;
constexpr std::array<Extension, 2> k7zExtensions{"7z", "exe"};
constexpr std::array<Extension, 2> kCabExtensions{"cab", "exe"};
constexpr std::array<Extension, 2> kChmExtensions{"chm", "chw"};
constexpr std::array<Extension, 6> kHxsExtensions{"hxs", "hxi", "hxr", "hxq", "hxw", "lit"};
constexpr std::array<Extension, 3> kMsiExtensions{"msi", "msp", "msm"};
constexpr std::array<Extension, 3> kCompoundExtensions{"doc", "xls", "ppt"};
constexpr std::array<Extension, 4> kWimExtensions{"wim", "swm", "esd", "ppkg"};
constexpr std::array<Extension, 1> kExeExtensions{"exe"};
constexpr std::array<Extension, 4> kXarExtensions{"xar", "pkg", "xip", "mpkg"};
constexpr std::array<Extension, 15> kZipExtensions{"zip", "zipx", "jar", "apk",  "cbz", "docx", "xlsx", "pptx",
                                                   "odt", "ods",  "odp", "epub", "xpi", "war",  "ipa"};
constexpr std::array<Extension, 2> kLzhExtensions{"lzh", "lha"};
constexpr std::array<Extension, 2> kUdfExtensions{"iso", "udf"};
constexpr std::array<Extension, 2> kIsoExtensions{"iso", "img"};
constexpr std::array<Extension, 5> kSquashfsExtensions{"squashfs", "sqfs", "sfs", "snap", "appimage"};
constexpr std::array<Extension, 1> kCramfsExtensions{"cramfs"};
constexpr std::array<Extension, 5> kExtExtensions{"ext", "ext2", "ext3", "ext4", "img"};
constexpr std::array<Extension, 3> kFatExtensions{"fat", "img", "ima"};
constexpr std::array<Extension, 2> kNtfsExtensions{"ntfs", "img"};
constexpr std::array<Extension, 3> kHfsExtensions{"hfs", "hfsx", "img"};
constexpr std::array<Extension, 2> kApfsExtensions{"apfs", "img"};
constexpr std::array<Extension, 1> kDmgExtensions{"dmg"};
constexpr std::array<Extension, 1> kVhdExtensions{"vhd"};
constexpr std::array<Extension, 2> kVhdxExtensions{"vhdx", "avhdx"};
constexpr std::array<Extension, 1> kVmdkExtensions{"vmdk"};
constexpr std::array<Extension, 1> kVdiExtensions{"vdi"};
constexpr std::array<Extension, 3> kQcowExtensions{"qcow", "qcow2", "qcow2c"};
constexpr std::array<Extension, 3> kDiskExtensions{"img", "gpt", "mbr"};

constexpr std::array kRows{
    // Before 7z and cab: installers carry archives of those kinds among their data.
    FormatRow{"nsis", "NSIS installer", kExeExtensions, probeNsis, open<kNsis>},
    FormatRow{"7z", "7z archive", k7zExtensions, probe7z, openBehindStub<k7z, find7zInStub>},
    FormatRow{"cab", "Cabinet", kCabExtensions, probeCab, openBehindStub<kCab, findCabInStub>},
    FormatRow{"msi", "Windows installer package", kMsiExtensions, probeMsi, openMsi},
    FormatRow{"compound", "Compound file", kCompoundExtensions, probeCompound, open<kCompound>},
    FormatRow{"chm", "Compiled help", kChmExtensions, probeChm, open<kChm>},
    FormatRow{"hxs", "Compiled help 2", kHxsExtensions, probeHxs, open<kHxs>},
    FormatRow{"wim", "Windows image", kWimExtensions, probeWim, open<kWim>},
    FormatRow{"udf", "UDF disc image", kUdfExtensions, probeUdf, open<kUdf>},
    FormatRow{"squashfs", "SquashFS image", kSquashfsExtensions, probeSquashfs,
              openBehindStub<kSquashfs, findSquashfsInStub>},
    FormatRow{"cramfs", "CramFS image", kCramfsExtensions, probeCramfs, open<kCramfs>},
    FormatRow{"dmg", "macOS disk image", kDmgExtensions, probeDmg, open<kDmg>},
    FormatRow{"vhd", "Virtual disk", kVhdExtensions, probeVhd, open<kVhd>},
    FormatRow{"vhdx", "Virtual disk", kVhdxExtensions, probeVhdx, open<kVhdx>},
    FormatRow{"vmdk", "Virtual disk", kVmdkExtensions, probeVmdk, open<kVmdk>},
    FormatRow{"vdi", "Virtual disk", kVdiExtensions, probeVdi, open<kVdi>},
    FormatRow{"qcow", "Virtual disk", kQcowExtensions, probeQcow, open<kQcow>},
    FormatRow{"ntfs", "NTFS image", kNtfsExtensions, probeNtfs, open<kNtfs>},
    FormatRow{"apfs", "APFS image", kApfsExtensions, probeApfs, open<kApfs>},
    FormatRow{"hfs", "HFS+ image", kHfsExtensions, probeHfs, open<kHfs>},
    FormatRow{"fat", "FAT image", kFatExtensions, probeFat, open<kFat>},
    FormatRow{"ext", "ext file system image", kExtExtensions, probeExt, open<kExt>},
    FormatRow{"gpt", "Disk image", kDiskExtensions, probeGpt, open<kGpt>},
    FormatRow{"apm", "Disk image", kDiskExtensions, probeApm, open<kApm>},
    FormatRow{"mbr", "Disk image", kDiskExtensions, probeMbr, open<kMbr>},
};

constexpr std::array kFallbackRows{
    FormatRow{"zip", "Zip archive", kZipExtensions, probeZip, open<kZip>},
    FormatRow{"xar", "xar archive", kXarExtensions, probeXar, open<kXar>},
    FormatRow{"iso", "ISO 9660 disc image", kIsoExtensions, probeIso, open<kIso>},
    FormatRow{"lzh", "LHA archive", kLzhExtensions, probeLzh, open<kLzh>},
};

struct ImageFormat {
    const Format* format;
    Match (*probe)(const ProbeInput&);
};
// What a disk or a partition may hold, in order of trial. The partition tables come last: some file systems
// leave an old one standing.
constexpr std::array kImageFormats{
    ImageFormat{&kNtfs, probeNtfs},         ImageFormat{&kApfs, probeApfs}, ImageFormat{&kHfs, probeHfs},
    ImageFormat{&kSquashfs, probeSquashfs}, ImageFormat{&kUdf, probeUdf},   ImageFormat{&kIso, probeIso},
    ImageFormat{&kExt, probeExt},           ImageFormat{&kFat, probeFat},   ImageFormat{&kGpt, probeGpt},
    ImageFormat{&kApm, probeApm},           ImageFormat{&kMbr, probeMbr},
};

}

const Format* findImageFormat(const ByteSource& source)
{
    constexpr std::size_t kHead = 256 << 10;
    const auto head = readBlock(source, 0, kHead);
    if (!head)
        return nullptr;
    for (const auto& candidate : kImageFormats) {
        if (candidate.probe({*head, &source, {}}) >= Match::Likely)
            return candidate.format;
    }
    return nullptr;
}

}

std::span<const FormatRow> sevenZipRows() { return sevenzip::kRows; }
std::span<const FormatRow> sevenZipFallbackRows() { return sevenzip::kFallbackRows; }

}
