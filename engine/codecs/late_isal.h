#pragma once

// What is used of ISA-L under its own names, loaded when one of them is called: programs that leave decoding to a
// worker never do. Within the namespace these names hide the library's.

#include "engine/io/late_library.h"

#include <isa-l/crc.h>
#include <isa-l/crc64.h>
#include <isa-l/igzip_lib.h>

namespace vantoro {

inline constinit LateLibrary isalLibrary{VANTORO_ISAL_SONAME};

// NOLINTBEGIN(bugprone-macro-parentheses): a name that is declared takes none
#define VANTORO_LATE(name)                                                                                             \
    inline constinit const LateFunction<decltype(::name)> name { isalLibrary, #name }
// NOLINTEND(bugprone-macro-parentheses)
VANTORO_LATE(crc32_ieee);
VANTORO_LATE(crc64_ecma_refl);
VANTORO_LATE(isal_inflate);
VANTORO_LATE(isal_inflate_init);
#undef VANTORO_LATE

}
