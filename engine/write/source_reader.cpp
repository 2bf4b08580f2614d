#include "engine/write/source_reader.h"

#include "engine/io/file_read.h"

#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace vantoro {

Result<SourceReader> SourceReader::open(const SourceItem& item)
{
    struct stat status {};
    const int fd = TRY(openSourceFile(item, &status));
    if (status.st_size > (1 << 20))
        ::posix_fadvise(fd, 0, 0, POSIX_FADV_SEQUENTIAL);
    return SourceReader(fd, static_cast<std::uint64_t>(status.st_size));
}

SourceReader::SourceReader(SourceReader&& other) noexcept
    : m_fd(std::exchange(other.m_fd, -1))
    , m_size(other.m_size)
    , m_position(other.m_position)
{
}

SourceReader::~SourceReader()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

Result<std::size_t> SourceReader::read(Bytes into)
{
    const auto count = TRY(readAt(m_position, into));
    m_position += count;
    return count;
}

Result<std::size_t> SourceReader::readAt(std::uint64_t position, Bytes into) const
{
    const auto got = readFileAt(m_fd, position, into);
    return got ? got : Error{ErrorCode::SourceUnreadable, "read", got.error().osError};
}

}
