#pragma once

// ICU and uchardet under their own names, loaded when one of them is called: most archives hold names in ASCII or UTF-8
// alone, which need neither. Within the namespace these names hide the libraries'.

#include "engine/io/late_library.h"

#include <uchardet/uchardet.h>
#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/unorm2.h>
#include <unicode/uscript.h>
#include <unicode/ustring.h>

namespace vantoro {

inline constinit LateLibrary icuLibrary{VANTORO_ICU_SONAME};
inline constinit LateLibrary uchardetLibrary{VANTORO_UCHARDET_SONAME};

// ICU's names are macros that add its version: what they stand for is what the library calls them.
#define VANTORO_TEXT_OF(name) #name
// NOLINTBEGIN(bugprone-macro-parentheses): a name that is declared takes none
#define VANTORO_LATE(library, name)                                                                                    \
    inline constinit const LateFunction<decltype(::name)> name { library, VANTORO_TEXT_OF(name) }
// NOLINTEND(bugprone-macro-parentheses)
VANTORO_LATE(icuLibrary, UCNV_FROM_U_CALLBACK_STOP);
VANTORO_LATE(icuLibrary, UCNV_TO_U_CALLBACK_STOP);
VANTORO_LATE(icuLibrary, u_charType);
VANTORO_LATE(icuLibrary, u_isalpha);
VANTORO_LATE(icuLibrary, u_isdefined);
VANTORO_LATE(icuLibrary, u_islower);
VANTORO_LATE(icuLibrary, u_isupper);
VANTORO_LATE(icuLibrary, u_strFromUTF8);
VANTORO_LATE(icuLibrary, u_strToUTF8);
VANTORO_LATE(icuLibrary, u_tolower);
VANTORO_LATE(icuLibrary, ucnv_close);
VANTORO_LATE(icuLibrary, ucnv_fromUChars);
VANTORO_LATE(icuLibrary, ucnv_getInvalidChars);
VANTORO_LATE(icuLibrary, ucnv_open);
VANTORO_LATE(icuLibrary, ucnv_reset);
VANTORO_LATE(icuLibrary, ucnv_setFromUCallBack);
VANTORO_LATE(icuLibrary, ucnv_setToUCallBack);
VANTORO_LATE(icuLibrary, ucnv_toUnicode);
VANTORO_LATE(icuLibrary, unorm2_getNFCInstance);
VANTORO_LATE(icuLibrary, unorm2_getNFDInstance);
VANTORO_LATE(icuLibrary, unorm2_normalize);
VANTORO_LATE(icuLibrary, uscript_getScript);
VANTORO_LATE(uchardetLibrary, uchardet_data_end);
VANTORO_LATE(uchardetLibrary, uchardet_delete);
VANTORO_LATE(uchardetLibrary, uchardet_get_charset);
VANTORO_LATE(uchardetLibrary, uchardet_handle_data);
VANTORO_LATE(uchardetLibrary, uchardet_new);
#undef VANTORO_LATE
#undef VANTORO_TEXT_OF

}
