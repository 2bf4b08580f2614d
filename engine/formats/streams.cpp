#include "engine/formats/streams.h"

#include "engine/codecs/brotli.h"
#include "engine/codecs/bzip2.h"
#include "engine/codecs/compress.h"
#include "engine/codecs/deflate.h"
#include "engine/codecs/gzip.h"
#include "engine/codecs/lz4.h"
#include "engine/codecs/lzip.h"
#include "engine/codecs/lzma.h"
#include "engine/codecs/lzo.h"
#include "engine/codecs/xz.h"
#include "engine/codecs/zstd.h"
#include "engine/io/counted_stream.h"

#include <algorithm>
#include <array>
#include <bit>

namespace vantoro {

namespace {

StreamPtr packedStream(SourcePtr source, const StreamParams& params)
{
    auto stream = windowStream(std::move(source));
    if (params.packedBytesRead)
        stream = countedStream(std::move(stream), *params.packedBytesRead);
    return stream;
}

CodecParams codecParams(const StreamParams& params) { return {params.threads, params.limits, params.cancel}; }

template <auto openCodec> Result<StreamPtr> open(SourcePtr source, const StreamParams& params)
{
    return openCodec(packedStream(std::move(source), params), codecParams(params));
}

Result<StreamPtr> openXzFile(SourcePtr source, const StreamParams& params)
{
    auto blocks = readXzBlocks(*source, params.limits);
    return openXz(packedStream(std::move(source), params), codecParams(params), std::move(blocks));
}

bool startsWith(ConstBytes head, std::string_view signature) { return asText(head).starts_with(signature); }

std::uint32_t le32At(ConstBytes head, std::size_t position)
{
    ByteReader in(head);
    in.skip(position);
    return in.le32();
}

Match probeGzip(const ProbeInput& input)
{
    if (input.head.size() < 18 || !startsWith(input.head, "\x1F\x8B\x08"))
        return Match::No;
    return (std::to_integer<unsigned>(input.head[3]) & 0xE0) == 0 ? Match::Sure : Match::No;
}

Match probeBzip2(const ProbeInput& input)
{
    const auto text = asText(input.head);
    if (text.size() < 14 || !text.starts_with("BZh") || text[3] < '1' || text[3] > '9')
        return Match::No;
    const auto magic = text.substr(4, 6);
    return magic == "\x31\x41\x59\x26\x53\x59" || magic == "\x17\x72\x45\x38\x50\x90" ? Match::Sure : Match::No;
}

Match probeXz(const ProbeInput& input)
{
    return startsWith(input.head, std::string_view("\xFD\x37zXZ\0\0", 7)) ? Match::Sure : Match::No;
}

/// No signature: properties, a dictionary as encoders choose it, a size below 256 GiB or none, and the range coder's
/// first byte, which is always 0.
Match probeLzma(const ProbeInput& input)
{
    ByteReader in(input.head);
    const auto properties = in.u8();
    const auto dictionary = in.le32();
    const auto size = in.le64();
    const auto first = in.u8();
    if (!in.ok() || properties >= 9 * 5 * 5 || first != 0)
        return Match::No;
    const bool usualDictionary = dictionary == ~0U || std::popcount(dictionary) == 1
        || (std::popcount(dictionary) == 2 && (dictionary & dictionary << 1) != 0);
    constexpr auto kLargest = std::uint64_t{1} << 38;
    if (!usualDictionary || dictionary < 4096 || (size != ~std::uint64_t{0} && size > kLargest))
        return Match::No;
    return properties == 0x5D ? Match::Likely : Match::ByName;
}

Match probeLzip(const ProbeInput& input)
{
    return input.head.size() >= 26 && startsWith(input.head, "LZIP\x01") ? Match::Sure : Match::No;
}

/// Where the first frame begins that is not to be skipped; nothing when the head ends before.
std::optional<std::size_t> firstFrame(ConstBytes head)
{
    std::size_t at = 0;
    while (at + 8 <= head.size() && (le32At(head, at) & ~0xFU) == 0x184D2A50)
        at += 8 + std::size_t{le32At(head, at + 4)};
    if (at + 4 > head.size())
        return std::nullopt;
    return at;
}

template <std::uint32_t signature> Match probeFrame(const ProbeInput& input)
{
    const auto at = firstFrame(input.head);
    return at && le32At(input.head, *at) == signature ? Match::Sure : Match::No;
}

Match probeLz4(const ProbeInput& input)
{
    const auto match = probeFrame<0x184D2204>(input);
    return match == Match::No ? probeFrame<0x184C2102>(input) : match;
}

Match probeLzop(const ProbeInput& input)
{
    return startsWith(input.head, std::string_view("\x89LZO\0\r\n\x1A\n", 9)) ? Match::Sure : Match::No;
}

Match probeCompress(const ProbeInput& input)
{
    if (input.head.size() < 3 || !startsWith(input.head, "\x1F\x9D"))
        return Match::No;
    const auto flags = std::to_integer<unsigned>(input.head[2]);
    const auto width = flags & 0x1F;
    return (flags & 0x60) == 0 && width >= 9 && width <= 16 ? Match::Sure : Match::No;
}

bool hasExtension(std::string_view name, std::span<const std::string_view> extensions)
{
    return std::any_of(extensions.begin(), extensions.end(), [&](std::string_view extension) {
        if (name.size() <= extension.size() || name[name.size() - extension.size() - 1] != '.')
            return false;
        const auto end = name.substr(name.size() - extension.size());
        return std::equal(end.begin(), end.end(), extension.begin(),
                          [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + ('a' - 'A') : a) == b; });
    });
}

/// A format without a signature: the name has the extension, and the beginning can be decoded.
template <auto openCodec> Match probeByDecoding(const ProbeInput& input, std::span<const std::string_view> extensions)
{
    if (!hasExtension(input.name, extensions))
        return Match::No;
    const auto text = asText(input.head.first(std::min<std::size_t>(input.head.size(), 4096)));
    auto stream = openCodec(windowStream(memorySource(text)), {});
    std::array<std::byte, 512> scrap;
    if (!stream)
        return Match::No;
    const auto got = (*stream)->read(scrap);
    return got || got.error().code == ErrorCode::Truncated ? Match::ByName : Match::No;
}

// The extensions that mean a tar or cpio inside are among them.
constexpr std::string_view kGzip[] = {"gz", "gzip", "tgz", "taz", "tar-gz", "cpgz", "tpz"};
constexpr std::string_view kBzip2[] = {"bz2", "bz", "bzip2", "tbz", "tbz2", "tb2", "tar-bz2"};
constexpr std::string_view kXz[] = {"xz", "txz", "tar-xz"};
constexpr std::string_view kLzma[] = {"lzma", "tlz"};
constexpr std::string_view kLzip[] = {"lz", "tlz"};
constexpr std::string_view kZstd[] = {"zst", "zstd", "tzst"};
constexpr std::string_view kLz4[] = {"lz4", "tlz4"};
constexpr std::string_view kLzop[] = {"lzo", "tzo"};
constexpr std::string_view kBrotli[] = {"br", "tbr"};
constexpr std::string_view kCompress[] = {"z", "taz", "tar-z"};
constexpr std::string_view kZlib[] = {"zlib", "zz", "z"};

Match probeBrotli(const ProbeInput& input) { return probeByDecoding<&openBrotli>(input, kBrotli); }
Match probeZlib(const ProbeInput& input) { return probeByDecoding<&openZlib>(input, kZlib); }

Result<StreamFormatRow::Inner> describeGzip(const ByteSource& source)
{
    // The stored size is left alone: it is the last member's, modulo 4 GiB.
    BufferedInput in(windowStream(memorySource(asText(TRY(readBlock(source, 0, 70'000))))));
    const auto header = TRY(readGzipHeader(in));
    StreamFormatRow::Inner inner;
    inner.name = header.name;
    inner.modified = {.seconds = header.modified, .isSet = header.modified != 0};
    return inner;
}

Result<StreamFormatRow::Inner> describeXz(const ByteSource& source)
{
    const auto blocks = readXzBlocks(source, {});
    StreamFormatRow::Inner inner;
    if (!blocks.all.empty())
        inner.size = blocks.size();
    return inner;
}

Result<StreamFormatRow::Inner> describeLzma(const ByteSource& source)
{
    const auto head = TRY(readBlock(source, 0, 13));
    ByteReader in(head);
    in.skip(5);
    const auto size = in.le64();
    StreamFormatRow::Inner inner;
    if (in.ok() && size != ~std::uint64_t{0})
        inner.size = size;
    return inner;
}

constexpr StreamFormatRow kRows[] = {
    {"gz", "gzip file", kGzip, &probeGzip, &open<&openGzip>, &describeGzip},
    {"bz2", "bzip2 file", kBzip2, &probeBzip2, &open<&openBzip2>},
    {"xz", "xz file", kXz, &probeXz, &openXzFile, &describeXz},
    {"zst", "Zstandard file", kZstd, &probeFrame<0xFD2FB528>, &open<&openZstd>},
    {"lz4", "LZ4 file", kLz4, &probeLz4, &open<&openLz4>},
    {"lz", "lzip file", kLzip, &probeLzip, &open<&openLzip>},
    {"lzo", "lzop file", kLzop, &probeLzop, &open<&openLzop>},
    {"z", "Unix compress file", kCompress, &probeCompress, &open<&openCompress>},
    {"lzma", "LZMA file", kLzma, &probeLzma, &open<&openLzmaAlone>, &describeLzma},
    {"zlib", "zlib stream", kZlib, &probeZlib, &open<&openZlib>},
    {"br", "Brotli file", kBrotli, &probeBrotli, &open<&openBrotli>},
};

}

std::span<const StreamFormatRow> streamRows() { return kRows; }

}
