#pragma once

#include <QString>
#include <QStringList>

namespace vantoro {

class WriterMonitor;

/// What the user has gathered, and the ways of writing it into archives, one per sort of kind. The main thread fills
/// it, and leaves it alone while startArchive() runs on another thread. No route tells how it went: failures are in
/// the log, and leave nothing on disk.
class PackRoutes {
public:
    const QStringList& filesArray() const { return m_filesArray; }
    void setFilesArray(const QStringList& paths) { m_filesArray = paths; }
    /// The destination folder; the whole path of the archive for as long as the generic route needs it.
    const QString& destArchivePath() const { return m_destArchivePath; }
    void setDestArchivePath(const QString& path) { m_destArchivePath = path; }
    /// The kind: "7z", "zip", or one for the generic route. Null until one was chosen.
    const QString& archiveExtension() const { return m_archiveExtension; }
    void setArchiveExtension(const QString& kind) { m_archiveExtension = kind; }
    const QString& password() const { return m_password; }
    void setPassword(const QString& password) { m_password = password; }
    /// Not owned; null: nobody watches. Sees the archives of one run as one piece of work.
    void setMonitor(WriterMonitor* monitor) { m_monitor = monitor; }

    /// Whether the kind can be encrypted: "7z" and "zip".
    static bool takesPassword(const QString& kind);
    bool takesPassword() const { return takesPassword(m_archiveExtension); }
    /// Appends each path that is not held yet, as text, and makes the parent of the first one the destination.
    void loadFilesPath(const QStringList& paths);
    /// Before the generic route: from the folder to the archive in it, named after the first path.
    void appendArchiveName();

    /// Takes the route of the kind; then opens the destination folder if the settings say so.
    void startArchive();
    void archiveTo7Z(const QStringList& paths, const QString& password, const QString& fileType,
                     const QString& destinationPath);
    /// One archive per folder, as they come, and then one for all other paths together.
    void archiveToZip();
    void archiveOthers();
    void archiveToTar() {} ///< does nothing, and nothing calls it

private:
    QStringList m_filesArray;
    QString m_destArchivePath;
    QString m_archiveExtension;
    QString m_password;
    WriterMonitor* m_monitor = nullptr;
};

}
