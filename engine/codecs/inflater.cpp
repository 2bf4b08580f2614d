#include "engine/codecs/inflater.h"

#include "engine/codecs/late_isal.h"

#include <algorithm>
#include <array>

namespace vantoro {

struct Inflater::State {
    inflate_state isal;
    std::uint32_t crcFlag;
};

namespace {

std::uint32_t crcFlagFor(Inflater::Checksum kind)
{
    switch (kind) {
    case Inflater::Checksum::Crc32:
        return ISAL_GZIP_NO_HDR;
    case Inflater::Checksum::Adler32:
        return ISAL_ZLIB_NO_HDR;
    case Inflater::Checksum::None:
        break;
    }
    return ISAL_DEFLATE;
}

// The library's bit buffer holds up to eight bytes from behind the last block.
void giveBack(inflate_state& isal, BufferedInput& in)
{
    const auto bits = static_cast<unsigned>(std::max(isal.read_in_length, 0));
    auto rest = isal.read_in >> (bits % 8);
    std::array<std::byte, 8> bytes{};
    const std::size_t count = std::min<std::size_t>(bits / 8, bytes.size());
    for (std::size_t i = 0; i < count; ++i) {
        bytes[i] = static_cast<std::byte>(rest & 0xFF);
        rest >>= 8;
    }
    in.unread(ConstBytes(bytes).first(count));
    isal.read_in_length = 0;
}

}

Inflater::Inflater(Checksum kind) : m_state(std::make_unique<State>())
{
    m_state->crcFlag = crcFlagFor(kind);
    reset();
}

Inflater::~Inflater() = default;

void Inflater::reset()
{
    if (!isalLibrary.load())
        return;
    isal_inflate_init(&m_state->isal);
    m_state->isal.crc_flag = m_state->crcFlag;
}

Result<bool> Inflater::inflate(BufferedInput& in, SpanWriter& out)
{
    if (!isalLibrary.load())
        return Error{ErrorCode::UnsupportedFeature, "deflate: ISA-L is not there"};
    auto& isal = m_state->isal;
    while (out.room() > 0) {
        const auto packed = TRY(in.peek());
        isal.next_in = reinterpret_cast<std::uint8_t*>(const_cast<std::byte*>(packed.data()));
        isal.avail_in = static_cast<std::uint32_t>(packed.size());
        const auto room = out.free();
        isal.next_out = reinterpret_cast<std::uint8_t*>(room.data());
        isal.avail_out = static_cast<std::uint32_t>(std::min<std::size_t>(room.size(), 1U << 30));
        const auto offered = isal.avail_out;
        const int status = isal_inflate(&isal);
        in.consume(packed.size() - isal.avail_in);
        out.advance(offered - isal.avail_out);
        if (status < 0)
            return Error{ErrorCode::Corrupt, "deflate: invalid block or symbol"};
        if (isal.block_state == ISAL_BLOCK_FINISH) {
            giveBack(isal, in);
            return true;
        }
        if (packed.empty() && isal.avail_out == offered)
            return Error{ErrorCode::Truncated, "deflate: the input ends inside a block"};
    }
    return false;
}

std::uint32_t Inflater::checksum() const { return m_state->isal.crc; }
std::uint32_t Inflater::length() const { return m_state->isal.total_out; }

}
