#pragma once

#include "engine/io/bytes.h"
#include "engine/write/source_list.h"

namespace vantoro {

/// A source file being read: its size as of now, which the walk may have seen differently.
class SourceReader {
public:
    /// SourceUnreadable when the file is gone or is none any more.
    static Result<SourceReader> open(const SourceItem& item);
    SourceReader(SourceReader&& other) noexcept;
    SourceReader& operator=(SourceReader&&) = delete;
    ~SourceReader();

    std::uint64_t size() const { return m_size; }
    /// Fills `into` as far as the file goes on from where the last call ended; 0 at its end.
    Result<std::size_t> read(Bytes into);
    /// The same from a position; several threads may do it.
    Result<std::size_t> readAt(std::uint64_t position, Bytes into) const;

private:
    SourceReader(int fd, std::uint64_t size) : m_fd(fd), m_size(size) {}
    int m_fd;
    std::uint64_t m_size;
    std::uint64_t m_position = 0;
};

}
