#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace vantoro {

class WriterMonitor;

/// One 7z archive of some paths: made, given its output path, run once, dropped. Any thread.
class KXArchiveWrapper {
public:
    /// Without a kind: compress() does nothing.
    static std::unique_ptr<KXArchiveWrapper> initWithPathArray(const QStringList& pathArray);
    /// A null password: no encryption. `destPath` is the folder for the archive.
    static std::unique_ptr<KXArchiveWrapper> initWithPathArray(const QStringList& pathArray, const QString& password,
                                                               const QString& type, const QString& destPath);

    const QStringList& filePathArray() const { return m_filePathArray; }
    void setFilePathArray(const QStringList& paths) { m_filePathArray = paths; }
    const QString& destFileName() const { return m_destFileName; }
    const QString& password() const { return m_password; }
    void setPassword(const QString& password) { m_password = password; }
    /// First the folder, then, after setDestinationPath(), the archive.
    const QString& destinationPath() const { return m_destinationPath; }
    void setDestinationPath(const QString& path) { m_destinationPath = path; }
    /// Not owned; null: nobody watches.
    void setMonitor(WriterMonitor* monitor) { m_monitor = monitor; }

    /// Names the archive after the first path, less its extension, and appends that to the folder. Nothing keeps it
    /// from being the name of a file that is there.
    void setDestinationPath();
    /// Writes the archive when the kind is "7z" in any case of letters; otherwise nothing.
    void compress();
    void zCompress();

private:
    KXArchiveWrapper(const QStringList& paths, const QString& password, const QString& type, const QString& folder);

    QString m_fileType;
    QStringList m_filePathArray;
    QString m_destFileName;
    QString m_password;
    QString m_destinationPath;
    WriterMonitor* m_monitor = nullptr;
};

}
