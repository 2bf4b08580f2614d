#pragma once

#include "browse/KXDropArchiveView.h"

#include "files/FilePanels.h"
#include "widgets/KXBaseViewCter.h"

namespace vantoro {

class BrowserHost;

/// The page that shows what is in an archive as a tree, without extracting it. A drop area stands in its place while no
/// archive is open.
class KXArchiveContentsViewController final : public KXBaseViewCter, public DropArchiveDelegate {
    Q_OBJECT

public:
    /// The host outlives the page.
    explicit KXArchiveContentsViewController(BrowserHost& host, QWidget* parent = nullptr);
    ~KXArchiveContentsViewController() override;

    QString identifier() const override;
    QIcon toolbarItemImage() const override;
    QString toolbarItemLabel() const override;
    void viewWillAppear() override;
    void viewWillDisappear() override;

    const QString& archivePath() const { return m_archivePath; }
    void setArchivePath(const QString& path) { m_archivePath = path; }

    /// Opens the archive and lists it in the background; extracts it instead when the user has switched browsing off.
    void getArchiveContainerWithPath(const QString& path);
    /// The same; an empty path is ignored.
    void obtainFilesPath(const QString& path) override;
    void obtainFilesPathImage(const QString& path);

    /// Lets the user choose an archive.
    void toggleAddArchive();
    void addFiles() { toggleAddArchive(); }
    void toggleClearAll();
    void toggleSettings();

private:
    void archiveChosen(const PanelResult& chosen);

    BrowserHost& m_host;
    FilePanels m_panels;
    QString m_archivePath;
    KXDropArchiveView* m_dropView;
};

}
