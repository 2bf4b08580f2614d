#pragma once

namespace vantoro {

/// Loads and initialises every library that readers would load at their first need, for a process that is about to
/// lose its file system.
void preloadLibraries();
/// What is needed for rar, short of ciphers.
void preloadRar();
/// The same for all formats that our own code reads.
void preloadOwnFormats();
/// The same and 7-Zip's plug-in library.
void preloadSevenZipFormats();

}
