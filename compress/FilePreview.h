#pragma once

#include <QImage>
#include <QString>

namespace vantoro {

/// A look at a file or folder on disk.
struct FilePreview {
    enum class Kind { Nothing, Image, Text, Facts };
    Kind kind = Kind::Nothing;
    QString name;
    QString facts; ///< kind of file, size, date: one below the other
    QImage image; ///< no larger than the screen needs
    QString text; ///< the beginning of it

    /// Reads little enough to be done while the user waits. Nothing for an empty path and for what is not there.
    static FilePreview of(const QString& path);
};

}
