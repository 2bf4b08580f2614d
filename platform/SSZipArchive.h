#pragma once

#include <QString>
#include <QStringList>

namespace vantoro {

class WriterMonitor;

/// Writes zip archives. Each operation writes a whole archive, or nothing, and says whether it did. Any thread.
/// A null or empty password: no encryption.
class SSZipArchive {
public:
    /// Everything below the folder; with `keepParentDirectory` beneath the folder's own name.
    static bool createZipFileAtPath(const QString& path, const QString& contentsOfDirectory, bool keepParentDirectory,
                                    const QString& password, WriterMonitor* monitor = nullptr);
    /// The files, each under its own name.
    static bool createZipFileAtPath(const QString& path, const QStringList& filesAtPaths, const QString& password,
                                    WriterMonitor* monitor = nullptr);
};

}
