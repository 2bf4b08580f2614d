#include "engine/backends/libarchive_input.h"

#include "engine/backends/late_libarchive.h"

#include <algorithm>
#include <cerrno>

namespace vantoro {

namespace {

constexpr std::size_t kBlock = 256 << 10;
constexpr std::uint64_t kSkipStep = 4 << 20; // the cancel token is asked between steps
constexpr std::uint64_t kReadsAtEnd = 1000; // honest readers ask a few times
// A reader that seeks reads some places twice, but not the whole file dozens of times.
constexpr std::uint64_t kRereads = 64;
constexpr std::uint64_t kRereadFloor = std::uint64_t{1} << 30;

}

LibarchiveInput::LibarchiveInput(SourcePtr source, CancelToken cancel, std::atomic<std::uint64_t>* packedBytesRead)
    : m_source(std::move(source))
    , m_cancel(std::move(cancel))
    , m_packedBytesRead(packedBytesRead)
    , m_buffer(kBlock)
{
}

LibarchiveInput::LibarchiveInput(StreamPtr stream, CancelToken cancel)
    : m_stream(std::move(stream))
    , m_cancel(std::move(cancel))
    , m_buffer(kBlock)
{
}

std::optional<std::uint64_t> LibarchiveInput::sourceSize() const
{
    return m_source ? std::optional(m_source->size()) : std::nullopt;
}

std::uint64_t LibarchiveInput::verifiedBytes() const
{
    return m_stream ? m_stream->verifiedBytes() : std::numeric_limits<std::uint64_t>::max();
}

Result<void> LibarchiveInput::drain()
{
    if (m_stream) {
        while (!TRY(next()).empty()) {}
    }
    return {};
}

Result<void> LibarchiveInput::checkProgress()
{
    if (m_failure)
        return *m_failure; // libarchive does not always take the first no for an answer
    TRY(m_cancel.check());
    if (m_readsAtEnd > kReadsAtEnd)
        return Error{ErrorCode::Stalled, "libarchive: reads past the end again and again"};
    if (m_source && m_consumed > kRereadFloor && m_consumed / kRereads > m_source->size())
        return Error{ErrorCode::Stalled, "libarchive: reads the same data again and again"};
    return {};
}

Result<ConstBytes> LibarchiveInput::next()
{
    TRY(checkProgress());
    const auto count = TRY(m_source ? m_source->readAt(m_position, m_buffer) : m_stream->read(m_buffer));
    m_position += count;
    m_consumed += count;
    m_readsAtEnd = count == 0 ? m_readsAtEnd + 1 : 0;
    if (m_packedBytesRead)
        m_packedBytesRead->fetch_add(count, std::memory_order_relaxed);
    return ConstBytes(m_buffer).first(count);
}

Result<std::uint64_t> LibarchiveInput::skip(std::uint64_t count)
{
    std::uint64_t done = 0;
    if (m_source) {
        TRY(checkProgress());
        done = std::min(count, m_source->size() - std::min(m_position, m_source->size()));
    } else {
        while (done < count) {
            TRY(checkProgress());
            const auto step = TRY(m_stream->skip(std::min(count - done, kSkipStep)));
            if (step == 0)
                break;
            done += step;
        }
    }
    m_position += done;
    m_consumed += done;
    if (m_packedBytesRead)
        m_packedBytesRead->fetch_add(done, std::memory_order_relaxed);
    return done;
}

Result<std::uint64_t> LibarchiveInput::seek(std::int64_t offset, int whence)
{
    TRY(checkProgress());
    std::int64_t base = 0;
    if (whence == SEEK_CUR)
        base = static_cast<std::int64_t>(m_position);
    else if (whence == SEEK_END)
        base = TRY(checkedCast<std::int64_t>(m_source->size()));
    std::int64_t target = 0;
    if (__builtin_add_overflow(base, offset, &target) || target < 0)
        return Error{ErrorCode::Corrupt, "libarchive: seeks before the start"};
    m_position = static_cast<std::uint64_t>(target);
    ++m_consumed; // so that endless seeking comes to an end too
    return m_position;
}

template <class F> std::int64_t LibarchiveInput::answered(archive* reader, F&& call)
{
    const auto result = guarded([&]() -> Result<std::int64_t> { return checkedCast<std::int64_t>(TRY(call())); });
    if (result)
        return *result;
    if (!m_failure)
        m_failure = result.error();
    archive_set_error(reader, EIO, "%s", result.error().what);
    return ARCHIVE_FATAL;
}

void LibarchiveInput::attach(archive* reader)
{
    archive_read_set_callback_data(reader, this);
    archive_read_set_read_callback(reader, [](archive* self, void* data, const void** block) -> la_ssize_t {
        auto& input = *static_cast<LibarchiveInput*>(data);
        return input.answered(self, [&]() -> Result<std::uint64_t> {
            const auto bytes = TRY(input.next());
            *block = bytes.data();
            return bytes.size();
        });
    });
    archive_read_set_skip_callback(reader, [](archive* self, void* data, la_int64_t count) -> la_int64_t {
        auto& input = *static_cast<LibarchiveInput*>(data);
        const auto passed = input.answered(
            self, [&] { return input.skip(static_cast<std::uint64_t>(std::max<la_int64_t>(count, 0))); });
        // libarchive adds up whatever it gets and would go on for ever with an error; 0 makes it read instead.
        return std::max<std::int64_t>(passed, 0);
    });
    if (!m_source)
        return; // without this callback libarchive knows that it cannot go back
    archive_read_set_seek_callback(reader, [](archive* self, void* data, la_int64_t offset, int whence) -> la_int64_t {
        auto& input = *static_cast<LibarchiveInput*>(data);
        return input.answered(self, [&] { return input.seek(offset, whence); });
    });
}

}
