#pragma once

namespace vantoro {

/// The libraries behind this room look at LC_CTYPE: in the "C" locale libarchive gives a null name for an entry whose
/// name is declared UTF-8, and 7-Zip's plug-in, which looks once while it is loaded, widens bytes instead of decoding
/// them. Makes the process's LC_CTYPE UTF-8 if it is not. Call before the first use of such a library; later calls
/// cost nothing. Names are never decoded by the libraries on our behalf, so which UTF-8 locale it is does not matter.
void useUtf8ForLibraries();

}
