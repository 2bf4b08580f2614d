#pragma once

#include <string>
#include <string_view>

namespace vantoro {

/// Control characters, line breaks and direction overrides as escapes: for terminals, logs and widgets.
std::string printable(std::string_view utf8);

}
