#include "compress/FilePreview.h"

#include "files/KXUtilities.h"
#include "platform/PathNames.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QLocale>
#include <QMimeDatabase>
#include <QStringDecoder>

namespace vantoro {
namespace {

constexpr qint64 kMostText = 64 << 10; // bytes
constexpr int kMostEdge = 1600; // pixels

QString translated(const char* text) { return QCoreApplication::translate("FilePreview", text); }

QString factsOf(const QFileInfo& file, const QMimeType& type)
{
    QStringList facts{type.comment()};
    if (file.isDir()) {
        const auto names = KXUtilities::contentsOfFolder(file.filePath());
        facts += names ? QCoreApplication::translate("FilePreview", "%n item(s)", nullptr, int(names->size()))
                       : translated(QT_TRANSLATE_NOOP("FilePreview", "Cannot be read"));
    } else if (!file.isReadable()) {
        facts += translated(QT_TRANSLATE_NOOP("FilePreview", "Cannot be read"));
    } else {
        facts += KXUtilities::sizeFormatForNumber(file.size());
    }
    facts += QLocale().toString(file.lastModified(), QLocale::ShortFormat);
    return facts.join(QLatin1Char('\n'));
}

QImage scaledImage(const QString& path)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.width() > kMostEdge || size.height() > kMostEdge)
        reader.setScaledSize(size.scaled(kMostEdge, kMostEdge, Qt::KeepAspectRatio));
    return reader.read();
}

/// Null when the beginning of the file is no UTF-8 text.
QString textOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.read(kMostText);
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder.decode(bytes);
    if (decoder.hasError() || bytes.contains('\0'))
        return {};
    if (!file.atEnd())
        text += QStringLiteral("\n…");
    return text;
}

}

FilePreview FilePreview::of(const QString& path)
{
    const QFileInfo file(path);
    if (path.isEmpty() || !(file.exists() || file.isSymLink()))
        return {};
    const QMimeType type = QMimeDatabase().mimeTypeForFile(file);
    FilePreview preview;
    preview.kind = Kind::Facts;
    preview.name = lastPathComponent(path);
    preview.facts = factsOf(file, type);
    if (!file.isFile())
        return preview; // opening a pipe would wait for its other end
    if (KXUtilities::isImageForPath(path))
        preview.image = scaledImage(path);
    else if (type.inherits(QStringLiteral("text/plain")))
        preview.text = textOf(path);
    if (!preview.image.isNull())
        preview.kind = Kind::Image;
    else if (!preview.text.isEmpty())
        preview.kind = Kind::Text;
    return preview;
}

}
