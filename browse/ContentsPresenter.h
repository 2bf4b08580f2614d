#pragma once

#include "browse/ChosenExtraction.h"
#include "browse/EntryPreviewer.h"
#include "browse/OverlayWork.h"
#include "browse/PasswordGate.h"

#include <QObject>

#include <thread>

namespace vantoro {

/// The contents browser without its widgets: opens and lists an archive, decides what is shown, and hands what the user
/// asks for to the preview, the password prompt and the extraction. Main thread.
class ContentsPresenter final : public QObject {
    Q_OBJECT

public:
    /// All outlive this.
    ContentsPresenter(BrowserView& view, BrowserHost& host, PanelService& panels);
    /// The page's overlay is gone by now, and with it what ran behind it.
    ~ContentsPresenter() override;

    /// Opens the archive and lists it in the background; extracts it instead when the user has switched browsing off.
    /// What runs for another archive is stopped first.
    void getArchiveContainerWithPath(const QString& path);
    void clearAllFiles();
    /// Stops what runs, without waiting for it.
    void stop();

    /// Something runs for the archive, behind an overlay.
    bool isBusy() const { return m_work.isRunning(); }
    const BrowsedArchive& archive() const { return m_archive; }
    PasswordCheckState passwordCheckState() const { return m_gate.passwordCheckState(); }

    /// The nodes are those of archive().shown, rows count the outline's; -1 for no row.
    void toggleExtractSelectedItem(qsizetype row, ArchiveTree::Node node);
    void previewItem(qsizetype row, ArchiveTree::Node node);
    void togglePasswordOK(const Secret& password) { m_gate.togglePasswordOK(password); }
    void togglePasswordCancel() { m_gate.togglePasswordCancel(); }
    /// Shows only what has the text in its name; searched for in the background.
    void setFilter(const QString& text);

private:
    struct Opening;

    void openArchive(const QString& path);
    void startLoading(const std::shared_ptr<Opening>& opening);
    void askForListing();
    void reloadDData();
    void startSkeleton();
    void stopSkeleton();
    void showRows(std::shared_ptr<const ArchiveTree> rows);
    void showExtracted(qsizetype entries, const QStringList& problems);
    QString status() const;

    BrowserView& m_view;
    BrowserHost& m_host;
    OverlayWork m_work;
    PasswordGate m_gate;
    EntryPreviewer m_previewer;
    BrowsedArchive m_archive;
    CancelToken m_listingCancel; // of m_archive's wrapper
    std::thread m_skeleton;
    QString m_filter;
    quint64 m_search = 0; // number of the latest one
    ChosenExtraction m_extraction;
};

}
