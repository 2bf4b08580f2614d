#include "engine/io/stream.h"

#include <algorithm>
#include <array>

namespace vantoro {

Result<std::uint64_t> ByteStream::skip(std::uint64_t count)
{
    std::array<std::byte, 16384> scrap;
    std::uint64_t done = 0;
    while (done < count) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(count - done, scrap.size()));
        const auto got = TRY(read(Bytes(scrap).first(wanted)));
        if (got == 0)
            break;
        done += got;
    }
    return done;
}

Result<std::size_t> readFully(ByteStream& stream, Bytes into)
{
    std::size_t done = 0;
    while (done < into.size()) {
        const auto got = TRY(stream.read(into.subspan(done)));
        if (got == 0)
            break;
        done += got;
    }
    return done;
}

namespace {

constexpr std::size_t kReadAhead = 256 << 10;

class WindowStream final : public ByteStream {
public:
    WindowStream(SourcePtr source, std::uint64_t position, std::uint64_t end)
        : m_source(std::move(source))
        , m_position(position)
        , m_end(end)
    {
    }

    Result<std::size_t> read(Bytes into) override
    {
        if (m_bufferStart == m_bufferEnd) {
            // What is as large as our buffer goes straight to the reader.
            const auto left = m_end - m_position;
            if (into.size() >= kReadAhead || into.size() >= left) {
                const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(into.size(), left));
                const auto got = TRY(m_source->readAt(m_position, into.first(wanted)));
                m_position += got;
                return got;
            }
            m_buffer.resize(kReadAhead);
            const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(m_buffer.size(), left));
            m_bufferStart = 0;
            m_bufferEnd = TRY(m_source->readAt(m_position, Bytes(m_buffer).first(wanted)));
            m_position += m_bufferEnd;
        }
        const auto count = std::min(into.size(), m_bufferEnd - m_bufferStart);
        if (count > 0)
            std::memcpy(into.data(), m_buffer.data() + m_bufferStart, count);
        m_bufferStart += count;
        return count;
    }

    Result<std::uint64_t> skip(std::uint64_t count) override
    {
        const auto buffered = std::min<std::uint64_t>(count, m_bufferEnd - m_bufferStart);
        m_bufferStart += static_cast<std::size_t>(buffered);
        const auto passed = std::min(count - buffered, m_end - m_position);
        m_position += passed;
        return buffered + passed;
    }

private:
    SourcePtr m_source;
    std::uint64_t m_position;
    std::uint64_t m_end;
    std::vector<std::byte> m_buffer;
    std::size_t m_bufferStart = 0;
    std::size_t m_bufferEnd = 0;
};

class PrependedStream final : public ByteStream {
public:
    PrependedStream(std::vector<std::byte> head, StreamPtr rest) : m_head(std::move(head)), m_rest(std::move(rest)) {}
    Result<std::size_t> read(Bytes into) override
    {
        if (m_used == m_head.size())
            return m_rest->read(into);
        const auto count = std::min(into.size(), m_head.size() - m_used);
        std::memcpy(into.data(), m_head.data() + m_used, count);
        m_used += count;
        if (m_used == m_head.size())
            m_head = {}, m_used = 0;
        return count;
    }
    Result<std::uint64_t> skip(std::uint64_t count) override
    {
        const auto fromHead = std::min<std::uint64_t>(count, m_head.size() - m_used);
        m_used += static_cast<std::size_t>(fromHead);
        return fromHead + TRY(m_rest->skip(count - fromHead));
    }
    std::uint64_t verifiedBytes() const override { return m_rest->verifiedBytes(); }

private:
    std::vector<std::byte> m_head;
    std::size_t m_used = 0;
    StreamPtr m_rest;
};

}

StreamPtr windowStream(SourcePtr source, std::uint64_t offset, std::uint64_t length)
{
    offset = std::min(offset, source->size());
    length = std::min(length, source->size() - offset);
    return std::make_unique<WindowStream>(std::move(source), offset, offset + length);
}

StreamPtr windowStream(SourcePtr source)
{
    const auto length = source->size();
    return windowStream(std::move(source), 0, length);
}

StreamPtr prependedStream(std::vector<std::byte> head, StreamPtr rest)
{
    return std::make_unique<PrependedStream>(std::move(head), std::move(rest));
}

}
