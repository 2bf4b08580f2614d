#pragma once

#include <string>
#include <string_view>

namespace vantoro {

/// Whether withoutAccents() leaves the name as it is.
bool isPlain(std::string_view name);

/// Makes names comparable by people's eyes: without accents and letter case. ASCII comes back as it is, for order and
/// search below fold its case on the way. UTF-8.
std::string withoutAccents(std::string_view name);

/// Below, at or above 0 as `a` comes before, with or after `b`: runs of digits by their value, letters without their
/// case, and what is still equal byte by byte. Both without accents.
int compareNaturally(std::string_view a, std::string_view b);

/// Whether `name` holds `part`, ASCII letter case ignored. Both without accents.
bool holdsText(std::string_view name, std::string_view part);

}
