#pragma once

#include <QString>
#include <QUrl>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace vantoro {

class WriterMonitor;

/// Writes one 7z archive: make it, add paths, set the options, open, write. Any thread, one at a time.
class LzmaSDKObjCWriter {
public:
    static constexpr int kLzma2 = 1; ///< the one method

    static std::unique_ptr<LzmaSDKObjCWriter> initWithFileURL(const QUrl& fileURL);

    /// A file, or a folder with everything below it, under the name `forPath` in the archive.
    bool addPath(const QString& path, const QString& forPath);

    /// Not owned; null: nobody watches.
    void setDelegate(WriterMonitor* delegate) { m_delegate = delegate; }
    /// Asked once, in write(), when content or header are to be encrypted. A null or empty password: no encryption.
    void setPasswordGetter(std::function<QString()> getter) { m_passwordGetter = std::move(getter); }
    void setMethod(int method) { m_method = method; }
    void setSolid(bool solid) { m_solid = solid; }
    void setCompressionLevel(int level) { m_compressionLevel = level; } ///< 0 to 9
    void setEncodeContent(bool encode) { m_encodeContent = encode; }
    void setEncodeHeader(bool encode) { m_encodeHeader = encode; } ///< only together with the content
    void setCompressHeader(bool compress) { m_compressHeader = compress; }
    void setCompressHeaderFull(bool compress) { m_compressHeaderFull = compress; }
    void setWriteModificationTime(bool write) { m_writeModificationTime = write; }
    void setWriteCreationTime(bool write) { m_writeCreationTime = write; }
    void setWriteAccessTime(bool write) { m_writeAccessTime = write; }

    /// Whether the archive's folder is there and the options can be had: the header is always packed, and of the times
    /// only that of modification can be written.
    bool open(QString* error = nullptr);
    /// False, and nothing done, unless open() succeeded.
    bool write(QString* error = nullptr);

private:
    explicit LzmaSDKObjCWriter(QString path) : m_path(std::move(path)) {}
    QString hindrance() const;

    QString m_path;
    std::vector<std::pair<QString, QString>> m_paths; // source, name
    WriterMonitor* m_delegate = nullptr;
    std::function<QString()> m_passwordGetter;
    int m_method = kLzma2;
    int m_compressionLevel = 7;
    bool m_solid = true;
    bool m_encodeContent = false;
    bool m_encodeHeader = false;
    bool m_compressHeader = true;
    bool m_compressHeaderFull = true;
    bool m_writeModificationTime = true;
    bool m_writeCreationTime = false;
    bool m_writeAccessTime = false;
    bool m_isOpen = false;
};

}
