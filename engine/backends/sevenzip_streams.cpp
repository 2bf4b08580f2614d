#include "engine/backends/sevenzip_streams.h"

#include <algorithm>

namespace vantoro::sevenzip {

void InputState::fail(const Error& error)
{
    const std::lock_guard lock(m_mutex);
    if (!m_failure)
        m_failure = error;
}

std::optional<Error> InputState::failure() const
{
    const std::lock_guard lock(m_mutex);
    return m_failure;
}

void InputState::clearFailure()
{
    const std::lock_guard lock(m_mutex);
    m_failure.reset();
}

namespace {

constexpr std::size_t kReadAhead = 64 << 10;

class SourceInStream final : public Object<InStream, StreamSize> {
public:
    SourceInStream(SourcePtr source, InputStatePtr state) : m_source(std::move(source)), m_state(std::move(state)) {}

    HResult read(void* data, std::uint32_t size, std::uint32_t* processed) override
    {
        return callback([&] {
            if (processed)
                *processed = 0;
            if (m_state->cancel().isCancelled())
                return kAbort;
            const std::lock_guard lock(m_mutex); // some decoders read from threads of their own
            const auto got = readSome(Bytes(static_cast<std::byte*>(data), size));
            if (!got) {
                m_state->fail(got.error());
                return kFail;
            }
            m_position += *got;
            m_state->count(*got);
            if (processed)
                *processed = static_cast<std::uint32_t>(*got);
            return kOk;
        });
    }

    HResult seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* position) override
    {
        const std::lock_guard lock(m_mutex);
        const auto base = origin == SeekOrigin::Set ? 0 : origin == SeekOrigin::Current ? m_position : m_source->size();
        std::int64_t target = 0;
        if (__builtin_add_overflow(static_cast<std::int64_t>(base), offset, &target) || target < 0)
            return kSeekBeforeStart;
        m_position = static_cast<std::uint64_t>(target);
        if (position)
            *position = m_position;
        return kOk;
    }

    HResult streamSize(std::uint64_t* size) override
    {
        *size = m_source->size();
        return kOk;
    }

private:
    void* otherInterface(const Guid& id) override
    {
        return id == SequentialInStream::kId ? static_cast<SequentialInStream*>(this) : nullptr;
    }

    Result<std::size_t> readSome(Bytes into)
    {
        if (into.empty() || m_position >= m_source->size())
            return std::size_t{0};
        const bool isBuffered = m_position >= m_bufferStart && m_position - m_bufferStart < m_buffered;
        if (!isBuffered) {
            if (into.size() >= kReadAhead / 2)
                return m_source->readAt(m_position, into);
            m_buffer.resize(kReadAhead);
            m_buffered = 0;
            m_buffered = TRY(m_source->readAt(m_position, m_buffer));
            m_bufferStart = m_position;
        }
        const auto skipped = static_cast<std::size_t>(m_position - m_bufferStart);
        const auto count = std::min(into.size(), m_buffered - skipped);
        std::memcpy(into.data(), m_buffer.data() + skipped, count);
        return count;
    }

    SourcePtr m_source;
    InputStatePtr m_state;
    std::mutex m_mutex;
    std::uint64_t m_position = 0;
    std::vector<std::byte> m_buffer;
    std::uint64_t m_bufferStart = 0;
    std::size_t m_buffered = 0;
};

class StreamSource final : public ByteSource {
public:
    StreamSource(Ref<InStream> stream, std::uint64_t size) : m_stream(std::move(stream)), m_size(size) {}
    std::uint64_t size() const override { return m_size; }
    Result<std::size_t> readAt(std::uint64_t position, Bytes into) const override
    {
        const std::lock_guard lock(m_mutex);
        if (position >= m_size)
            return std::size_t{0};
        into = into.first(static_cast<std::size_t>(std::min<std::uint64_t>(into.size(), m_size - position)));
        if (m_stream->seek(static_cast<std::int64_t>(position), SeekOrigin::Set, nullptr) != kOk)
            return Error{ErrorCode::Corrupt, "7-Zip: a part inside the image cannot be reached"};
        std::size_t done = 0;
        while (done < into.size()) {
            const auto wanted = static_cast<std::uint32_t>(std::min<std::size_t>(into.size() - done, 1 << 30));
            std::uint32_t got = 0;
            if (m_stream->read(into.data() + done, wanted, &got) != kOk)
                return Error{ErrorCode::Corrupt, "7-Zip: a part inside the image cannot be read"};
            if (got == 0)
                break;
            done += got;
        }
        return done;
    }

private:
    Ref<InStream> m_stream;
    std::uint64_t m_size;
    mutable std::mutex m_mutex;
};

}

Ref<InStream> sourceStream(SourcePtr source, InputStatePtr state)
{
    return Ref<InStream>::adopt(makeObject<SourceInStream>(std::move(source), std::move(state)).detach());
}

SourcePtr streamSource(Ref<InStream> stream)
{
    std::uint64_t size = 0;
    if (stream->seek(0, SeekOrigin::End, &size) != kOk)
        return nullptr;
    return std::make_shared<StreamSource>(std::move(stream), size);
}

}
