#pragma once

#include <QByteArray>

#include <utility>

namespace vantoro {

/// An entry to be written. Names and paths are the file system's bytes, so that a name in an unknown encoding goes into
/// the archive as it stands.
class SVZArchiveEntry {
public:
    /// A folder; what it holds are entries of their own. Mode and time are those of the folder at `attributesOfPath`
    /// where there is one.
    static SVZArchiveEntry archiveEntryWithDirectoryName(const QByteArray& directoryName,
                                                         const QByteArray& attributesOfPath = {});
    /// A file, or a symbolic link as such, read when the archive is written.
    static SVZArchiveEntry archiveEntryWithFileName(const QByteArray& fileName, const QByteArray& contentsOfPath);

    bool isDirectory() const { return m_isDirectory; }
    const QByteArray& name() const { return m_name; }
    const QByteArray& path() const { return m_path; }

private:
    SVZArchiveEntry(QByteArray name, QByteArray path, bool isDirectory)
        : m_name(std::move(name))
        , m_path(std::move(path))
        , m_isDirectory(isDirectory)
    {
    }

    QByteArray m_name;
    QByteArray m_path;
    bool m_isDirectory;
};

}
