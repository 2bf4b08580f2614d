#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include <optional>

namespace vantoro {

class KXArchiveItem;
struct FolderTotals;
struct ReadProblem;

/// One entry made ready to be shown.
struct PreviewContent {
    enum class Kind { Image, Pdf, Text, Icon };
    Kind kind = Kind::Icon;
    QString title; ///< the entry's bare name
    QString itemPath; ///< its icon is that of this path
    bool isFolder = false;
    QImage image;
    QByteArray animation; ///< the whole file of a picture that moves; empty for one that does not
    QByteArray pdf;
    QString text;
    QString detail; ///< a line below: size, dimensions, or why there is no more to see
};

/// Decides by name and type what an entry is shown as, and decodes it. Any thread. What an entry takes in memory is
/// bounded by the reader that gave the data; a picture is decoded no larger than a screen needs.
PreviewContent previewContent(const KXArchiveItem& item, const std::optional<QByteArray>& data,
                              const ReadProblem& problem);
/// A folder is never opened, only described.
PreviewContent folderPreview(const KXArchiveItem& item, const FolderTotals& totals);

/// Nothing for an empty text and for data that is no UTF-8 throughout.
std::optional<QString> textFromUtf8(const QByteArray& data);

}
