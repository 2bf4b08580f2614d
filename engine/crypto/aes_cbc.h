#pragma once

#include "engine/io/stream.h"

namespace vantoro {

/// Undoes AES in CBC mode without padding. `key` has 16, 24 or 32 bytes, `iv` 16. A last piece of less than 16 bytes is
/// dropped: no cipher text ends there.
Result<StreamPtr> openAesCbc(StreamPtr cipherText, ConstBytes key, ConstBytes iv);
/// The same in place, for a block whose size is a multiple of 16.
Result<void> decryptAesCbc(Bytes block, ConstBytes key, ConstBytes iv);

}
