#pragma once

#include "engine/formats/archive.h"
#include "engine/io/stream.h"

namespace vantoro {

/// The bytes of an archive that is read from front to back, from a source (passing over data costs nothing) or out of a
/// stream. Counts what is read, and knows which entries a checksum around it has confirmed.
class EntryInput {
public:
    EntryInput(SourcePtr source, std::atomic<std::uint64_t>* counter, CancelToken cancel);
    EntryInput(StreamPtr stream, CancelToken cancel);

    std::uint64_t position() const { return m_position; }
    /// The next `count` bytes where they lie, 64 KiB at most; fewer only at the end. Valid until the next call.
    Result<ConstBytes> peek(std::size_t count);
    void consume(std::size_t count);
    /// Passes over `count` bytes; Truncated when there are not so many.
    Result<void> skip(std::uint64_t count);
    /// Hands `count` bytes to the receiver. Its errors are returned; what the input lacks goes to `fault`.
    Result<void> deliver(LaneReceiver& lane, std::uint64_t count, Result<void>& fault);
    /// Reads to the end, so that checksums are met.
    Result<void> drain();

    /// Another entry ends here.
    void entryEnded();
    /// Leading entries whose bytes a checksum has confirmed.
    std::uint64_t trustedEntries() const { return m_trusted; }

private:
    Result<std::size_t> readInto(Bytes into);
    Result<void> refill();
    Result<void> deliverDirectly(LaneReceiver& lane, std::uint64_t count, std::uint64_t& done, Result<void>& fault);

    SourcePtr m_source; // one of the two
    StreamPtr m_stream;
    std::atomic<std::uint64_t>* m_counter = nullptr;
    CancelToken m_cancel;
    std::vector<std::byte> m_buffer;
    std::size_t m_begin = 0, m_end = 0; // of what is buffered
    std::size_t m_ahead; // bytes to read at once: few while data are passed over
    std::uint64_t m_position = 0; // of m_begin in the archive
    std::uint64_t m_entries = 0, m_trusted = 0, m_verified = 0;
};

}
