#pragma once

#include <QString>
#include <QStringList>

namespace vantoro {

/// Moving and removing items on disk. Any thread.
class XADPlatform {
public:
    /// Never overwrites: when `to` is taken meanwhile, the next free name beside it is used. Returns the final path;
    /// null when the item could not be moved.
    static QString moveItemAtPath(const QString& from, const QString& to);
    /// Removes a hidden folder ".Vantoro<n>" with all its contents, never through a link, and nothing else.
    static void removeItemAtPath(const QString& path);
    /// Removes the hidden folders that dead processes left. Returns those of `paths` that are still there because
    /// their process lives.
    static QStringList removeOrphans(const QStringList& paths);
};

}
