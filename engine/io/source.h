#pragma once

#include "engine/io/bytes.h"

#include <memory>
#include <string>
#include <vector>

namespace vantoro {

/// Bytes readable at any position: a file, memory, a part of another source, a chain of volumes.
/// The position is an argument and no cursor moves, so that one source serves many readers and threads.
class ByteSource {
public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    virtual ~ByteSource() = default;

    virtual std::uint64_t size() const = 0; ///< in bytes
    /// Fills `into`; fewer bytes only at the end. Error Io when the medium fails.
    virtual Result<std::size_t> readAt(std::uint64_t position, Bytes into) const = 0;

    /// The file that holds [position, position + length) in one piece, for copies inside the kernel; fd -1 if none.
    struct FileRange {
        int fd = -1; ///< stays owned by the source
        std::uint64_t position = 0;
    };
    virtual FileRange fileRange(std::uint64_t position, std::uint64_t length) const;

    /// A piece of a file, for handing over to another process.
    struct FilePart {
        int fd = -1; ///< stays owned by the source
        std::uint64_t position = 0;
        std::uint64_t length = 0;
    };
    /// The files behind the whole source, in order; empty when not all of it lies in files.
    virtual std::vector<FilePart> fileParts() const { return {}; }

    /// Reads exactly `into.size()` bytes, Truncated otherwise.
    Result<void> readExactly(std::uint64_t position, Bytes into) const;
};
using SourcePtr = std::shared_ptr<const ByteSource>; // shared: the archive and every open entry read it

/// A regular file or block device, read with pread and never mapped: a file cut short must not become SIGBUS.
/// Refuses folders, FIFOs, sockets and character devices (NotAnArchive), without waiting on them.
Result<SourcePtr> openFileSource(const std::string& path);
/// Takes ownership of `fd`, also on failure.
Result<SourcePtr> fileSource(int fd);
/// The same for a caller that knows the size in bytes and that it is a file: asks the system nothing.
SourcePtr fileSource(int fd, std::uint64_t size);
SourcePtr memorySource(std::vector<std::byte> data);
SourcePtr memorySource(std::string_view text);
/// [offset, offset + length) of `source`, clipped to its size.
SourcePtr windowSource(SourcePtr source, std::uint64_t offset, std::uint64_t length);
/// The parts one behind the other.
SourcePtr joinedSource(std::vector<SourcePtr> parts);

/// At most `limit` bytes from `position`, fewer at the end.
Result<std::vector<std::byte>> readBlock(const ByteSource& source, std::uint64_t position, std::size_t limit);

}
