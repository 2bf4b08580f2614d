#include "browse/PreviewContent.h"

#include "browse/ArchiveTexts.h"
#include "browse/KXArchiveItem.h"
#include "browse/KXUnarchiveWrapper.h"

#include "files/KXUtilities.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QImageReader>
#include <QStringDecoder>

namespace vantoro {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(PreviewContent)
};

constexpr int kLongestEdge = 4096; // of a picture in memory, in pixels
constexpr int kVectorEdge = 1024; // a drawing without a size of its own pixels is made this large
constexpr qsizetype kTextShown = qsizetype{4} << 20; // bytes; a text view takes many times that
constexpr qsizetype kLongestLine = 4000; // characters; a text view lays out a line as a whole

QSize boundedSize(const QSize& size, bool isDrawing)
{
    const int edge = isDrawing ? kVectorEdge : kLongestEdge;
    if (!isDrawing && size.width() <= edge && size.height() <= edge)
        return size;
    return size.scaled(edge, edge, Qt::KeepAspectRatio);
}

void showImage(PreviewContent& content, QByteArray data)
{
    QBuffer buffer(&data);
    QImageReader reader(&buffer, QFileInfo(content.title).suffix().toLatin1());
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    const bool isDrawing = reader.format().startsWith("svg");
    if (size.isValid())
        reader.setScaledSize(boundedSize(size, isDrawing));
    content.image = reader.read();
    if (content.image.isNull()) {
        content.detail = Texts::tr("This picture cannot be shown: it is damaged, or too large to decode.");
        return;
    }
    content.kind = PreviewContent::Kind::Image;
    const QSize shown = size.isValid() ? size : content.image.size();
    if (reader.supportsAnimation() && reader.imageCount() > 1 && shown == boundedSize(shown, false))
        content.animation = data;
    if (!isDrawing)
        content.detail = Texts::tr("%1 × %2 pixels").arg(shown.width()).arg(shown.height()) + texts::separator();
    content.detail += KXUtilities::sizeFormatForNumber(data.size());
}

/// A text view cannot break lines of any length in good time.
QString withBrokenLines(const QString& text)
{
    QString broken;
    qsizetype lineStart = 0;
    qsizetype copied = 0;
    while (lineStart < text.size()) {
        qsizetype lineEnd = text.indexOf(QLatin1Char('\n'), lineStart);
        lineEnd = lineEnd < 0 ? text.size() : lineEnd;
        for (qsizetype at = lineStart + kLongestLine; at < lineEnd; at += kLongestLine) {
            broken += QStringView(text).mid(copied, at - copied);
            broken += QLatin1Char('\n');
            copied = at;
        }
        lineStart = lineEnd + 1;
    }
    if (copied == 0)
        return text;
    broken += QStringView(text).mid(copied);
    return broken;
}

void showText(PreviewContent& content, const QString& text, qsizetype bytes)
{
    content.kind = PreviewContent::Kind::Text;
    const QString size = KXUtilities::sizeFormatForNumber(bytes);
    const bool isWhole = text.size() <= kTextShown;
    content.text = withBrokenLines(isWhole ? text : text.left(kTextShown));
    content.detail = isWhole ? size : Texts::tr("The beginning of %1").arg(size);
}

}

std::optional<QString> textFromUtf8(const QByteArray& data)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
    QString text = decoder(data);
    if (decoder.hasError() || text.isEmpty())
        return std::nullopt;
    return text;
}

PreviewContent previewContent(const KXArchiveItem& item, const std::optional<QByteArray>& data,
                              const ReadProblem& problem)
{
    PreviewContent content{.title = item.fileName(), .itemPath = item.itemPath(), .isFolder = item.isFolder()};
    if (!data) {
        content.detail = problem.message;
        return content;
    }
    if (data->isEmpty()) {
        content.detail = Texts::tr("This file is empty.");
    } else if (KXUtilities::isImageForPath(content.itemPath)) {
        showImage(content, *data);
    } else if (QFileInfo(content.itemPath).suffix().toLower() == QLatin1String("pdf")) {
        content.kind = PreviewContent::Kind::Pdf;
        content.pdf = *data;
        content.detail = KXUtilities::sizeFormatForNumber(data->size());
    } else if (const auto text = item.isFolder() ? std::nullopt : textFromUtf8(*data)) {
        showText(content, *text, data->size());
    } else {
        content.detail = Texts::tr("There is no preview for this kind of file.") + texts::separator()
            + KXUtilities::sizeFormatForNumber(data->size());
    }
    return content;
}

PreviewContent folderPreview(const KXArchiveItem& item, const FolderTotals& totals)
{
    return {
        .title = item.fileName(), .itemPath = item.itemPath(), .isFolder = true, .detail = texts::folderTotals(totals)};
}

}
