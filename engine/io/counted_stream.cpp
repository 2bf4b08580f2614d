#include "engine/io/counted_stream.h"

namespace vantoro {

namespace {

class CountedStream final : public ByteStream {
public:
    CountedStream(StreamPtr stream, std::atomic<std::uint64_t>& counter)
        : m_stream(std::move(stream))
        , m_counter(counter)
    {
    }
    Result<std::size_t> read(Bytes into) override
    {
        const auto got = TRY(m_stream->read(into));
        m_counter.fetch_add(got, std::memory_order_relaxed);
        return got;
    }

private:
    StreamPtr m_stream;
    std::atomic<std::uint64_t>& m_counter;
};

}

StreamPtr countedStream(StreamPtr stream, std::atomic<std::uint64_t>& counter)
{
    return std::make_unique<CountedStream>(std::move(stream), counter);
}

}
