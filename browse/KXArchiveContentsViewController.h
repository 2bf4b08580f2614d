#pragma once

#include "browse/KXDropArchiveView.h"

#include "files/FilePanels.h"
#include "widgets/KXBaseViewCter.h"

#include <QPersistentModelIndex>

#include <memory>

class QAction;
class QLineEdit;
class QStackedLayout;
class QTimer;

namespace vantoro {

class ArchiveOutlineView;
class ArchiveTree;
class ArchiveTreeModel;
class BrowserHost;
class ContentsPresenter;
class ElidedLabel;
class FlatButton;
class PasswordPrompt;
class PreviewWindow;
class ProgressOverlay;

/// The page that shows what is in an archive as a tree, without extracting it. A drop area stands in its place while no
/// archive is open. Layout and forwarding: what it does is decided in ContentsPresenter.
class KXArchiveContentsViewController final : public KXBaseViewCter, public DropArchiveDelegate {
    Q_OBJECT

public:
    /// The host outlives the page.
    explicit KXArchiveContentsViewController(BrowserHost& host, QWidget* parent = nullptr);
    /// Stops what runs and waits for it.
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
    void toggleExtractSelectedItem();
    /// False where there is nothing to extract.
    bool extractShownArchive();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    class View;

    QWidget* makeContentsView();
    QLayout* makeFilterRow();
    QWidget* makeToolBox();
    void connectOutline();
    void addShortcuts();
    void applyType();
    void archiveChosen(const PanelResult& chosen);
    void showMenu(const QModelIndex& index, const QPoint& globalPosition);
    void previewItem(const QModelIndex& index);
    void togglePreview(const QModelIndex& index);
    void followWithPreview();
    void choosePreviewed(bool below);
    void leaveFilterField();
    void extractItem(const QModelIndex& index);
    /// Made when it is first needed: what shows documents is slow to load.
    PreviewWindow& quicklookWindow();
    void closePreview();
    void setBtnEnable(bool enable);
    void setBtnHidden(bool hidden);
    void setDropViewHidden(bool showsNoArchive);
    QString extractText(bool isChosen) const;
    void updateButtons();

    BrowserHost& m_host;
    FilePanels m_panels;
    QString m_archivePath;
    std::unique_ptr<View> m_view;
    std::unique_ptr<ContentsPresenter> m_presenter;
    ArchiveTreeModel* m_model;

    QStackedLayout* m_baseView;
    KXDropArchiveView* m_dropView;
    QWidget* m_contentsView;
    QWidget* m_toolBoxView;
    ArchiveOutlineView* m_outlineView;
    QLineEdit* m_filterField;
    QAction* m_filterGlyph = nullptr;
    QTimer* m_filterDelay;
    ElidedLabel* m_statusLine;
    FlatButton* m_btnExtract;
    FlatButton* m_btnPreview;
    FlatButton* m_btnClear;
    FlatButton* m_btnSet;
    PasswordPrompt* m_passWdPanel;
    PreviewWindow* m_quicklookWindow = nullptr;
    QPersistentModelIndex m_previewed;
    QTimer* m_previewDelay;
};

}
