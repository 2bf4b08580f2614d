#pragma once

#include "compress/KXDropFilesView.h"
#include "compress/PackRoutes.h"
#include "compress/PackSizes.h"

#include "platform/Panels.h"
#include "widgets/KXBaseViewCter.h"

#include <QMutex>
#include <QPointer>

#include <memory>

class QComboBox;
class QLabel;

namespace vantoro {

class ColoredView;
class CompressHost;
class CompressWindow;
class ElidedLabel;
class FlatButton;
class KXTableCellView;
class PackTable;
class PasswordField;
class ProgressOverlay;
class StrengthBar;

/// The page on which the user gathers files and folders, chooses a kind of archive and a password, and starts.
/// It keeps its list for as long as it lives, also through a compression.
class KXPackViewController final : public KXBaseViewCter, public KXDropFilesViewDelegate {
    Q_OBJECT

public:
    explicit KXPackViewController(CompressHost& host, QWidget* parent = nullptr);
    ~KXPackViewController() override;

    QString identifier() const override { return QStringLiteral("Compress"); }
    QIcon toolbarItemImage() const override;
    QString toolbarItemLabel() const override;
    void viewWillAppear() override;
    void viewWillDisappear() override;

    /// Adds the paths that are not on the list yet, in their order. The list shows them a little later; while archives
    /// are being written, after that.
    void obtainFilesPath(const QStringList& paths) override;
    /// The same, and nothing for an empty list.
    void addFilesPathWithPasteboard(const QStringList& paths);
    void obtainFilesPathImage(const QStringList& paths) { obtainFilesPath(paths); }
    /// Lets the user choose files and folders in a panel.
    void addFiles() { toggleAddFiles(); }
    /// The options in a window of their own.
    void openCompressWindow();

    const QStringList& filesArray() const { return m_routes.filesArray(); }
    QString archiveExtension() const { return m_routes.archiveExtension(); }
    const QString& destArchivePath() const { return m_routes.destArchivePath(); }
    /// Files are being added or archives written.
    bool isBusy() const { return !m_hud.isNull(); }
    /// Instead of file dialogs on this page's window; outlives the page.
    void setPanels(PanelService* panels) { m_panels = panels; }

    // The controls' actions.
    void toggleAddFiles();
    void toggleAchive();
    void toggleClearAll();
    void toggleSelectArchiveKind();
    void toggleStartCompress();
    void toggleCancelCompress();
    void togglePreviewPanel();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    class Monitor;

    void buildContentsView();
    void buildToolBox();
    void buildPasswordView();
    void fillKindMenu(QComboBox* menu) const;
    void connectControls();
    void setUpRow(KXTableCellView* row);
    void showRow(KXTableCellView& row);

    void closeButton(const QWidget* button);
    void previewItem(const QWidget* button);
    void removeRow(int row);
    void previewRow(int row);
    void reloadPreview();

    void setControlsEnabled(bool enabled);
    void applyVisibility();
    void showTarget();
    void reloadTableViewData();
    void reloadDData();
    void keepKindPossible();
    QString countText() const;

    PanelService& panels();
    void runOverlay(const QString& label, std::function<void()> work, std::function<void()> finished);
    void addingFinished();
    void prepareArchive();
    void archive();
    void executeArchive();
    void setPasswordonMain();
    void archivingFinished();

    CompressHost& m_host;
    PackRoutes m_routes;
    PackSizes m_sizes;
    PanelService* m_panels = nullptr;
    std::unique_ptr<PanelService> m_ownPanels;
    std::shared_ptr<Monitor> m_monitor;
    QPointer<ProgressOverlay> m_hud;
    QMutex m_condition;
    QStringList m_pending; // came while archives were written
    bool m_isArchiving = false;

    KXDropFilesView* m_dropView;
    QWidget* m_contentsView;
    ElidedLabel* m_target = nullptr; ///< the name of the archive to come
    QLabel* m_count = nullptr;
    FlatButton* m_btnAdd = nullptr;
    FlatButton* m_btnClear = nullptr;
    PackTable* m_arcTableView = nullptr;
    ColoredView* m_toolBoxView = nullptr;
    QComboBox* m_btnKindPopButton = nullptr;
    QWidget* m_encryptView = nullptr;
    PasswordField* m_passwordTextField = nullptr;
    StrengthBar* m_strength = nullptr;
    FlatButton* m_btnOptions = nullptr;
    FlatButton* m_btnExtract = nullptr;
    CompressWindow* m_compressWindow = nullptr;
};

}
