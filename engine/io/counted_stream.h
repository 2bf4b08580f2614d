#pragma once

#include "engine/io/stream.h"

#include <atomic>

namespace vantoro {

/// Adds what is read to `counter`, which outlives the stream: the progress of decoders that read from one.
StreamPtr countedStream(StreamPtr stream, std::atomic<std::uint64_t>& counter);

}
