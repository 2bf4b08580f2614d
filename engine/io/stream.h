#pragma once

#include "engine/io/source.h"

#include <functional>

namespace vantoro {

/// Bytes that come one after another.
class ByteStream {
public:
    ByteStream() = default;
    ByteStream(const ByteStream&) = delete;
    ByteStream& operator=(const ByteStream&) = delete;
    virtual ~ByteStream() = default;

    /// Reads up to `into.size()` bytes; 0 only at the end (or for an empty `into`).
    virtual Result<std::size_t> read(Bytes into) = 0;
    /// Passes over up to `count` bytes; fewer only at the end. Seekable streams do it without reading.
    virtual Result<std::uint64_t> skip(std::uint64_t count);
    /// How many of the bytes from the start a stored checksum (or a structure that leaves no doubt) has confirmed by
    /// now. When a later check fails, what lies behind this mark may be wrong although it was handed out.
    virtual std::uint64_t verifiedBytes() const { return 0; }
};
using StreamPtr = std::unique_ptr<ByteStream>; // owned by whoever reads next: streams compose by owning their input
/// Opens the same stream again from its start, for a second pass.
using StreamFactory = std::function<Result<StreamPtr>()>;

/// Takes bytes one after another.
class ByteSink {
public:
    virtual ~ByteSink() = default;
    virtual Result<void> write(ConstBytes) = 0;
    virtual Result<void> finish() = 0; ///< everything has been written; reports what was still pending
};

/// Reads until `into` is full or the stream ends; returns the count.
Result<std::size_t> readFully(ByteStream& stream, Bytes into);
/// A range of a source, read ahead in 256 KiB pieces; skip() costs nothing.
StreamPtr windowStream(SourcePtr source, std::uint64_t offset, std::uint64_t length);
StreamPtr windowStream(SourcePtr source);
/// `head` first, then `rest`: hands back what was read for probing.
StreamPtr prependedStream(std::vector<std::byte> head, StreamPtr rest);

}
