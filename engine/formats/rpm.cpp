#include "engine/formats/rpm.h"

#include "engine/codecs/bzip2.h"
#include "engine/codecs/gzip.h"
#include "engine/codecs/lzma.h"
#include "engine/codecs/xz.h"
#include "engine/codecs/zstd.h"

#include <array>

namespace vantoro {

namespace {

constexpr std::string_view kLeadMagic = "\xED\xAB\xEE\xDB";
constexpr std::string_view kHeaderMagic = "\x8E\xAD\xE8\x01";
constexpr std::uint64_t kLeadSize = 96;

/// Where a header section that starts at `position` ends.
Result<std::uint64_t> endOfHeader(const ByteSource& source, std::uint64_t position, const Limits& limits)
{
    std::array<std::byte, 16> block;
    TRY(source.readExactly(position, block));
    ByteReader in(block);
    if (in.text(4) != kHeaderMagic)
        return Error{ErrorCode::Corrupt, "rpm: header"};
    in.skip(4);
    constexpr std::uint64_t kIndexEntry = 16;
    const std::uint64_t length = in.be32() * kIndexEntry + in.be32();
    if (length > limits.headerBlock)
        return Error{ErrorCode::LimitExceeded, "rpm: header size"};
    return position + block.size() + length;
}

Result<std::uint64_t> payloadPosition(const ByteSource& source, const Limits& limits)
{
    const auto signatures = TRY(endOfHeader(source, kLeadSize, limits));
    constexpr std::uint64_t kAlignment = 8; // of the header behind the signatures, not of the payload
    return endOfHeader(source, (signatures + kAlignment - 1) / kAlignment * kAlignment, limits);
}

Match probe(const ProbeInput& input)
{
    const auto text = asText(input.head);
    if (!text.starts_with(kLeadMagic) || text.size() < kLeadSize + kHeaderMagic.size())
        return Match::No;
    return text.substr(kLeadSize).starts_with(kHeaderMagic) ? Match::Sure : Match::Likely;
}

/// The payload's compressor by its signature: the tag that names it is missing in old packages.
Result<StreamPtr> open(SourcePtr source, const StreamParams& params)
{
    const auto position = TRY(payloadPosition(*source, params.limits));
    const auto head = TRY(readBlock(*source, position, 6));
    const auto text = asText(head);
    const auto size = source->size() - std::min(position, source->size());
    auto packed = windowStream(std::move(source), position, size);
    const CodecParams codec{params.threads, params.limits, params.cancel};
    if (text.starts_with("\x1F\x8B"))
        return openGzip(std::move(packed), codec);
    if (text.starts_with("BZh"))
        return openBzip2(std::move(packed), codec);
    if (text.starts_with(std::string_view("\xFD"
                                          "7zXZ\0",
                                          6)))
        return openXz(std::move(packed), codec);
    if (text.starts_with("\x28\xB5\x2F\xFD"))
        return openZstd(std::move(packed), codec);
    if (text.starts_with(std::string_view("\x5D\0\0", 3)))
        return openLzmaAlone(std::move(packed), codec);
    if (text.starts_with("0707"))
        return packed;
    return Error{ErrorCode::UnsupportedMethod, "rpm: compression of the payload"};
}

constexpr std::string_view kExtensions[] = {"rpm"};

}

constexpr StreamFormatRow kRpmFormat{"rpm", "RPM package", kExtensions, &probe, &open};

}
