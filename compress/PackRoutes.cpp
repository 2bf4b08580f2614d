#include "compress/PackRoutes.h"

#include "compress/KXArchiveWrapper.h"

#include "app/KXPrefsDefault.h"
#include "files/KXUtilities.h"
#include "platform/MainLoop.h"
#include "platform/PathNames.h"
#include "platform/SSZipArchive.h"
#include "platform/SVZArchive.h"
#include "platform/Workspace.h"
#include "platform/WriterMonitor.h"

#include <QCoreApplication>
#include <QFile>
#include <QSet>

#include <filesystem>

namespace vantoro {
namespace {

const QString kSevenZip = QStringLiteral("7z");
const QString kZip = QStringLiteral("zip");

QString nameWithoutExtension(const QString& path) { return deletingPathExtension(lastPathComponent(path)); }

/// A part of a longer piece of work.
class PartMonitor final : public WriterMonitor {
public:
    PartMonitor(WriterMonitor& whole, double start, double share) : m_whole(whole), m_start(start), m_share(share)
    {
        cancel = whole.cancel;
    }
    void progressed(double fraction, const QString& name) override
    {
        m_whole.progressed(m_start + m_share * fraction, name);
    }

private:
    WriterMonitor& m_whole;
    double m_start;
    double m_share;
};

/// One zip archive of several.
struct ZipTask {
    QString path;
    QString folder; // null: files
    QStringList files;
    double weight = 1; // about its bytes

    bool write(const QString& password, WriterMonitor* monitor) const
    {
        return folder.isNull() ? SSZipArchive::createZipFileAtPath(path, files, password, monitor)
                               : SSZipArchive::createZipFileAtPath(path, folder, true, password, monitor);
    }
};

/// A folder and all below it.
class EntryCollector {
public:
    void addTree(const QByteArray& folder)
    {
        namespace fs = std::filesystem;
        const std::string root = folder.toStdString();
        const std::string name = fs::path(root).filename().string();
        add(root, name, true);
        std::error_code error;
        const auto options = fs::directory_options::skip_permission_denied;
        bool isDirectory = false; // what vanished meanwhile keeps the answer of the one before it
        for (fs::recursive_directory_iterator entry(root, options, error); !error && entry != fs::end(entry);
             entry.increment(error)) {
            std::error_code gone;
            const auto status = entry->symlink_status(gone);
            if (!gone)
                isDirectory = status.type() == fs::file_type::directory;
            add(entry->path().string(), name + entry->path().string().substr(root.size()), isDirectory);
        }
        if (error)
            qWarning("WAR: %s was not read to its end: %s", root.c_str(), error.message().c_str());
    }
    void add(const std::string& path, const std::string& name, bool isDirectory)
    {
        const QByteArray nameBytes = QByteArray::fromStdString(name);
        const QByteArray pathBytes = QByteArray::fromStdString(path);
        m_entries.push_back(isDirectory ? SVZArchiveEntry::archiveEntryWithDirectoryName(nameBytes, pathBytes)
                                        : SVZArchiveEntry::archiveEntryWithFileName(nameBytes, pathBytes));
    }
    const std::vector<SVZArchiveEntry>& entries() const { return m_entries; }

private:
    std::vector<SVZArchiveEntry> m_entries;
};

}

bool PackRoutes::takesPassword(const QString& kind) { return kind == kSevenZip || kind == kZip; }

void PackRoutes::loadFilesPath(const QStringList& paths)
{
    if (paths.isEmpty())
        return;
    QSet<QString> held(m_filesArray.cbegin(), m_filesArray.cend());
    for (const QString& path : paths) {
        if (held.contains(path))
            continue;
        held.insert(path);
        m_filesArray += path;
    }
    m_destArchivePath = deletingLastPathComponent(paths.constFirst());
}

void PackRoutes::appendArchiveName()
{
    const QString name = nameWithoutExtension(m_filesArray.value(0));
    m_destArchivePath
        = appendingPathComponent(m_destArchivePath, QStringLiteral("%1.%2").arg(name, m_archiveExtension));
}

void PackRoutes::startArchive()
{
    if (m_archiveExtension == kSevenZip)
        archiveTo7Z(m_filesArray, m_password.isEmpty() ? QString() : m_password, kSevenZip, m_destArchivePath);
    else if (m_archiveExtension == kZip)
        archiveToZip();
    else
        archiveOthers();
    const bool wasStopped = m_monitor && m_monitor->cancel.isCancelled();
    if (!KXPrefsDefault::openFolder() || wasStopped)
        return;
    performOnMainThread(qApp, [folder = m_destArchivePath] { Workspace::shared().openFile(folder); });
}

void PackRoutes::archiveTo7Z(const QStringList& paths, const QString& password, const QString& fileType,
                             const QString& destinationPath)
{
    const auto wrapper = KXArchiveWrapper::initWithPathArray(paths, password, fileType, destinationPath);
    wrapper->setMonitor(m_monitor);
    wrapper->setDestinationPath();
    wrapper->compress();
}

void PackRoutes::archiveToZip()
{
    const QString password = m_password.isEmpty() ? QString() : m_password;
    const auto archiveFor = [this](const QString& path) {
        return appendingPathComponent(m_destArchivePath, QStringLiteral("%1.zip").arg(nameWithoutExtension(path)));
    };
    std::vector<ZipTask> tasks;
    ZipTask files;
    for (const QString& path : m_filesArray) {
        if (KXUtilities::isFolder(path)) {
            tasks.push_back({archiveFor(path), path, {}, 1.0 + double(KXUtilities::folderSizeForPath(path))});
            continue;
        }
        files.files += path;
        files.weight += double(KXUtilities::fileSizeForPath(path));
    }
    if (!files.files.isEmpty()) {
        files.path = archiveFor(files.files.constFirst());
        tasks.push_back(files);
    }
    double total = 0;
    for (const ZipTask& task : tasks)
        total += task.weight;
    double done = 0;
    for (const ZipTask& task : tasks) {
        if (!m_monitor) {
            task.write(password, nullptr);
            continue;
        }
        PartMonitor part(*m_monitor, done / total, task.weight / total);
        if (part.cancel.isCancelled())
            return;
        task.write(password, &part);
        done += task.weight;
    }
}

void PackRoutes::archiveOthers()
{
    EntryCollector collector;
    for (const QString& path : m_filesArray) {
        QByteArray bytes = QFile::encodeName(path);
        while (bytes.size() > 1 && bytes.endsWith('/'))
            bytes.chop(1);
        if (KXUtilities::isFolder(path))
            collector.addTree(bytes);
        else
            collector.add(bytes.toStdString(), lastPathComponent(path).toUtf8().toStdString(), false);
    }
    const auto archive = SVZArchive::archiveWithURL(QUrl::fromLocalFile(m_destArchivePath), true);
    if (archive) {
        archive->setKind(m_archiveExtension);
        archive->setMonitor(m_monitor);
        archive->updateEntries(collector.entries());
    }
    m_destArchivePath = deletingLastPathComponent(m_destArchivePath);
}

}
