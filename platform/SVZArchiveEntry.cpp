#include "platform/SVZArchiveEntry.h"

namespace vantoro {

SVZArchiveEntry SVZArchiveEntry::archiveEntryWithDirectoryName(const QByteArray& directoryName,
                                                               const QByteArray& attributesOfPath)
{
    return {directoryName, attributesOfPath, true};
}

SVZArchiveEntry SVZArchiveEntry::archiveEntryWithFileName(const QByteArray& fileName, const QByteArray& contentsOfPath)
{
    return {fileName, contentsOfPath, false};
}

}
