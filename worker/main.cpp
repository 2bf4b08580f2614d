// The worker: opens, lists and decodes one archive for a parent process, with no means to do anything else.
#include "engine/cage/confinement.h"
#include "engine/cage/worker.h"
#include "engine/cage/worker_process.h"
#include "engine/io/batch_thread.h"
#include "engine/io/late_library.h"
#include "engine/preload.h"
#include "engine/registry.h"

#include <ctime>

#include <malloc.h>
#include <sys/prctl.h>

namespace {

void preload(vantoro::cage::Libraries libraries)
{
    switch (libraries) {
    case vantoro::cage::Libraries::Least:
        return vantoro::preloadRar();
    case vantoro::cage::Libraries::Few:
        return vantoro::preloadOwnFormats();
    case vantoro::cage::Libraries::SevenZip:
        return vantoro::preloadSevenZipFormats();
    case vantoro::cage::Libraries::All:
        return vantoro::preloadLibraries();
    }
}

/// An image that starts like a compressed file is not left to the reader of the next best format because the library
/// for it was not loaded: whoever started us starts a worker that has it.
vantoro::Result<vantoro::ArchivePtr> openForCertain(const vantoro::SourcePtr& source,
                                                    const vantoro::OpenContext& context)
{
    auto archive = vantoro::openSource(source, context);
    if (archive && vantoro::wasLibraryMissed())
        return vantoro::Error{vantoro::ErrorCode::UnsupportedFeature, "the worker lacks a library"};
    return archive;
}

}

int main(int argc, char** argv)
{
    ::prctl(PR_SET_NAME, "vantoro-worker"); // it may have been started by a descriptor
    // One arena a thread would use up the address space that the limits leave.
    ::mallopt(M_ARENA_MAX, 2);
    // Where they would get to anyway: until then each larger block is fetched from the system and given back.
    ::mallopt(M_MMAP_THRESHOLD, 32 << 20);
    ::mallopt(M_TRIM_THRESHOLD, 64 << 20);
    vantoro::becomeBatchThread();
    ::tzset();
    const auto needs = vantoro::cage::workerNeeds(argc, argv);
    preload(needs.libraries);
    vantoro::Limits limits;
    limits.dictionary = needs.dictionary;
    const bool hasAll = needs.libraries == vantoro::cage::Libraries::All;
    const auto openArchive = hasAll ? &vantoro::openSource : &openForCertain;
    const auto steps = vantoro::cage::confineThisProcess(vantoro::cage::kWorkerMemory, limits.dictionary);
    return vantoro::cage::serve(openArchive, steps, limits);
}
