#include "engine/write/source_reader.h"

#include <cerrno>
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
    std::size_t done = 0;
    while (done < into.size()) {
        const auto count = ::pread(m_fd, into.data() + done, into.size() - done, static_cast<off_t>(position + done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return Error{ErrorCode::SourceUnreadable, "read", errno};
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

}
