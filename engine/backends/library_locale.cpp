#include "engine/backends/library_locale.h"

#include <clocale>
#include <cstring>
#include <langinfo.h>
#include <mutex>

namespace vantoro {

void useUtf8ForLibraries()
{
    static std::once_flag once;
    std::call_once(once, [] {
        if (std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0)
            return;
        std::setlocale(LC_CTYPE, "C.UTF-8"); // there since glibc 2.35; elsewhere names that need it come out empty
    });
}

}
