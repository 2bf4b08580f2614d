#include "compress/KXPackViewController.h"

#include "compress/CompressHost.h"

#include "app/KXPrefsDefault.h"
#include "files/CustomePanel.h"
#include "platform/PathNames.h"
#include "widgets/Icons.h"

#include <QVBoxLayout>

namespace vantoro {

KXPackViewController::KXPackViewController(CompressHost& host, QWidget* parent)
    : KXBaseViewCter(parent)
    , m_host(host)
    , m_dropView(new KXDropFilesView(this))
{
    m_dropView->setDelegate(this);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(theme::kSpaceL, theme::kSpaceL, theme::kSpaceL, theme::kSpaceL);
    column->addWidget(m_dropView);
    connect(m_dropView, &DropArea::buttonClicked, this, &KXPackViewController::addFiles);
}

KXPackViewController::~KXPackViewController() = default;

QIcon KXPackViewController::toolbarItemImage() const { return icons::icon(QStringLiteral("page-compress")); }

QString KXPackViewController::toolbarItemLabel() const { return tr("Compress"); }

void KXPackViewController::viewWillAppear() {}

void KXPackViewController::obtainFilesPath(const QStringList& paths)
{
    if (paths.isEmpty())
        return;
    for (const QString& path : paths) {
        if (!m_filesArray.contains(path))
            m_filesArray += path;
    }
    m_destArchivePath = deletingLastPathComponent(paths.first());
}

void KXPackViewController::addFilesPathWithPasteboard(const QStringList& paths)
{
    if (!paths.isEmpty())
        obtainFilesPath(paths);
}

void KXPackViewController::addFiles()
{
    OpenPanel panel;
    panel.message = tr("Please select the files");
    panel.prompt = tr("Select");
    panel.multipleSelection = true;
    panel.chooseDirectories = true;
    panel.directory = KXPrefsDefault::lastDestination();
    CustomePanel::getOpenPanelChooseFiles(panel, {this, [this](const QStringList& paths) { obtainFilesPath(paths); }});
}

}
