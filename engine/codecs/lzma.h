#pragma once

#include "engine/codecs/codec.h"

#include <optional>

namespace vantoro {

/// A .lzma file: the 13-byte header of LZMA alone, no checksum.
Result<StreamPtr> openLzmaAlone(StreamPtr packed, const CodecParams& params = {});

/// Filters as 7z, zip and xz know them, their properties in the form that these store.
enum class LzmaFilter : std::uint8_t { Lzma1, Lzma2, Delta, X86, PowerPc, Ia64, Arm, ArmThumb, Sparc, Arm64 };
struct LzmaFilterStep {
    LzmaFilter filter;
    ConstBytes properties; ///< LZMA: 5 bytes; LZMA2: 1 byte; Delta: 1 byte; the others: none, or a start offset
};

/// A chain without a container. `steps` in the order of encoding: converters first, LZMA1 or LZMA2 last; four at most.
/// Without `size` an LZMA1 stream must hold an end mark. The stream ends where the chain does; no checksum.
Result<StreamPtr> openLzmaChain(StreamPtr packed, std::span<const LzmaFilterStep> steps,
                                std::optional<std::uint64_t> size, const CodecParams& params = {});

}
