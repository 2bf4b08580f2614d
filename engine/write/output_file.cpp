#include "engine/write/output_file.h"

#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantoro {

namespace {

constexpr std::size_t kBufferSize = 512 << 10;

Error writeError(int reason, const char* what)
{
    switch (reason) {
    case ENOSPC:
    case EDQUOT:
        return {ErrorCode::NoSpace, what, reason};
    case EACCES:
    case EPERM:
    case EROFS:
        return {ErrorCode::NotWritable, what, reason};
    case ENOENT:
    case ENOTDIR:
        return {ErrorCode::DestinationGone, what, reason};
    default:
        return {ErrorCode::WriteFailed, what, reason};
    }
}

}

Result<std::unique_ptr<OutputFile>> OutputFile::create(const std::string& target)
{
    const std::filesystem::path path(target);
    const auto folder = path.parent_path().empty() ? std::filesystem::path(".") : path.parent_path();
    std::error_code ignored;
    if (path.filename().empty() || std::filesystem::is_directory(path, ignored))
        return Error{ErrorCode::WriteFailed, "the target is a folder", EISDIR};
    // Short whatever the target is called: a name of 255 bytes leaves no room for an affix.
    auto temporary = (folder / ".vantoro-XXXXXX").string();
    const int fd = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (fd < 0)
        return writeError(errno, "creating the archive");
    // As open() would have given it; mkostemp is stricter.
    const auto mask = ::umask(0);
    ::umask(mask);
    ::fchmod(fd, 0666 & ~mask);
    return std::unique_ptr<OutputFile>(new OutputFile(fd, std::move(temporary), target));
}

OutputFile::OutputFile(int fd, std::string temporary, std::string target)
    : m_fd(fd)
    , m_temporary(std::move(temporary))
    , m_target(std::move(target))
{
    m_buffer.reserve(kBufferSize);
}

OutputFile::~OutputFile()
{
    if (m_fd >= 0)
        ::close(m_fd);
    if (!m_temporary.empty())
        ::unlink(m_temporary.c_str());
}

Result<void> OutputFile::writeAll(ConstBytes block, std::uint64_t position)
{
    while (!block.empty()) {
        const auto count = ::pwrite(m_fd, block.data(), block.size(), static_cast<off_t>(position));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return writeError(errno, "writing the archive");
        block = block.subspan(static_cast<std::size_t>(count));
        position += static_cast<std::uint64_t>(count);
    }
    return {};
}

Result<void> OutputFile::write(ConstBytes block)
{
    if (m_buffer.size() + block.size() > kBufferSize)
        TRY(flush());
    if (block.size() >= kBufferSize) {
        TRY(writeAll(block, m_written));
        m_written += block.size();
        return {};
    }
    m_buffer.insert(m_buffer.end(), block.begin(), block.end());
    return {};
}

Result<void> OutputFile::flush()
{
    TRY(writeAll(m_buffer, m_written));
    m_written += m_buffer.size();
    m_buffer.clear();
    return {};
}

Result<void> OutputFile::patch(std::uint64_t position, ConstBytes block)
{
    if (position >= m_written) {
        // Still in the buffer.
        std::copy(block.begin(), block.end(), m_buffer.begin() + static_cast<std::ptrdiff_t>(position - m_written));
        return {};
    }
    TRY(flush());
    return writeAll(block, position);
}

Result<void> OutputFile::truncate(std::uint64_t size)
{
    TRY(flush());
    if (::ftruncate(m_fd, static_cast<off_t>(size)) != 0)
        return writeError(errno, "cutting the archive");
    m_written = size;
    return {};
}

Result<void> OutputFile::commit()
{
    TRY(flush());
    const int fd = std::exchange(m_fd, -1);
    if (::close(fd) != 0)
        return writeError(errno, "closing the archive");
    if (::rename(m_temporary.c_str(), m_target.c_str()) != 0)
        return writeError(errno, "renaming the archive");
    m_temporary.clear();
    return {};
}

}
