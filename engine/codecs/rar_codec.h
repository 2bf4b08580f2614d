#pragma once

#include "engine/io/cancel.h"
#include "engine/io/stream.h"

#include <optional>

namespace vantoro {

/// What a rar codec is told of an entry.
struct RarCodecEntry {
    std::optional<std::uint64_t> size; ///< decoded bytes; nothing: the stream's own end decides
    std::uint64_t window = 0; ///< bytes of history that distances may reach back
    bool isSolid = false; ///< goes on with the state that the entry before left
    bool leadsOn = false; ///< a solid entry follows: decode to the codec's own end, past the last byte of output
    CancelToken cancel;
};

/// One of rar's compression methods together with the state that solid entries share.
class RarCodec {
public:
    virtual ~RarCodec() = default;
    /// Decodes one entry and hands its bytes to `out`, never more than its size; finish() is not called. On an error
    /// what was decoded before it has been handed over. Fewer bytes than declared are not an error here.
    virtual Result<void> decode(ByteStream& packed, const RarCodecEntry& entry, ByteSink& out) = 0;
};

std::unique_ptr<RarCodec> makeRar15Codec(); ///< rar 1.4 and 1.5
std::unique_ptr<RarCodec> makeRar20Codec(); ///< rar 2.0 to 2.6
std::unique_ptr<RarCodec> makeRar29Codec(); ///< rar 2.9 to 4
/// Rar 5; `manyDistances` for the longer distance code of rar 7.
std::unique_ptr<RarCodec> makeRar50Codec(bool manyDistances);

}
