#include "browse/KXArchiveContentsViewController.h"

#include "browse/ArchiveOutlineView.h"
#include "browse/ArchiveTreeModel.h"
#include "browse/BrowserHost.h"
#include "browse/ContentsPresenter.h"
#include "browse/ContentsView.h"
#include "browse/PasswordPrompt.h"
#include "browse/PreviewWindow.h"

#include "app/KXPrefsDefault.h"
#include "files/CustomePanel.h"
#include "files/FileFormats.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/Icons.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QStackedLayout>
#include <QTimer>

namespace vantoro {
namespace {

constexpr int kMostTargetWidth = 180;

}

KXArchiveContentsViewController::~KXArchiveContentsViewController()
{
    m_presenter->stop();
    m_view->endOverlay();
}

QString KXArchiveContentsViewController::identifier() const { return QStringLiteral("Extract"); }
QIcon KXArchiveContentsViewController::toolbarItemImage() const { return icons::icon(QStringLiteral("extract")); }
QString KXArchiveContentsViewController::toolbarItemLabel() const { return tr("Extract"); }

void KXArchiveContentsViewController::viewWillAppear()
{
    const bool hasArchive = m_presenter->archive().isOpen();
    setBtnEnable(hasArchive);
    setBtnHidden(KXPrefsDefault::changeViewMode());
}

void KXArchiveContentsViewController::viewWillDisappear() { closePreview(); }

void KXArchiveContentsViewController::getArchiveContainerWithPath(const QString& path)
{
    m_presenter->getArchiveContainerWithPath(path);
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

void KXArchiveContentsViewController::toggleClearAll()
{
    closePreview();
    m_presenter->clearAllFiles();
}

void KXArchiveContentsViewController::toggleSettings() { m_host.openPrefsWindow(); }

void KXArchiveContentsViewController::toggleExtractSelectedItem() { extractItem(m_outlineView->selectedIndex()); }

bool KXArchiveContentsViewController::extractShownArchive()
{
    if (!m_btnExtract->isEnabled())
        return false;
    toggleExtractSelectedItem();
    return true;
}

void KXArchiveContentsViewController::extractItem(const QModelIndex& index)
{
    m_presenter->toggleExtractSelectedItem(m_outlineView->rowForIndex(index), m_model->nodeAt(index));
}

void KXArchiveContentsViewController::previewItem(const QModelIndex& index)
{
    m_previewed = index.siblingAtColumn(0);
    m_presenter->previewItem(m_outlineView->rowForIndex(index), m_model->nodeAt(index));
}

void KXArchiveContentsViewController::togglePreview(const QModelIndex& index)
{
    if (m_quicklookWindow && m_quicklookWindow->isVisible() && m_previewed == index)
        closePreview();
    else
        previewItem(index);
}

/// The preview that is open shows what is selected, unless that takes a question.
void KXArchiveContentsViewController::followWithPreview()
{
    const auto selected = m_outlineView->selectedIndex();
    if (!m_quicklookWindow || !m_quicklookWindow->isVisible() || !selected.isValid() || m_previewed == selected)
        return;
    if (m_presenter->isBusy())
        return m_previewDelay->start();
    const auto& wrapper = m_presenter->archive().wrapper;
    if (wrapper && (!wrapper->crypted() || m_presenter->passwordCheckState() == PasswordCheckState::Accepted))
        previewItem(selected);
}

void KXArchiveContentsViewController::choosePreviewed(bool below)
{
    const auto selected = m_outlineView->selectedIndex();
    const auto next = below ? m_outlineView->indexBelow(selected) : m_outlineView->indexAbove(selected);
    if (next.isValid())
        m_outlineView->setCurrentIndex(next);
}

void KXArchiveContentsViewController::showMenu(const QModelIndex& index, const QPoint& globalPosition)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const bool isRoot = !index.parent().isValid();
    if (m_model->hasChildren(index))
        menu->addAction(m_outlineView->isExpanded(index) ? tr("Close Folder") : tr("Open Folder"), this,
                        [this, index] { m_outlineView->setExpanded(index, !m_outlineView->isExpanded(index)); });
    auto* preview = menu->addAction(tr("Preview"), this, [this, index] { previewItem(index); });
    preview->setShortcut(Qt::Key_Space);
    preview->setEnabled(!isRoot);
    auto* extract = menu->addAction(isRoot ? tr("Extract All") : tr("Extract"), this,
                                    &KXArchiveContentsViewController::toggleExtractSelectedItem);
    extract->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));
    menu->popup(globalPosition);
}

void KXArchiveContentsViewController::setBtnEnable(bool enable)
{
    m_btnClear->setEnabled(enable);
    m_btnExtract->setEnabled(enable);
    updateButtons();
}

void KXArchiveContentsViewController::setBtnHidden(bool hidden) { m_btnSet->setHidden(hidden); }

/// True shows the drop area, whatever the name suggests: no archive is shown.
void KXArchiveContentsViewController::setDropViewHidden(bool showsNoArchive)
{
    m_baseView->setCurrentIndex(showsNoArchive ? 0 : 1);
}

/// What will be extracted, and where to unless that is asked.
QString KXArchiveContentsViewController::extractText(bool isChosen) const
{
    const QString& archive = m_presenter->archive().path();
    if (archive.isEmpty() || !KXPrefsDefault::extractToCurrent())
        return isChosen ? tr("Extract…") : tr("Extract All…");
    QString folder = QFileInfo(archive).absoluteDir().dirName();
    if (folder.isEmpty())
        folder = QStringLiteral("/");
    folder = m_btnExtract->fontMetrics().elidedText(folder, Qt::ElideMiddle, kMostTargetWidth);
    folder.replace(QLatin1Char('&'), QLatin1String("&&"));
    return (isChosen ? tr("Extract to \"%1\"") : tr("Extract All to \"%1\"")).arg(isolated(folder));
}

/// The button says what it will do.
void KXArchiveContentsViewController::updateButtons()
{
    const auto selected = m_outlineView->selectedIndex();
    const bool isChosen = selected.parent().isValid();
    m_btnExtract->setText(extractText(isChosen));
    m_btnPreview->setEnabled(m_model->isPreviewable(selected));
}

void KXArchiveContentsViewController::dragEnterEvent(QDragEnterEvent* event)
{
    // Rows of the outline that are dragged across the page are no files.
    event->setAccepted(DropArea::offersFiles(event->mimeData()));
}

void KXArchiveContentsViewController::dropEvent(QDropEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(m_dropView->takeFiles(DropArea::localPaths(event->mimeData())));
}

/// What the filter field has no use for.
void KXArchiveContentsViewController::keyPressEvent(QKeyEvent* event)
{
    if (!m_filterField->hasFocus())
        return KXBaseViewCter::keyPressEvent(event);
    switch (event->key()) {
    case Qt::Key_Escape:
        m_filterField->clear();
        return m_outlineView->setFocus();
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return leaveFilterField();
    default:
        return KXBaseViewCter::keyPressEvent(event);
    }
}

void KXArchiveContentsViewController::leaveFilterField()
{
    m_outlineView->setFocus();
    const auto first = m_outlineView->indexBelow(m_model->index(0, 0));
    if (!m_outlineView->selectedIndex().isValid() && first.isValid())
        m_outlineView->setCurrentIndex(first);
}

void KXArchiveContentsViewController::changeEvent(QEvent* event)
{
    KXBaseViewCter::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && m_presenter)
        updateButtons(); // the settings may have changed meanwhile
    if (m_filterGlyph && (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange))
        applyType();
}

}
