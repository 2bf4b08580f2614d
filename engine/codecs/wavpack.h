#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// A lossless WavPack stream of a wave file: gives the file, with the header and whatever followed the samples. A
/// stream that keeps no header gets a plain one. `size` is the declared one; it tells whether the file had the padding
/// that newer streams do not keep. UnsupportedMethod for what is no such file (lossy, DSD, samples in another order),
/// and where the library is not installed.
Result<StreamPtr> openWavPack(StreamPtr packed, std::uint64_t size, const CodecParams& params = {});

/// Loads the library, for a process that may not be able to do so later. False when it is not there.
bool preloadWavPack();

}
