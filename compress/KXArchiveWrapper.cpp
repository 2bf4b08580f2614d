#include "compress/KXArchiveWrapper.h"

#include "platform/LzmaSDKObjCWriter.h"
#include "platform/PathNames.h"

#include <QDebug>

namespace vantoro {

KXArchiveWrapper::KXArchiveWrapper(const QStringList& paths, const QString& password, const QString& type,
                                   const QString& folder)
    : m_fileType(type)
    , m_filePathArray(paths)
    , m_password(password)
    , m_destinationPath(folder)
{
}

std::unique_ptr<KXArchiveWrapper> KXArchiveWrapper::initWithPathArray(const QStringList& pathArray)
{
    return initWithPathArray(pathArray, QString(), QString(), QString());
}

std::unique_ptr<KXArchiveWrapper> KXArchiveWrapper::initWithPathArray(const QStringList& pathArray,
                                                                      const QString& password, const QString& type,
                                                                      const QString& destPath)
{
    return std::unique_ptr<KXArchiveWrapper>(new KXArchiveWrapper(pathArray, password, type, destPath));
}

void KXArchiveWrapper::setDestinationPath()
{
    if (!m_filePathArray.isEmpty())
        m_destFileName = lastPathComponent(deletingPathExtension(m_filePathArray.constFirst()));
    m_destinationPath
        = appendingPathComponent(m_destinationPath, QStringLiteral("%1.%2").arg(m_destFileName, m_fileType));
}

void KXArchiveWrapper::compress()
{
    if (m_fileType.compare(QLatin1String("7z"), Qt::CaseInsensitive) == 0)
        zCompress();
}

void KXArchiveWrapper::zCompress()
{
    qDebug().noquote() << "_destinationPath:" << m_destinationPath;
    const auto writer = LzmaSDKObjCWriter::initWithFileURL(QUrl::fromLocalFile(m_destinationPath));
    for (const QString& path : m_filePathArray)
        writer->addPath(path, lastPathComponent(path));
    writer->setDelegate(m_monitor);
    writer->setPasswordGetter([this] {
        qDebug().noquote() << "self.password:" << m_password;
        return m_password;
    });
    writer->setMethod(LzmaSDKObjCWriter::kLzma2);
    writer->setSolid(true);
    writer->setCompressionLevel(9);
    writer->setEncodeContent(true);
    writer->setEncodeHeader(true);
    writer->setCompressHeader(true);
    writer->setCompressHeaderFull(true);
    writer->setWriteModificationTime(false);
    writer->setWriteCreationTime(false);
    writer->setWriteAccessTime(false);
    writer->open();
    writer->write();
}

}
