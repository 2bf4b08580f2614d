#include "platform/PathNames.h"

#include <QDir>
#include <QFileInfo>

namespace vantoro {
namespace {

QString withoutTrailingSlash(const QString& path)
{
    qsizetype end = path.size();
    while (end > 1 && path.at(end - 1) == QLatin1Char('/'))
        --end;
    return path.left(end);
}

/// Of the dot before the extension; -1 where there is none.
qsizetype extensionDot(const QString& path)
{
    const qsizetype nameStart = path.lastIndexOf(QLatin1Char('/')) + 1;
    const qsizetype dot = path.lastIndexOf(QLatin1Char('.'));
    return dot > nameStart && dot + 1 < path.size() ? dot : -1;
}

}

QString lastPathComponent(const QString& path)
{
    const QString trimmed = withoutTrailingSlash(path);
    return trimmed.mid(trimmed.lastIndexOf(QLatin1Char('/')) + 1);
}

QString deletingLastPathComponent(const QString& path)
{
    const QString trimmed = withoutTrailingSlash(path);
    const qsizetype slash = trimmed.lastIndexOf(QLatin1Char('/'));
    return slash <= 0 ? trimmed.left(slash + 1) : trimmed.left(slash);
}

QString pathExtension(const QString& path)
{
    const QString trimmed = withoutTrailingSlash(path);
    const qsizetype dot = extensionDot(trimmed);
    return dot < 0 ? QString() : trimmed.mid(dot + 1);
}

QString deletingPathExtension(const QString& path)
{
    const QString trimmed = withoutTrailingSlash(path);
    const qsizetype dot = extensionDot(trimmed);
    return dot < 0 ? trimmed : trimmed.left(dot);
}

QString appendingPathComponent(const QString& path, const QString& component)
{
    return path.endsWith(QLatin1Char('/')) ? path + component : path + QLatin1Char('/') + component;
}

bool pathLiesInside(const QString& path, const QString& folder)
{
    return path.startsWith(folder)
        && (path.size() == folder.size() || folder == QLatin1String("/") || path.at(folder.size()) == QLatin1Char('/'));
}

QString resolvingSymlinks(const QString& path)
{
    if (path.isEmpty())
        return {};
    const QFileInfo info(path);
    const QString canonical = info.canonicalFilePath();
    if (!canonical.isEmpty())
        return canonical;
    if (info.isSymLink())
        return {};
    const QString parent = QFileInfo(info.absolutePath()).canonicalFilePath();
    return parent.isEmpty() ? QDir::cleanPath(info.absoluteFilePath())
                            : appendingPathComponent(parent, info.fileName());
}

}
