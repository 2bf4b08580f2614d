#include "engine/text/charset.h"

#include <algorithm>

namespace vantoro {

bool isAscii(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}
