#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>
#include <QUrl>

namespace vantoro {

/// The desktop around the program: opening, revealing, the Trash, icons. Main thread.
class Workspace {
public:
    Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    virtual ~Workspace() = default;

    /// Opens a file or folder with its default application.
    virtual bool openFile(const QString& path) = 0;
    virtual bool openUrl(const QUrl& url) = 0;
    /// Shows the item selected in the file manager; returns at once.
    virtual void selectFile(const QString& path) = 0;
    /// Moves the named items of a folder to the Trash, all of them or none. Never deletes.
    virtual bool recycle(const QString& folder, const QStringList& names) = 0;
    virtual QIcon iconForFile(const QString& path) = 0;
    /// A folder that is shown as one file because of its extension ("app", "bundle" …).
    virtual bool isFilePackage(const QString& path) = 0;
    /// Whether this process may create entries in the folder.
    virtual bool isWritableFolder(const QString& path) = 0;

    /// The desktop that the whole program uses: the real one unless a test has set another.
    static Workspace& shared();
    /// `workspace` outlives its use; null goes back to the real one.
    static void setShared(Workspace* workspace);
};

}
