#pragma once

#include "engine/io/stream.h"

#include <memory>

namespace vantoro {

/// Compresses into one bzip2 stream, blocks side by side on `threads` threads. `level`: 1 to 9.
std::unique_ptr<ByteSink> makeBzip2Sink(ByteSink& out, unsigned level, unsigned threads);

}
