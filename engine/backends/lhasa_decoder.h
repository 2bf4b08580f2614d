#pragma once

#include "engine/io/stream.h"

namespace vantoro {

/// Decodes one entry's data with liblhasa. UnsupportedMethod when it does not know the method ("-lh5-").
/// The stream ends early where the data are damaged: liblhasa does not say why.
Result<StreamPtr> openLhasaDecoder(const std::string& method, StreamPtr packed, std::uint64_t size);

}
