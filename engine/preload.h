#pragma once

namespace vantoro {

/// Loads and initialises every library that readers would load at their first need, for a process that is about to
/// lose its file system.
void preloadLibraries();

}
