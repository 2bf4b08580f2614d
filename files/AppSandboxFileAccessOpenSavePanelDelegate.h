#pragma once

#include <QStringList>
#include <QUrl>

namespace vantoro {

/// Limits a grant panel to the item that is asked for and the folders above it.
class AppSandboxFileAccessOpenSavePanelDelegate {
public:
    static AppSandboxFileAccessOpenSavePanelDelegate initWithFileURL(const QUrl& fileURL);
    bool shouldEnableURL(const QUrl& url) const;

private:
    explicit AppSandboxFileAccessOpenSavePanelDelegate(QStringList pathComponents)
        : m_pathComponents(std::move(pathComponents))
    {
    }
    QStringList m_pathComponents;
};

}
