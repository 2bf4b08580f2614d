#include "files/KXFileWrapper.h"

#include <QFile>

#include <exiv2/exiv2.hpp>

namespace vantoro {
namespace {

constexpr qsizetype kLongestValue = 4096; // thumbnails and makers' blocks are no text to show

template <class Datum> void keep(QVariantMap& tags, const QString& group, const Datum& datum)
{
    const auto text = QString::fromStdString(datum.toString());
    if (text.size() > kLongestValue)
        return;
    QVariantMap values = tags.value(group).toMap();
    values.insert(QString::fromStdString(datum.tagName()), text);
    tags.insert(group, values);
}

/// Where pictures' tags are looked for; empty for those that are of no use here.
QString groupOf(const std::string& name)
{
    if (name == "Image")
        return QStringLiteral("{TIFF}");
    if (name == "Photo")
        return QStringLiteral("{Exif}");
    return name == "GPSInfo" ? QStringLiteral("{GPS}") : QString();
}

QVariantMap readTags(const QString& path)
{
    const auto image = Exiv2::ImageFactory::open(QFile::encodeName(path).toStdString());
    image->readMetadata();
    QVariantMap tags;
    if (image->pixelWidth() > 0 && image->pixelHeight() > 0) {
        tags.insert(QStringLiteral("PixelWidth"), static_cast<int>(image->pixelWidth()));
        tags.insert(QStringLiteral("PixelHeight"), static_cast<int>(image->pixelHeight()));
    }
    for (const auto& datum : image->exifData()) {
        if (const QString group = groupOf(datum.groupName()); !group.isEmpty())
            keep(tags, group, datum);
    }
    for (const auto& datum : image->iptcData())
        keep(tags, QStringLiteral("{IPTC}"), datum);
    return tags;
}

std::optional<QVariantMap> group(const QString& path, const QString& name)
{
    const auto tags = KXFileWrapper::metadataOfImageAtPath(path);
    return tags && tags->contains(name) ? std::optional(tags->value(name).toMap()) : std::nullopt;
}

}

std::optional<QVariantMap> KXFileWrapper::metadataOfImageAtPath(const QString& path)
{
    if (!isFileItemAtPath(path))
        return std::nullopt;
    try {
        return readTags(absolutePath(path));
    } catch (const std::exception& problem) { // of the library: no picture, or a damaged one
        qInfo("INFO: no picture: %s", problem.what());
        return std::nullopt;
    }
}

std::optional<QVariantMap> KXFileWrapper::exifDataOfImageAtPath(const QString& path)
{
    return group(path, QStringLiteral("{Exif}"));
}

std::optional<QVariantMap> KXFileWrapper::tiffDataOfImageAtPath(const QString& path)
{
    return group(path, QStringLiteral("{TIFF}"));
}

}
