#pragma once

#include "engine/formats/archive.h"
#include "engine/io/stream.h"

namespace vantoro {

/// What a probe may look at.
struct ProbeInput {
    ConstBytes head; ///< the first bytes, at most 256 KiB (the whole file if smaller)
    const ByteSource* source; ///< null when the bytes come out of a stream: only `head` is there
    std::string_view name; ///< bare file name
};

enum class Match : std::uint8_t {
    No,
    ByName, ///< nothing contradicts it, and the name has one of its extensions: a format without a signature
    Stub, ///< found behind something else: self-extractors, zip after a picture
    Likely, ///< a short or weak signature that holds
    Sure, ///< signature and first header are right
};

/// A container format. One constexpr table, in order of trial; the best Match wins, among equals the extension, then
/// the order.
struct FormatRow {
    const char* id; ///< "zip"
    const char* displayName; ///< "Zip archive"
    std::span<const std::string_view> extensions; ///< lower case, without the dot
    Match (*probe)(const ProbeInput&);
    Result<ArchivePtr> (*open)(SourcePtr source, const OpenContext& context);
    /// Opens from a stream alone (tar inside gz, cpio inside rpm); null where the format needs random access.
    Result<ArchivePtr> (*openStream)(StreamFactory stream, const OpenContext& context) = nullptr;
};

struct StreamParams {
    unsigned threads = 1; ///< decoders that may run at once
    Limits limits;
    CancelToken cancel;
    std::atomic<std::uint64_t>* packedBytesRead = nullptr; ///< may be null
};

/// A single compressed stream: gz, xz, lz4 … and wrappers such as rpm's payload.
struct StreamFormatRow {
    const char* id; ///< "gz"
    const char* displayName;
    std::span<const std::string_view> extensions; ///< "gz", "gzip", and those that mean a tar inside: "tgz"
    Match (*probe)(const ProbeInput&);
    Result<StreamPtr> (*open)(SourcePtr source, const StreamParams& params);
    /// What the header says of the one file inside; null where there is nothing to say. Fields may stay unset.
    struct Inner {
        std::string name; ///< raw bytes; empty when not stored
        Timestamp modified;
        std::optional<std::uint64_t> size; ///< only when it can be trusted
    };
    Result<Inner> (*describe)(const ByteSource& source) = nullptr;
};

}
