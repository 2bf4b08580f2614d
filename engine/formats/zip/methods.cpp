#include "engine/formats/zip/methods.h"

#include "engine/codecs/bzip2.h"
#include "engine/codecs/deflate.h"
#include "engine/codecs/deflate64.h"
#include "engine/codecs/implode.h"
#include "engine/codecs/lzma.h"
#include "engine/codecs/ppmd.h"
#include "engine/codecs/reduce.h"
#include "engine/codecs/shrink.h"
#include "engine/codecs/wavpack.h"
#include "engine/codecs/xz.h"
#include "engine/codecs/zstd.h"

#include <algorithm>

namespace vantoro::zip {

namespace {

constexpr std::uint16_t kLargeWindow = 1 << 1, kLiteralTree = 1 << 2; // flags of imploded entries

/// Version of the packer (2 bytes), size of the properties (2), properties, then a bare LZMA stream.
Result<StreamPtr> openLzma(StreamPtr packed, std::uint64_t size, const CodecParams& params)
{
    constexpr std::uint16_t kPropertySize = 5;
    constexpr std::uint32_t kLeastDictionary = 4096;
    std::array<std::byte, 4 + kPropertySize> head;
    if (TRY(readFully(*packed, head)) < head.size())
        return Error{ErrorCode::Truncated, "zip: LZMA properties"};
    ByteReader in(head);
    in.skip(2);
    if (in.le16() != kPropertySize)
        return Error{ErrorCode::Corrupt, "zip: size of the LZMA properties"};
    // No more dictionary than the entry can use.
    const auto properties = Bytes(head).last(kPropertySize);
    in.skip(1);
    const auto dictionary = std::min<std::uint64_t>(in.le32(), std::max<std::uint64_t>(size, kLeastDictionary));
    for (unsigned i = 0; i < 4; ++i)
        properties[1 + i] = static_cast<std::byte>(dictionary >> 8 * i);
    const LzmaFilterStep step{LzmaFilter::Lzma1, properties};
    return openLzmaChain(std::move(packed), {&step, 1}, size, params);
}

ImplodeParams implodeParams(const DirectoryHeader& header, std::uint64_t size)
{
    ImplodeParams implode;
    implode.hasLargeWindow = (header.flags & kLargeWindow) != 0;
    implode.hasLiteralTree = (header.flags & kLiteralTree) != 0;
    implode.leastMatch = implode.hasLiteralTree ? 3 : 2;
    implode.size = size;
    return implode;
}

}

Result<StreamPtr> openMethod(StreamPtr packed, const DirectoryHeader& header, std::uint64_t size,
                             const CodecParams& params)
{
    const auto method = header.realMethod();
    switch (method) {
    case Method::Stored:
        return packed;
    case Method::Shrink:
        return openShrink(std::move(packed), size, params);
    case Method::Reduce1:
    case Method::Reduce2:
    case Method::Reduce3:
    case Method::Reduce4:
        return openReduce(std::move(packed), static_cast<unsigned>(method) - 1, size, params);
    case Method::Implode:
        return openImplode(std::move(packed), implodeParams(header, size), params);
    case Method::Deflate:
        return openDeflate(std::move(packed), params);
    case Method::Deflate64:
        return openDeflate64(std::move(packed), params);
    case Method::Bzip2:
        return openBzip2(std::move(packed), params);
    case Method::Lzma:
        return openLzma(std::move(packed), size, params);
    case Method::OldZstd:
    case Method::Zstd:
        return openZstd(std::move(packed), params);
    case Method::Xz:
        return openXz(std::move(packed), params);
    case Method::WavPack:
        return openWavPack(std::move(packed), size, params);
    case Method::Ppmd:
        return openZipPpmd(std::move(packed), size, params.limits.dictionary);
    case Method::Aes:
        return Error{ErrorCode::Corrupt, "zip: AES without its extra field"};
    }
    return Error{ErrorCode::UnsupportedMethod, "zip: compression method"};
}

StreamPtr openOldImplode(StreamPtr packed, const DirectoryHeader& header, const CodecParams& params)
{
    auto implode = implodeParams(header, header.size);
    const unsigned least = implode.hasLargeWindow ? 3 : 2;
    if (header.realMethod() != Method::Implode || implode.leastMatch == least)
        return nullptr;
    implode.leastMatch = least;
    return openImplode(std::move(packed), implode, params);
}

}
