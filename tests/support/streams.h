#pragma once

#include "engine/io/stream.h"

#include <string>

/// Streams for tests: awkward ones, and all of one as text.
namespace vantoro::testing {

/// Gives its bytes in pieces of `piece`.
class PiecewiseStream final : public ByteStream {
public:
    PiecewiseStream(std::string data, std::size_t piece) : m_data(std::move(data)), m_piece(piece) {}
    Result<std::size_t> read(Bytes into) override
    {
        const auto count = std::min({into.size(), m_piece, m_data.size() - m_used});
        if (count > 0)
            std::memcpy(into.data(), m_data.data() + m_used, count);
        m_used += count;
        return count;
    }

private:
    std::string m_data;
    std::size_t m_piece;
    std::size_t m_used = 0;
};

struct Drained {
    std::string data; ///< what came out before the end or the fault
    Result<void> outcome;
    std::uint64_t verified = 0;
};

inline Drained drain(ByteStream& stream, std::size_t piece = 64 << 10, std::size_t most = std::size_t{1} << 30)
{
    Drained all;
    std::string buffer(piece, '\0');
    while (all.data.size() < most) {
        const auto got = stream.read(std::as_writable_bytes(std::span(buffer)));
        if (!got) {
            all.outcome = got.error();
            break;
        }
        if (*got == 0)
            break;
        all.data.append(buffer, 0, *got);
    }
    all.verified = stream.verifiedBytes();
    return all;
}

inline StreamPtr textStream(std::string data, std::size_t piece = std::size_t{1} << 30)
{
    return std::make_unique<PiecewiseStream>(std::move(data), piece);
}

}
