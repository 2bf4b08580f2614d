#include "engine/codecs/block_inflate.h"

#include <libdeflate.h>

namespace vantoro {

struct BlockInflater::State {
    libdeflate_decompressor* decoder = libdeflate_alloc_decompressor();
    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() { libdeflate_free_decompressor(decoder); }
};

BlockInflater::BlockInflater() : m_state(std::make_unique<State>()) {}
BlockInflater::~BlockInflater() = default;
BlockInflater::BlockInflater(BlockInflater&&) noexcept = default;
BlockInflater& BlockInflater::operator=(BlockInflater&&) noexcept = default;

Result<std::size_t> BlockInflater::inflate(ConstBytes packed, Bytes out)
{
    if (!m_state->decoder)
        return Error{ErrorCode::OutOfMemory, "deflate: decoder"};
    std::size_t used = 0, made = 0;
    switch (libdeflate_deflate_decompress_ex(m_state->decoder, packed.data(), packed.size(), out.data(), out.size(),
                                             &used, &made)) {
    case LIBDEFLATE_SUCCESS:
        return made;
    case LIBDEFLATE_INSUFFICIENT_SPACE:
        return Error{ErrorCode::SizeMismatch, "deflate: longer than declared"};
    default:
        return Error{ErrorCode::Corrupt, "deflate: damaged"};
    }
}

}
