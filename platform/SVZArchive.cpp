#include "platform/SVZArchive.h"

#include "platform/ArchiveWriting.h"
#include "platform/PathNames.h"

#include <QFileInfo>

#include <sys/stat.h>

namespace vantoro {
namespace {

CreateInput inputFor(const SVZArchiveEntry& entry)
{
    CreateInput input{entry.path().toStdString(), entry.name().toStdString(), false};
    if (!entry.isDirectory())
        return input;
    struct stat status = {};
    const bool isThere = !input.path.empty() && ::stat(input.path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    // The dot leads through a link to the folder behind it. A folder that is gone by now still gets its entry.
    input.path = isThere ? input.path + "/." : std::string();
    return input;
}

}

SVZArchive::SVZArchive(QString path)
    : m_path(std::move(path))
    , m_kind(QString::fromStdString(kindOfName(lastPathComponent(m_path).toStdString())))
{
}

std::unique_ptr<SVZArchive> SVZArchive::archiveWithURL(const QUrl& url, bool createIfMissing, QString* error)
{
    const QString path = url.toLocalFile();
    QString why;
    if (path.isEmpty() || !QFileInfo(deletingLastPathComponent(path)).isDir())
        why = QStringLiteral("the folder does not exist");
    else if (QFileInfo(path).isDir())
        why = QStringLiteral("a folder of that name is in the way");
    else if (!createIfMissing && !QFileInfo::exists(path))
        why = QStringLiteral("the archive does not exist");
    if (error)
        *error = why;
    if (why.isEmpty())
        return std::unique_ptr<SVZArchive>(new SVZArchive(path));
    qWarning("ERR: %s cannot be opened: %s", qUtf8Printable(path), qUtf8Printable(why));
    return nullptr;
}

bool SVZArchive::updateEntries(const std::vector<SVZArchiveEntry>& entries, QString* error)
{
    ArchiveWriting writing;
    writing.path = m_path;
    writing.options.kind = m_kind.toStdString();
    writing.monitor = m_monitor;
    writing.inputs.reserve(entries.size());
    for (const auto& entry : entries)
        writing.inputs.push_back(inputFor(entry));
    return writeArchive(std::move(writing), error);
}

}
