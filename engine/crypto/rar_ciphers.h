#pragma once

#include "engine/io/stream.h"

#include <string_view>

namespace vantoro {

/// The ciphers of rar before 2.9. `password` is the bytes in the packer's charset.
enum class RarCipher : std::uint8_t { Rar14, Rar15, Rar20 };
StreamPtr openRarCipher(RarCipher cipher, StreamPtr cipherText, std::string_view password);
/// Packed archive comments of rar 1.4 are enciphered without a password.
StreamPtr openRar14CommentCipher(StreamPtr cipherText);

}
