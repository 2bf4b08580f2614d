#pragma once

#include "platform/Workspace.h"

#include <QDir>

#include <set>

namespace vantoro {

/// The shared workspace for as long as it lives; writes down what it is asked to do.
class FakeWorkspace final : public Workspace {
public:
    FakeWorkspace() { setShared(this); }
    ~FakeWorkspace() override { setShared(nullptr); }

    bool openFile(const QString& path) override
    {
        log += "open " + path;
        return true;
    }
    bool openUrl(const QUrl& url) override
    {
        log += "url " + url.toString();
        return true;
    }
    void selectFile(const QString& path) override { log += "reveal " + path; }
    bool recycle(const QString& folder, const QStringList& names) override
    {
        log += "recycle " + folder + ": " + names.join(' ');
        return true;
    }
    QIcon iconForFile(const QString&) override { return {}; }
    bool isFilePackage(const QString& path) override { return path.endsWith(".app") && QFileInfo(path).isDir(); }
    bool isWritableFolder(const QString& path) override { return QDir(path).exists() && !readOnly.contains(path); }

    QStringList log;
    std::set<QString> readOnly;
};

}
