#include "engine/extract.h"

#include "engine/extract/extraction.h"

#include <array>

#include <sys/stat.h>
#include <sys/xattr.h>

namespace vantoro {

namespace {

ArchiveFacts factsOf(OpenedArchive& archive)
{
    ArchiveFacts facts;
    facts.stem = archive.stem();
    facts.packedSize = archive.packedSize();
    struct stat status {};
    if (::stat(archive.path().c_str(), &status) == 0)
        facts.date = status.st_mtim;
    std::array<char, 64 << 10> url;
    const auto length = ::getxattr(archive.path().c_str(), "user.xdg.origin.url", url.data(), url.size());
    if (length > 0)
        facts.originUrl.assign(url.data(), static_cast<std::size_t>(length));
    return facts;
}

}

Result<ExtractReport> extractArchive(OpenedArchive& archive, const ExtractOptions& options, ExtractDelegate& delegate,
                                     const CancelToken& cancel)
{
    return runExtraction(archive.archive(), factsOf(archive), options, Ending::InDestination, delegate, cancel);
}

Result<ExtractReport> extractIntoHiddenFolder(OpenedArchive& archive, const ExtractOptions& options,
                                              ExtractDelegate& delegate, const CancelToken& cancel)
{
    return runExtraction(archive.archive(), factsOf(archive), options, Ending::InHiddenFolder, delegate, cancel);
}

}
