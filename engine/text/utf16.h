#pragma once

#include "engine/io/bytes.h"

#include <string>

namespace vantoro {

/// Appends a Unicode scalar value; a surrogate or a number beyond the last one becomes U+FFFD.
void appendUtf8(std::string& text, char32_t letter);
/// UTF-16 in either byte order. A surrogate without its partner becomes U+FFFD, an odd last byte is dropped.
std::string utf8FromUtf16(ConstBytes bytes, std::endian order);

}
