#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vantoro {

enum class NormalForm : std::uint8_t { Composed, Decomposed }; ///< NFC, NFD

/// UTF-8 text in the given form; as it is when it is not UTF-8.
std::string normalized(std::string_view utf8, NormalForm form);

}
