#include "engine/backends/libarchive_rows.h"

#include "engine/backends/late_libarchive.h"

#include "engine/backends/libarchive_archive.h"
#include "engine/backends/library_locale.h"

#include <algorithm>

namespace vantoro {

namespace {

/// Symbol tables and the table of long names.
bool isArTable(std::string_view name)
{
    return name == "/" || name == "//" || name == "/SYM64/" || name.starts_with("__.SYMDEF");
}

constexpr LibarchiveFormat kAr{.id = "ar",
                               .enable = [](archive* reader) { return archive_read_support_format_ar(reader); },
                               .leastBytesPerEntry = 60,
                               .isTable = &isArTable};
constexpr LibarchiveFormat kWarc{.id = "warc",
                                 .enable = [](archive* reader) { return archive_read_support_format_warc(reader); },
                                 .hasModes = false};
constexpr LibarchiveFormat kXar{.id = "xar",
                                .enable = [](archive* reader) { return archive_read_support_format_xar(reader); },
                                .nameCharset = kCharsetUtf8,
                                .leastBytesPerEntry = 1};

template <const LibarchiveFormat& format> Result<ArchivePtr> open(SourcePtr source, const OpenContext& context)
{
    return openWithLibarchive(format, std::move(source), context);
}

template <const LibarchiveFormat& format>
Result<ArchivePtr> openStream(StreamFactory stream, const OpenContext& context)
{
    return openWithLibarchive(format, std::move(stream), context);
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

constexpr std::string_view kArExtensions[] = {"a", "ar", "deb", "udeb", "lib"};
constexpr std::string_view kWarcExtensions[] = {"warc"};
constexpr std::string_view kXarExtensions[] = {"xar", "pkg", "mpkg", "xip"};

constexpr FormatRow kRows[] = {
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
    if (!libarchiveLibrary.load())
        return;
    if (auto* reader = archive_read_new())
        archive_read_free(reader);
}

}
