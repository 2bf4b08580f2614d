#pragma once

namespace vantoro {

enum class ColorScheme { NoPreference, Dark, Light };
/// What the desktop's settings portal says now; NoPreference without one. Waits half a second at most.
ColorScheme desktopColorScheme();

}
