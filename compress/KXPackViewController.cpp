#include "compress/KXPackViewController.h"

#include "compress/CompressHost.h"
#include "compress/CompressWindow.h"
#include "compress/FileIcon.h"
#include "compress/KXTableCellView.h"
#include "compress/PackKinds.h"
#include "compress/PackTable.h"
#include "compress/PreviewPanel.h"
#include "compress/StrengthBar.h"

#include "app/KXPrefsDefault.h"
#include "extraction/HDAlert.h"
#include "files/CustomePanel.h"
#include "files/FilePanels.h"
#include "files/KXUtilities.h"
#include "platform/MainLoop.h"
#include "platform/PathNames.h"
#include "platform/WriterMonitor.h"
#include "widgets/ColoredView.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/Icons.h"
#include "widgets/ImageView.h"
#include "widgets/PasswordField.h"
#include "widgets/ProgressOverlay.h"

#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QThreadPool>

namespace vantoro {

/// Carries a compression's progress to the overlay, and the wish to stop back.
class KXPackViewController::Monitor final : public WriterMonitor {
public:
    void progressed(double fraction, const QString& name) override
    {
        if (!m_work)
            return;
        m_work->setProgress(fraction);
        m_work->setDetail(name);
    }
    /// Of the thread that writes.
    void setWork(ProgressOverlay::Work* work) { m_work = work; }

private:
    ProgressOverlay::Work* m_work = nullptr;
};

KXPackViewController::KXPackViewController(CompressHost& host, QWidget* parent)
    : KXBaseViewCter(parent)
    , m_host(host)
    , m_ownPanels(std::make_unique<FilePanels>([this] { return window(); }))
    , m_dropView(new KXDropFilesView(this))
    , m_contentsView(new QWidget(this))
{
    setAcceptDrops(true);
    setAccessibleName(toolbarItemLabel());
    buildContentsView();
    connectControls();
    applyVisibility();
    toggleSelectArchiveKind();
}

KXPackViewController::~KXPackViewController()
{
    if (m_monitor)
        m_monitor->cancel.cancel();
    delete m_hud.data(); // waits for its thread, which uses this object
    if (m_isArchiving)
        m_host.compressionEnded();
}

QIcon KXPackViewController::toolbarItemImage() const { return icons::icon(QStringLiteral("compress")); }

QString KXPackViewController::toolbarItemLabel() const { return tr("Compress"); }

PanelService& KXPackViewController::panels() { return m_panels ? *m_panels : *m_ownPanels; }

void KXPackViewController::connectControls()
{
    m_dropView->setDelegate(this);
    connect(m_dropView, &DropArea::buttonClicked, this, &KXPackViewController::toggleAddFiles);
    connect(m_btnAdd, &FlatButton::clicked, this, &KXPackViewController::toggleAddFiles);
    connect(m_btnClear, &FlatButton::clicked, this, &KXPackViewController::toggleClearAll);
    connect(m_btnExtract, &FlatButton::clicked, this, &KXPackViewController::toggleAchive);
    connect(m_btnOptions, &FlatButton::clicked, this, &KXPackViewController::openCompressWindow);
    connect(m_btnKindPopButton, &QComboBox::currentIndexChanged, this, &KXPackViewController::toggleSelectArchiveKind);
    connect(m_passwordTextField, &QLineEdit::textChanged, m_strength, &StrengthBar::setPassword);
    connect(m_passwordTextField, &QLineEdit::returnPressed, this, &KXPackViewController::toggleAchive);
    connect(m_arcTableView, &PackTable::rowMade, this, &KXPackViewController::setUpRow);
    connect(m_arcTableView, &PackTable::removeRequested, this, &KXPackViewController::removeRow);
    connect(m_arcTableView, &PackTable::previewRequested, this, &KXPackViewController::previewRow);
    m_arcTableView->setPrepareRow([this](KXTableCellView& row) { showRow(row); });
    connect(&m_sizes, &PackSizes::sizeKnown, this, [this](const QString& path, qint64 size) {
        if (auto* row = m_arcTableView->viewForPath(path))
            row->setSizeText(KXUtilities::sizeFormatForNumber(size));
    });
}

// Adding

void KXPackViewController::obtainFilesPath(const QStringList& paths)
{
    if (m_hud) {
        m_pending += paths;
        return;
    }
    runOverlay(
        {}, [this, paths] { m_routes.loadFilesPath(paths); }, [this] { addingFinished(); });
}

void KXPackViewController::addingFinished()
{
    m_sizes.forget();
    reloadTableViewData();
}

void KXPackViewController::addFilesPathWithPasteboard(const QStringList& paths)
{
    if (!paths.isEmpty())
        obtainFilesPath(paths);
}

void KXPackViewController::toggleAddFiles()
{
    const auto panel = CustomePanel::openPanelWithTitleMessage({.message = tr("Please select the files"),
                                                                .prompt = tr("Select"),
                                                                .multipleSelection = true,
                                                                .chooseDirectories = true,
                                                                .directory = KXPrefsDefault::lastDestination()});
    panels().runOpenPanel(panel, {this, [this](const PanelResult& chosen) {
                                      QStringList paths;
                                      for (const QUrl& url : chosen.value_or(QList<QUrl>()))
                                          paths += url.toLocalFile();
                                      addFilesPathWithPasteboard(paths);
                                  }});
}

void KXPackViewController::dragEnterEvent(QDragEnterEvent* event)
{
    if (!DropArea::offersFiles(event->mimeData()))
        return event->ignore();
    m_arcTableView->setHighlighted(true);
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void KXPackViewController::dragLeaveEvent(QDragLeaveEvent*) { m_arcTableView->setHighlighted(false); }

void KXPackViewController::dropEvent(QDropEvent* event)
{
    m_arcTableView->setHighlighted(false);
    const QStringList paths = DropArea::localPaths(event->mimeData());
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(!paths.isEmpty());
    addFilesPathWithPasteboard(paths);
}

void KXPackViewController::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Open))
        toggleAddFiles();
    else if (event->matches(QKeySequence::Paste))
        addFilesPathWithPasteboard(DropArea::localPaths(QGuiApplication::clipboard()->mimeData()));
    else
        KXBaseViewCter::keyPressEvent(event);
}

// The list

void KXPackViewController::setUpRow(KXTableCellView* row)
{
    connect(row->closeBut(), &FlatButton::clicked, this, [this, row] { closeButton(row); });
    connect(row->previewButton(), &FlatButton::clicked, this, [this, row] { previewItem(row); });
}

void KXPackViewController::showRow(KXTableCellView& row)
{
    row.itemIcon()->setIcon(fileIcon(row.path()));
    const auto size = m_sizes.sizeOf(row.path());
    row.setSizeText(size ? KXUtilities::sizeFormatForNumber(*size) : QString());
}

void KXPackViewController::closeButton(const QWidget* button) { removeRow(m_arcTableView->rowForView(button)); }

void KXPackViewController::removeRow(int row)
{
    QStringList paths = filesArray();
    if (row < 0 || row >= paths.size())
        return;
    paths.removeAt(row);
    m_routes.setFilesArray(paths);
    if (paths.isEmpty())
        setControlsEnabled(false);
    reloadTableViewData();
}

void KXPackViewController::toggleClearAll()
{
    m_routes.setFilesArray({});
    setControlsEnabled(false);
    m_encryptView->hide();
    reloadTableViewData();
}

void KXPackViewController::viewWillAppear()
{
    setControlsEnabled(false);
    applyVisibility();
    m_sizes.forget();
    reloadTableViewData();
}

void KXPackViewController::viewWillDisappear()
{
    if (PreviewPanel::exists() && PreviewPanel::shared().dataSource() == this)
        PreviewPanel::shared().hide();
}

void KXPackViewController::setControlsEnabled(bool enabled)
{
    for (QWidget* control : {static_cast<QWidget*>(m_btnClear), static_cast<QWidget*>(m_btnExtract),
                             static_cast<QWidget*>(m_btnKindPopButton)})
        control->setEnabled(enabled);
}

void KXPackViewController::applyVisibility()
{
    const auto state = PackPageState::of(filesArray().isEmpty(), m_routes.takesPassword());
    // What goes goes first, or the window would grow to hold all of it for a moment.
    if (state.showsList)
        m_dropView->hide();
    m_toolBoxView->setVisible(state.showsList);
    m_contentsView->setVisible(state.showsList);
    m_dropView->setVisible(!state.showsList);
}

/// A later turn of the main loop shows what the list holds then.
void KXPackViewController::reloadTableViewData()
{
    performOnMainThread(this, [this] { reloadDData(); });
}

void KXPackViewController::reloadDData()
{
    if (m_hud)
        return; // another thread has the list; another refresh follows
    applyVisibility();
    setControlsEnabled(PackPageState::of(filesArray().isEmpty(), false).enablesControls);
    keepKindPossible();
    toggleSelectArchiveKind();
    m_count->setText(countText());
    m_arcTableView->reloadData(filesArray());
    reloadPreview();
}

QString KXPackViewController::countText() const { return tr("%n item(s)", nullptr, int(filesArray().size())); }

// The kind

/// Greys out the kinds that cannot hold the list, and leaves one that was chosen before the list grew.
void KXPackViewController::keepKindPossible()
{
    for (const PackKind& kind : packKinds()) {
        const int index = m_btnKindPopButton->findText(kind.title);
        const bool possible = filesArray().isEmpty() || canPack(kind, filesArray());
        m_btnKindPopButton->setItemData(index, possible ? QVariant() : QVariant(0), Qt::UserRole - 1);
        if (!possible && index == m_btnKindPopButton->currentIndex())
            m_btnKindPopButton->setCurrentIndex(0);
    }
}

void KXPackViewController::toggleSelectArchiveKind()
{
    m_routes.setArchiveExtension(m_btnKindPopButton->currentText());
    const auto state = PackPageState::of(filesArray().isEmpty(), m_routes.takesPassword());
    m_encryptView->setVisible(state.showsPassword);
    showTarget();
}

void KXPackViewController::showTarget()
{
    const QString first = filesArray().value(0);
    const QString name = lastPathComponent(deletingPathExtension(first));
    const QString archive = QStringLiteral("%1.%2").arg(name, m_btnKindPopButton->currentText());
    const QChar arrow(isRightToLeft() ? 0x2190 : 0x2192);
    m_target->setText(first.isEmpty() ? QString() : arrow + QLatin1Char(' ') + isolated(archive));
    m_target->setAccessibleName(first.isEmpty() ? QString() : archive);
}

// Preview

void KXPackViewController::previewItem(const QWidget* button) { previewRow(m_arcTableView->rowForView(button)); }

void KXPackViewController::previewRow(int row)
{
    const QString path = filesArray().value(row);
    PreviewPanel::shared().setDataSource(this, [this, path] { return filesArray().contains(path) ? path : QString(); });
    togglePreviewPanel();
}

void KXPackViewController::togglePreviewPanel() { PreviewPanel::shared().toggle(this); }

void KXPackViewController::reloadPreview()
{
    if (PreviewPanel::exists() && PreviewPanel::shared().dataSource() == this)
        PreviewPanel::shared().reloadData();
}

// Compressing

void KXPackViewController::openCompressWindow()
{
    if (!m_compressWindow) {
        m_compressWindow = new CompressWindow(this);
        fillKindMenu(m_compressWindow->kindPopButton());
        connect(m_compressWindow, &CompressWindow::startRequested, this, &KXPackViewController::toggleStartCompress);
        connect(m_compressWindow, &QDialog::rejected, this, &KXPackViewController::toggleCancelCompress);
    }
    auto* kinds = m_compressWindow->kindPopButton();
    for (int i = 0; i < kinds->count(); ++i)
        kinds->setItemData(i, m_btnKindPopButton->itemData(i, Qt::UserRole - 1), Qt::UserRole - 1);
    kinds->setCurrentIndex(m_btnKindPopButton->currentIndex());
    m_compressWindow->setPassword(m_passwordTextField->text());
    m_compressWindow->open();
    m_compressWindow->passwordField()->setFocus();
}

void KXPackViewController::toggleStartCompress()
{
    m_btnKindPopButton->setCurrentIndex(m_compressWindow->kindPopButton()->currentIndex());
    m_passwordTextField->setText(m_compressWindow->passwordField()->text());
    m_compressWindow->accept();
    m_compressWindow->wipe();
    prepareArchive();
}

void KXPackViewController::toggleCancelCompress()
{
    m_compressWindow->hide();
    m_compressWindow->wipe();
}

void KXPackViewController::toggleAchive()
{
    if (m_btnExtract->isEnabled())
        prepareArchive();
}

void KXPackViewController::prepareArchive()
{
    const QString last = KXPrefsDefault::lastDestination();
    const auto panel = CustomePanel::openPanelWithTitleMessage({.message = tr("Please select the destination"),
                                                                .prompt = tr("Compress"),
                                                                .chooseFiles = false,
                                                                .chooseDirectories = true,
                                                                .createDirectories = true,
                                                                .directory = last.isEmpty() ? QDir::homePath() : last});
    panels().runOpenPanel(panel, {this, [this](const PanelResult& chosen) {
                                      if (!chosen || chosen->isEmpty() || m_hud)
                                          return;
                                      m_routes.setDestArchivePath(chosen->constFirst().toLocalFile());
                                      KXPrefsDefault::setLastDestination(m_routes.destArchivePath());
                                      archive();
                                  }});
}

void KXPackViewController::archive()
{
    if (filesArray().isEmpty()) {
        HDAlert::showAlert(HDAlert::Style::Informational, tr("Information"), tr("Please drag files and folers here!"));
        return;
    }
    performOnMainThread(this, [this] { executeArchive(); });
}

void KXPackViewController::executeArchive()
{
    if (m_routes.archiveExtension().isEmpty() || m_hud)
        return;
    if (m_routes.takesPassword()) {
        const QMutexLocker lock(&m_condition);
        setPasswordonMain();
    } else if (!filesArray().isEmpty()) {
        m_routes.appendArchiveName();
    }
    m_monitor = std::make_shared<Monitor>();
    m_routes.setMonitor(m_monitor.get());
    m_isArchiving = true;
    m_host.compressionBegan();
    runOverlay(
        tr("Compressing…"), [this] { m_routes.startArchive(); }, [this] { archivingFinished(); });
}

void KXPackViewController::setPasswordonMain() { m_routes.setPassword(m_passwordTextField->text()); }

void KXPackViewController::archivingFinished()
{
    m_routes.setMonitor(nullptr);
    m_routes.setPassword({});
    m_monitor.reset();
    m_isArchiving = false;
    m_host.compressionEnded();
}

/// Covers the window while `work` runs on a thread of its own; without a label the user cannot stop it.
void KXPackViewController::runOverlay(const QString& label, std::function<void()> work, std::function<void()> finished)
{
    m_hud = new ProgressOverlay(window());
    m_hud->setDimsBackground(true);
    m_hud->setAccent(theme::Accent::Compress);
    m_hud->setLabelText(label);
    m_hud->setCancellable(!label.isEmpty());
    if (m_monitor)
        connect(m_hud, &ProgressOverlay::cancelled, this, [monitor = m_monitor] { monitor->cancel.cancel(); });
    m_hud->showWhileExecuting(
        [work = std::move(work), monitor = m_monitor](ProgressOverlay::Work& overlay) {
            if (monitor)
                monitor->setWork(&overlay);
            work();
            if (monitor)
                monitor->setWork(nullptr);
        },
        [this, page = QPointer(this), finished = std::move(finished)] {
            if (!page)
                return;
            m_hud = nullptr;
            finished();
            if (const QStringList pending = std::exchange(m_pending, {}); !pending.isEmpty())
                obtainFilesPath(pending);
        });
}

}
