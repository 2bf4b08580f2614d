#include "engine/preload.h"

#include "engine/backends/library_locale.h"
#include "engine/backends/libarchive_rows.h"
#include "engine/backends/sevenzip_library.h"
#include "engine/codecs/late_isal.h"
#include "engine/codecs/wavpack.h"
#include "engine/crypto/late_openssl.h"
#include "engine/registry.h"
#include "engine/text/late_icu.h"

namespace vantoro {

void preloadLibraries()
{
    preloadSevenZipFormats();
    preloadLibarchive();
    (void)opensslLibrary.load();
    (void)preloadWavPack();
    (void)icuLibrary.load(); // normal forms of passwords
}

void preloadSevenZipFormats()
{
    // Without 7-Zip's library its formats fail one by one, with an error that says so.
    (void)preloadSevenZip();
    preloadOwnFormats();
}

void preloadOwnFormats()
{
    (void)isalLibrary.load();
    preloadRar();
}

void preloadRar()
{
    (void)containerFormats();
    (void)streamFormats();
}

}
