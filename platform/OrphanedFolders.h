#pragma once

#include <QString>
#include <QStringList>

namespace vantoro {

/// The hidden folders of extractions that are not finished, kept in the defaults store, so that what a crash leaves
/// behind is found at the next start. Any thread.
class OrphanedFolders {
public:
    static QStringList paths();
    static void remember(const QString& path);
    static void forget(const QString& path);
    /// Removes what dead processes left; folders of processes that live stay, and stay on the list.
    static void sweep();
    /// Has the engine keep the folders that it makes by itself on the same list. Call once, at start.
    static void keepForEngine();
};

}
