#include "engine/preload.h"

#include "engine/backends/library_locale.h"
#include "engine/backends/sevenzip_library.h"
#include "engine/registry.h"
#include "engine/text/converter.h"

namespace vantoro {

void preloadLibraries()
{
    // Without 7-Zip's library its formats fail one by one, with an error that says so.
    (void)preloadSevenZip();
    (void)containerFormats();
    (void)streamFormats();
}

}
