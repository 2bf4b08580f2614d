#pragma once

#include "engine/formats/archive.h"
#include "engine/io/stream.h"

struct archive;

namespace vantoro {

/// Feeds libarchive from a source (with seeks) or from a stream, and keeps the reason when that fails. Polls the cancel
/// token on every call, and stops a reader that goes round in circles: some crafted files make libarchive read the same
/// place, or the end, for ever.
class LibarchiveInput {
public:
    LibarchiveInput(SourcePtr source, CancelToken cancel, std::atomic<std::uint64_t>* packedBytesRead);
    LibarchiveInput(StreamPtr stream, CancelToken cancel);

    /// Registers the callbacks; this object must outlive `reader`.
    void attach(archive* reader);

    /// Why a callback failed, if one did: libarchive only knows "read error".
    const std::optional<Error>& failure() const { return m_failure; }
    /// Bytes handed over or passed over so far.
    std::uint64_t consumed() const { return m_consumed; }
    /// Reads on to the end of a stream: the checksum of what is around the archive may stand there.
    Result<void> drain();
    /// Bytes from the start of a stream that are known to be right; everything for a source.
    std::uint64_t verifiedBytes() const;
    /// Size of the source; nothing for a stream.
    std::optional<std::uint64_t> sourceSize() const;

private:
    Result<ConstBytes> next();
    Result<std::uint64_t> skip(std::uint64_t count);
    Result<std::uint64_t> seek(std::int64_t offset, int whence);
    Result<void> checkProgress();

    template <class F> std::int64_t answered(archive* reader, F&& call);

    SourcePtr m_source;
    StreamPtr m_stream;
    CancelToken m_cancel;
    std::atomic<std::uint64_t>* m_packedBytesRead = nullptr;
    std::vector<std::byte> m_buffer;
    std::uint64_t m_position = 0;
    std::uint64_t m_consumed = 0;
    std::uint64_t m_readsAtEnd = 0;
    std::optional<Error> m_failure;
};

}
