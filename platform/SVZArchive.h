#pragma once

#include "platform/SVZArchiveEntry.h"

#include <QString>
#include <QUrl>

#include <memory>
#include <vector>

namespace vantoro {

class WriterMonitor;

/// An archive of any kind that can be written; the file name's ending says which, unless setKind() has. Any thread.
class SVZArchive {
public:
    /// Null, and the reason in the log, when the folder is not there, or the archive is not there and may not be made.
    static std::unique_ptr<SVZArchive> archiveWithURL(const QUrl& url, bool createIfMissing, QString* error = nullptr);

    /// For a name that could be read in two ways: "notes.tar.gz" as a "gz" of "notes.tar".
    void setKind(const QString& kind) { m_kind = kind; }
    /// Not owned; null: nobody watches.
    void setMonitor(WriterMonitor* monitor) { m_monitor = monitor; }

    /// Replaces all that the archive holds by the entries; on failure the archive on disk stays as it was.
    bool updateEntries(const std::vector<SVZArchiveEntry>& entries, QString* error = nullptr);

private:
    explicit SVZArchive(QString path);

    QString m_path;
    QString m_kind;
    WriterMonitor* m_monitor = nullptr;
};

}
