#include "browse/KXArchiveContentsViewController.h"

#include "browse/BrowserHost.h"

#include "app/KXPrefsDefault.h"
#include "files/CustomePanel.h"
#include "files/FileFormats.h"
#include "widgets/FlatButton.h"
#include "widgets/Icons.h"

#include <QVBoxLayout>

namespace vantoro {

KXArchiveContentsViewController::KXArchiveContentsViewController(BrowserHost& host, QWidget* parent)
    : KXBaseViewCter(parent)
    , m_host(host)
    , m_panels([this] { return window(); })
    , m_dropView(new KXDropArchiveView(this))
{
    m_dropView->setDelegate(this);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(theme::kSpaceL, theme::kSpaceL, theme::kSpaceL, theme::kSpaceL);
    column->addWidget(m_dropView);
    connect(m_dropView, &DropArea::buttonClicked, this, &KXArchiveContentsViewController::toggleAddArchive);
}

KXArchiveContentsViewController::~KXArchiveContentsViewController() = default;

QString KXArchiveContentsViewController::identifier() const { return QStringLiteral("Extract"); }
QIcon KXArchiveContentsViewController::toolbarItemImage() const { return icons::icon(QStringLiteral("page-extract")); }
QString KXArchiveContentsViewController::toolbarItemLabel() const { return tr("Extract"); }

void KXArchiveContentsViewController::viewWillAppear() {}
void KXArchiveContentsViewController::viewWillDisappear() {}

void KXArchiveContentsViewController::getArchiveContainerWithPath(const QString& path)
{
    if (!KXPrefsDefault::listArchive())
        m_host.unarchiveZip(path);
}

void KXArchiveContentsViewController::obtainFilesPath(const QString& path)
{
    if (!path.isEmpty())
        getArchiveContainerWithPath(path);
}

void KXArchiveContentsViewController::obtainFilesPathImage(const QString& path) { obtainFilesPath(path); }

void KXArchiveContentsViewController::toggleAddArchive()
{
    const auto panel = CustomePanel::openPanelWithTitleMessage({.message = tr("Please select the archive"),
                                                                .prompt = tr("Select"),
                                                                .createDirectories = true,
                                                                .directory = KXPrefsDefault::lastDestination(),
                                                                .allowedFileTypes = fileFormatArray()});
    m_panels.runOpenPanel(panel, {this, [this](const PanelResult& chosen) { archiveChosen(chosen); }});
}

void KXArchiveContentsViewController::archiveChosen(const PanelResult& chosen)
{
    if (chosen && !chosen->isEmpty())
        obtainFilesPath(chosen->front().toLocalFile());
}

void KXArchiveContentsViewController::toggleClearAll() {}
void KXArchiveContentsViewController::toggleSettings() { m_host.openPrefsWindow(); }

}
