#include "platform/XADPlatform.h"

#include "engine/extract.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace vantoro {
namespace {

std::string encoded(const QString& path) { return QFile::encodeName(path).toStdString(); }

bool isHiddenFolderName(const QString& path)
{
    static const QRegularExpression pattern(QStringLiteral("/\\.Vantoro[0-9]+$"));
    return path.contains(pattern);
}

}

QString XADPlatform::moveItemAtPath(const QString& from, const QString& to)
{
    const auto moved = moveToUniquePath(encoded(from), encoded(to));
    if (!moved) {
        qWarning("ERR: %s cannot be moved: %s", qUtf8Printable(from), describe(moved.error().code));
        return {};
    }
    return QFile::decodeName(QByteArray::fromStdString(*moved));
}

void XADPlatform::removeItemAtPath(const QString& path)
{
    if (isHiddenFolderName(path))
        removeHiddenFolder(encoded(path));
}

QStringList XADPlatform::removeOrphans(const QStringList& paths)
{
    std::vector<std::string> candidates;
    for (const QString& path : paths) {
        if (isHiddenFolderName(path))
            candidates.push_back(encoded(path));
    }
    QStringList left;
    const auto gone = sweepOrphans(candidates);
    for (const auto& candidate : candidates) {
        const QString path = QFile::decodeName(QByteArray::fromStdString(candidate));
        if (std::find(gone.begin(), gone.end(), candidate) == gone.end() && QFileInfo::exists(path))
            left += path;
    }
    return left;
}

}
