#include "files/KXFileWrapper.h"

#include "platform/PathNames.h"

#include <QFile>

#include <algorithm>
#include <filesystem>

namespace vantoro {
namespace {

namespace fs = std::filesystem;

/// Relative to the folder; nothing of it where it cannot be read.
template <class Iterator> QStringList subpaths(const QString& folder)
{
    const fs::path start = QFile::encodeName(folder).toStdString();
    const auto skip = start.native().size() + (start.native().ends_with('/') ? 0 : 1);
    QStringList paths;
    std::error_code error;
    for (Iterator entry(start, fs::directory_options::skip_permission_denied, error); !error && entry != Iterator();
         entry.increment(error))
        paths += QFile::decodeName(QByteArray::fromStdString(entry->path().native().substr(skip)));
    return paths;
}

QStringList keptOf(QStringList paths, bool (*keeps)(const QString&, QString*))
{
    paths.removeIf([&](const QString& path) { return !keeps(path, nullptr); });
    return paths;
}

template <class Keeps> QStringList filesWhose(const QString& path, bool deep, Keeps keeps)
{
    QStringList files = KXFileWrapper::listFilesInDirectoryAtPath(path, deep);
    files.removeIf([&](const QString& file) { return !keeps(lastPathComponent(file)); });
    return files;
}

}

QStringList KXFileWrapper::itemsInDirectoryAtPath(const QString& path)
{
    return subpaths<fs::directory_iterator>(path);
}

QStringList KXFileWrapper::listItemsInDirectoryAtPath(const QString& path, bool deep)
{
    const QString folder = absolutePath(path);
    const QStringList names
        = deep ? subpaths<fs::recursive_directory_iterator>(folder) : subpaths<fs::directory_iterator>(folder);
    QStringList items;
    for (const QString& name : names) {
        const QString item = appendingPathComponent(folder, name);
        if (!item.contains(QLatin1String(".DS_Store")))
            items += item;
    }
    return items;
}

QStringList KXFileWrapper::listDirectoriesInDirectoryAtPath(const QString& path, bool deep)
{
    return keptOf(listItemsInDirectoryAtPath(path, deep), &isDirectoryItemAtPath);
}

QStringList KXFileWrapper::listFilesInDirectoryAtPath(const QString& path, bool deep)
{
    return keptOf(listItemsInDirectoryAtPath(path, deep), &isFileItemAtPath);
}

QStringList KXFileWrapper::listFilesInDirectoryAtPathWithExtension(const QString& path, const QString& extension,
                                                                   bool deep)
{
    const QString wanted = extension.toLower().remove(QLatin1Char('.'));
    return filesWhose(path, deep, [&](const QString& name) { return pathExtension(name).toLower() == wanted; });
}

QStringList KXFileWrapper::listFilesInDirectoryAtPathWithPrefix(const QString& path, const QString& prefix, bool deep)
{
    return filesWhose(path, deep, [&](const QString& name) { return name.startsWith(prefix); });
}

QStringList KXFileWrapper::listFilesInDirectoryAtPathWithSuffix(const QString& path, const QString& suffix, bool deep)
{
    return filesWhose(path, deep, [&](const QString& name) {
        return name.endsWith(suffix) || deletingPathExtension(name).endsWith(suffix);
    });
}

}
