#include "engine/backends/libarchive_rows.h"

#include "engine/backends/libarchive_archive.h"
#include "engine/backends/library_locale.h"

#include <archive.h>

#include <algorithm>

namespace vantoro {

namespace {

/// Symbol tables and the table of long names.
bool isArTable(std::string_view name)
{
    return name == "/" || name == "//" || name == "/SYM64/" || name.starts_with("__.SYMDEF");
}

constexpr LibarchiveFormat kCpio{
    .id = "cpio", .enable = &archive_read_support_format_cpio, .leastBytesPerEntry = 26, .dataComesWithLastName = true};
constexpr LibarchiveFormat kAr{
    .id = "ar", .enable = &archive_read_support_format_ar, .leastBytesPerEntry = 60, .isTable = &isArTable};
constexpr LibarchiveFormat kWarc{.id = "warc", .enable = &archive_read_support_format_warc, .hasModes = false};
constexpr LibarchiveFormat kXar{
    .id = "xar", .enable = &archive_read_support_format_xar, .nameCharset = kCharsetUtf8, .leastBytesPerEntry = 1};

template <const LibarchiveFormat& format> Result<ArchivePtr> open(SourcePtr source, const OpenContext& context)
{
    return openWithLibarchive(format, std::move(source), context);
}

template <const LibarchiveFormat& format>
Result<ArchivePtr> openStream(StreamFactory stream, const OpenContext& context)
{
    return openWithLibarchive(format, std::move(stream), context);
}

bool allOf(std::string_view text, std::string_view letters)
{
    return text.find_first_not_of(letters) == std::string_view::npos;
}

/// The old binary header: 13 numbers of 16 bits in the byte order of the machine that wrote it.
Match probeBinaryCpio(ConstBytes head, bool isBigEndian)
{
    const auto number = [&](std::size_t at) {
        ByteReader in(head.subspan(at));
        return isBigEndian ? in.be16() : in.le16();
    };
    constexpr std::size_t kHeader = 26, kNameSize = 20;
    const std::size_t nameSize = number(kNameSize);
    if (nameSize < 2 || nameSize > 4096 || head.size() < kHeader + nameSize)
        return Match::No;
    const auto name = asText(head.subspan(kHeader, nameSize));
    return name.find('\0') == nameSize - 1 ? Match::Likely : Match::No;
}

Match probeCpio(const ProbeInput& input)
{
    if (input.head.size() < 26)
        return Match::No;
    const auto text = asText(input.head);
    constexpr std::string_view kHex = "0123456789abcdefABCDEF", kOctal = "01234567";
    if (text.starts_with("070701") || text.starts_with("070702"))
        return text.size() >= 110 && allOf(text.substr(0, 110), kHex) ? Match::Sure : Match::No;
    if (text.starts_with("070707"))
        return text.size() >= 76 && allOf(text.substr(0, 76), kOctal) ? Match::Sure : Match::No;
    if (text.starts_with("\xC7\x71"))
        return probeBinaryCpio(input.head, false);
    if (text.starts_with("\x71\xC7"))
        return probeBinaryCpio(input.head, true);
    return Match::No;
}

template <char... signature> Match probeStart(const ProbeInput& input)
{
    constexpr char text[] = {signature...};
    return asText(input.head).starts_with(std::string_view(text, sizeof text)) ? Match::Sure : Match::No;
}

Match probeWarc(const ProbeInput& input)
{
    const auto text = asText(input.head);
    return text.starts_with("WARC/0.") || text.starts_with("WARC/1.") ? Match::Likely : Match::No;
}

constexpr std::string_view kCpioExtensions[] = {"cpio"};
constexpr std::string_view kArExtensions[] = {"a", "ar", "deb", "udeb", "lib"};
constexpr std::string_view kWarcExtensions[] = {"warc"};
constexpr std::string_view kXarExtensions[] = {"xar", "pkg", "mpkg", "xip"};

constexpr FormatRow kRows[] = {
    {"cpio", "cpio archive", kCpioExtensions, &probeCpio, &open<kCpio>, &openStream<kCpio>},
    {"ar", "Unix archive or Debian package", kArExtensions, &probeStart<'!', '<', 'a', 'r', 'c', 'h', '>', '\n'>,
     &open<kAr>, &openStream<kAr>},
    {"xar", "xar archive", kXarExtensions, &probeStart<'x', 'a', 'r', '!'>, &open<kXar>},
    {"warc", "Web archive", kWarcExtensions, &probeWarc, &open<kWarc>, &openStream<kWarc>},
};

}

std::span<const FormatRow> libarchiveRows() { return kRows; }

void preloadLibarchive()
{
    useUtf8ForLibraries();
    if (auto* reader = archive_read_new())
        archive_read_free(reader);
}

}
