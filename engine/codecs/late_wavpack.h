#pragma once

// libwavpack under its own names, loaded when an archive with an entry of that method is opened: hardly any has one.
// Within the namespace these names hide the library's.

#include "engine/io/late_library.h"

#include <wavpack/wavpack.h>

namespace vantoro {

inline constinit LateLibrary wavpackLibrary{VANTORO_WAVPACK_SONAME};

// NOLINTBEGIN(bugprone-macro-parentheses): a name that is declared takes none
#define VANTORO_LATE(name)                                                                                             \
    inline constinit const LateFunction<decltype(::name)> name { wavpackLibrary, #name }
// NOLINTEND(bugprone-macro-parentheses)
VANTORO_LATE(WavpackCloseFile);
VANTORO_LATE(WavpackFreeWrapper);
VANTORO_LATE(WavpackGetBytesPerSample);
VANTORO_LATE(WavpackGetFileFormat);
VANTORO_LATE(WavpackGetMode);
VANTORO_LATE(WavpackGetNumChannels);
VANTORO_LATE(WavpackGetNumErrors);
VANTORO_LATE(WavpackGetNumSamples64);
VANTORO_LATE(WavpackGetQualifyMode);
VANTORO_LATE(WavpackGetSampleRate);
VANTORO_LATE(WavpackGetWrapperBytes);
VANTORO_LATE(WavpackGetWrapperData);
VANTORO_LATE(WavpackOpenFileInputEx64);
VANTORO_LATE(WavpackUnpackSamples);
#undef VANTORO_LATE

}
