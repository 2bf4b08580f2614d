#pragma once

#include "engine/codecs/codec.h"
#include "engine/formats/sevenzip/database.h"
#include "engine/io/stream.h"

namespace vantoro::seven {

/// Whether open() has decoders for all steps of the block.
bool isReadable(const Block& block);
/// Bytes of history that decoding it needs.
std::uint64_t dictionaryOf(const Block& block);
/// "BCJ LZMA2:24".
std::string methodOf(const Block& block);

/// The decoded data of a block.
Result<StreamPtr> openBlock(const SourcePtr& source, const Block& block, std::atomic<std::uint64_t>* packedBytesRead,
                            const CodecParams& params);

}
