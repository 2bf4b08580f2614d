#include "engine/io/source.h"

#include "engine/io/file_read.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantoro {

ByteSource::FileRange ByteSource::fileRange(std::uint64_t, std::uint64_t) const { return {}; }

Result<void> ByteSource::readExactly(std::uint64_t position, Bytes into) const
{
    if (TRY(readAt(position, into)) < into.size())
        return Error{ErrorCode::Truncated, "source ends before the block"};
    return {};
}

namespace {

class FileSource final : public ByteSource {
public:
    FileSource(int fd, std::uint64_t size) : m_fd(fd), m_size(size) {}
    ~FileSource() override { ::close(m_fd); }

    std::uint64_t size() const override { return m_size; }

    Result<std::size_t> readAt(std::uint64_t position, Bytes into) const override
    {
        const auto left = m_size - std::min(m_size, position);
        return readFileAt(m_fd, position,
                          into.first(static_cast<std::size_t>(std::min<std::uint64_t>(into.size(), left))));
    }

    FileRange fileRange(std::uint64_t position, std::uint64_t length) const override
    {
        if (position > m_size || length > m_size - position)
            return {};
        return {m_fd, position};
    }
    std::vector<FilePart> fileParts() const override { return {{m_fd, 0, m_size}}; }

private:
    const int m_fd;
    const std::uint64_t m_size;
};

class MemorySource final : public ByteSource {
public:
    explicit MemorySource(std::vector<std::byte> data) : m_data(std::move(data)) {}
    std::uint64_t size() const override { return m_data.size(); }
    Result<std::size_t> readAt(std::uint64_t position, Bytes into) const override
    {
        if (position >= m_data.size())
            return std::size_t{0};
        const auto count = std::min(into.size(), m_data.size() - static_cast<std::size_t>(position));
        if (count > 0)
            std::memcpy(into.data(), m_data.data() + position, count);
        return count;
    }

private:
    std::vector<std::byte> m_data;
};

class WindowSource final : public ByteSource {
public:
    WindowSource(SourcePtr source, std::uint64_t offset, std::uint64_t length)
        : m_source(std::move(source))
        , m_offset(offset)
        , m_length(length)
    {
    }
    std::uint64_t size() const override { return m_length; }
    Result<std::size_t> readAt(std::uint64_t position, Bytes into) const override
    {
        if (position >= m_length)
            return std::size_t{0};
        const auto count = std::min<std::uint64_t>(into.size(), m_length - position);
        return m_source->readAt(m_offset + position, into.first(static_cast<std::size_t>(count)));
    }
    FileRange fileRange(std::uint64_t position, std::uint64_t length) const override
    {
        if (position > m_length || length > m_length - position)
            return {};
        return m_source->fileRange(m_offset + position, length);
    }
    std::vector<FilePart> fileParts() const override
    {
        std::vector<FilePart> inside;
        std::uint64_t start = 0; // of the part at hand within the source
        for (const auto& part : m_source->fileParts()) {
            const auto from = std::max(start, m_offset);
            const auto to = std::min(start + part.length, m_offset + m_length);
            if (from < to)
                inside.push_back({part.fd, part.position + (from - start), to - from});
            start += part.length;
        }
        return inside;
    }

private:
    SourcePtr m_source;
    std::uint64_t m_offset;
    std::uint64_t m_length;
};

class JoinedSource final : public ByteSource {
public:
    explicit JoinedSource(std::vector<SourcePtr> parts) : m_parts(std::move(parts))
    {
        for (const auto& part : m_parts) {
            m_starts.push_back(m_size);
            m_size += part->size();
        }
    }
    std::uint64_t size() const override { return m_size; }
    Result<std::size_t> readAt(std::uint64_t position, Bytes into) const override
    {
        std::size_t done = 0;
        while (done < into.size() && position + done < m_size) {
            const auto index = partAt(position + done);
            const auto inside = position + done - m_starts[index];
            const auto wanted = std::min<std::uint64_t>(into.size() - done, m_parts[index]->size() - inside);
            const auto count
                = TRY(m_parts[index]->readAt(inside, into.subspan(done, static_cast<std::size_t>(wanted))));
            if (count == 0)
                break;
            done += count;
        }
        return done;
    }
    FileRange fileRange(std::uint64_t position, std::uint64_t length) const override
    {
        if (position >= m_size)
            return {};
        const auto index = partAt(position);
        return m_parts[index]->fileRange(position - m_starts[index], length);
    }
    std::vector<FilePart> fileParts() const override
    {
        std::vector<FilePart> all;
        for (const auto& part : m_parts) {
            const auto files = part->fileParts();
            if (files.empty() && part->size() > 0)
                return {};
            all.insert(all.end(), files.begin(), files.end());
        }
        return all;
    }

private:
    std::size_t partAt(std::uint64_t position) const
    {
        const auto after = std::upper_bound(m_starts.begin(), m_starts.end(), position);
        return static_cast<std::size_t>(after - m_starts.begin()) - 1;
    }
    std::vector<SourcePtr> m_parts;
    std::vector<std::uint64_t> m_starts;
    std::uint64_t m_size = 0;
};

}

Result<SourcePtr> fileSource(int fd)
{
    struct stat status {};
    if (::fstat(fd, &status) != 0) {
        const int reason = errno;
        ::close(fd);
        return Error{ErrorCode::Io, "fstat", reason};
    }
    std::uint64_t size = 0;
    if (S_ISREG(status.st_mode)) {
        size = static_cast<std::uint64_t>(status.st_size);
    } else if (S_ISBLK(status.st_mode)) {
        const auto end = ::lseek(fd, 0, SEEK_END);
        size = end > 0 ? static_cast<std::uint64_t>(end) : 0;
    } else {
        ::close(fd);
        return Error{ErrorCode::NotAnArchive, "neither a regular file nor a block device"};
    }
    return SourcePtr(std::make_shared<FileSource>(fd, size));
}

SourcePtr fileSource(int fd, std::uint64_t size) { return std::make_shared<FileSource>(fd, size); }

Result<SourcePtr> openFileSource(const std::string& path)
{
    // Without O_NONBLOCK the open itself would wait on a FIFO.
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0)
        return Error{ErrorCode::Io, "open", errno};
    return fileSource(fd);
}

SourcePtr memorySource(std::vector<std::byte> data) { return std::make_shared<MemorySource>(std::move(data)); }

SourcePtr memorySource(std::string_view text)
{
    const auto bytes = asBytes(text);
    return memorySource(std::vector<std::byte>(bytes.begin(), bytes.end()));
}

SourcePtr windowSource(SourcePtr source, std::uint64_t offset, std::uint64_t length)
{
    const auto whole = source->size();
    offset = std::min(offset, whole);
    length = std::min(length, whole - offset);
    if (offset == 0 && length == whole)
        return source;
    return std::make_shared<WindowSource>(std::move(source), offset, length);
}

SourcePtr joinedSource(std::vector<SourcePtr> parts)
{
    if (parts.size() == 1)
        return parts.front();
    return std::make_shared<JoinedSource>(std::move(parts));
}

Result<std::vector<std::byte>> readBlock(const ByteSource& source, std::uint64_t position, std::size_t limit)
{
    const auto left = position < source.size() ? source.size() - position : 0;
    std::vector<std::byte> block(static_cast<std::size_t>(std::min<std::uint64_t>(limit, left)));
    block.resize(TRY(source.readAt(position, block)));
    return block;
}

}
