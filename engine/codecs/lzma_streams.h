#pragma once

#include "engine/codecs/codec.h"

#include <optional>

namespace vantoro {

/// LZMA by itself; `properties`: the five bytes that containers store. Without `size` it must hold an end mark.
Result<StreamPtr> openLzma1(StreamPtr packed, ConstBytes properties, std::optional<std::uint64_t> size,
                            const CodecParams& params);
/// LZMA2 by itself; `properties`: the one byte that containers store.
Result<StreamPtr> openLzma2(StreamPtr packed, ConstBytes properties, const CodecParams& params);

/// LimitExceeded for a dictionary larger than the limits allow.
Result<void> checkLzmaDictionary(std::uint64_t dictionary, const Limits& limits);

}
