#include "files/AppSandboxFileAccessOpenSavePanelDelegate.h"

namespace vantoro {
namespace {
QStringList componentsOf(const QUrl& url) { return url.toLocalFile().split(QLatin1Char('/'), Qt::SkipEmptyParts); }
}

AppSandboxFileAccessOpenSavePanelDelegate
AppSandboxFileAccessOpenSavePanelDelegate::initWithFileURL(const QUrl& fileURL)
{
    Q_ASSERT_X(!fileURL.isEmpty(), "AppSandboxFileAccess", "Invalid parameter not satisfying: fileURL");
    return AppSandboxFileAccessOpenSavePanelDelegate(componentsOf(fileURL));
}

bool AppSandboxFileAccessOpenSavePanelDelegate::shouldEnableURL(const QUrl& url) const
{
    const QStringList components = componentsOf(url);
    return components.size() <= m_pathComponents.size() && m_pathComponents.mid(0, components.size()) == components;
}

}
