#include "platform/LzmaSDKObjCWriter.h"

#include "platform/ArchiveWriting.h"
#include "platform/PathNames.h"

#include <QFile>
#include <QFileInfo>

namespace vantoro {

std::unique_ptr<LzmaSDKObjCWriter> LzmaSDKObjCWriter::initWithFileURL(const QUrl& fileURL)
{
    return std::unique_ptr<LzmaSDKObjCWriter>(new LzmaSDKObjCWriter(fileURL.toLocalFile()));
}

bool LzmaSDKObjCWriter::addPath(const QString& path, const QString& forPath)
{
    if (path.isEmpty() || forPath.isEmpty())
        return false;
    m_paths.emplace_back(path, forPath);
    return true;
}

QString LzmaSDKObjCWriter::hindrance() const
{
    if (m_path.isEmpty() || !QFileInfo(deletingLastPathComponent(m_path)).isDir())
        return QStringLiteral("the folder does not exist");
    if (m_paths.empty())
        return QStringLiteral("nothing was added");
    if (m_method != kLzma2)
        return QStringLiteral("there is no such method");
    if (m_compressionLevel < 0 || m_compressionLevel > 9)
        return QStringLiteral("there is no such compression level");
    if (m_encodeHeader && !m_encodeContent)
        return QStringLiteral("names cannot be encrypted without the contents");
    if (!m_compressHeader || !m_compressHeaderFull)
        return QStringLiteral("the header is always packed");
    if (m_writeCreationTime || m_writeAccessTime)
        return QStringLiteral("times of creation and access cannot be written");
    return {};
}

bool LzmaSDKObjCWriter::open(QString* error)
{
    const QString why = hindrance();
    m_isOpen = why.isEmpty();
    if (!m_isOpen)
        qWarning("ERR: %s cannot be written: %s", qUtf8Printable(m_path), qUtf8Printable(why));
    if (error)
        *error = why;
    return m_isOpen;
}

bool LzmaSDKObjCWriter::write(QString* error)
{
    if (!m_isOpen)
        return false;
    ArchiveWriting writing;
    writing.path = m_path;
    writing.monitor = m_delegate;
    for (const auto& [source, name] : m_paths)
        writing.inputs.push_back({QFile::encodeName(source).toStdString(), QFile::encodeName(name).toStdString()});
    if (m_encodeContent && m_passwordGetter)
        writing.password = m_passwordGetter();
    CreateOptions& options = writing.options;
    options.kind = "7z";
    options.level = static_cast<unsigned>(m_compressionLevel);
    options.solid = m_solid;
    options.encryptNames = m_encodeHeader;
    options.storeTimes = m_writeModificationTime;
    return writeArchive(std::move(writing), error);
}

}
