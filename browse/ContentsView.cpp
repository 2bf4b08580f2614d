#include "browse/ContentsView.h"

#include "browse/ArchiveOutlineView.h"
#include "browse/ArchiveTreeModel.h"
#include "browse/BrowserHost.h"
#include "browse/ContentsPresenter.h"
#include "browse/PasswordPrompt.h"
#include "browse/PreviewWindow.h"

#include "widgets/ElidedLabel.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

namespace vantoro {
namespace {

class WorkProgress final : public OverlayProgress {
public:
    explicit WorkProgress(ProgressOverlay::Work& work) : m_work(work) {}
    void setProgress(double fraction) override { m_work.setProgress(fraction); }
    void setDetail(const QString& text) override { m_work.setDetail(text); }

private:
    ProgressOverlay::Work& m_work;
};

}

void KXArchiveContentsViewController::View::showWhileExecuting(OverlayTask task)
{
    m_HUD = new ProgressOverlay(task.cover == OverlayTask::Cover::Page ? &m_page : m_page.window());
    m_HUD->setAccent(theme::Accent::Extract);
    m_HUD->setDimsBackground(task.dims);
    m_HUD->setLabelText(task.label);
    m_HUD->setCancellable(static_cast<bool>(task.cancel));
    if (task.cancel)
        QObject::connect(m_HUD, &ProgressOverlay::cancelled, &m_page, task.cancel);
    m_HUD->showWhileExecuting(
        [block = std::move(task.block)](ProgressOverlay::Work& work) {
            WorkProgress progress(work);
            block(progress);
        },
        [this, finished = std::move(task.finished)] {
            finished();
            keepKeyboard();
        });
}

/// A dialog that went before the work began leaves the keyboard with nobody.
void KXArchiveContentsViewController::View::keepKeyboard()
{
    const auto* focused = m_page.window()->focusWidget();
    if (m_page.m_outlineView->isVisible() && (!focused || !m_page.isAncestorOf(focused)))
        m_page.m_outlineView->setFocus();
}

void KXArchiveContentsViewController::View::endOverlay()
{
    if (m_HUD && m_HUD->isExecuting())
        std::unique_ptr<ProgressOverlay>(m_HUD.data()).reset();
}

void KXArchiveContentsViewController::View::showTree(std::shared_ptr<const ArchiveTree> tree,
                                                     const QString& archivePath)
{
    const bool hasTree = tree && tree->hasChildren();
    m_page.m_filterDelay->stop();
    m_page.m_filterField->clear();
    m_page.m_model->setTree(std::move(tree), archivePath);
    m_page.m_toolBoxView->setVisible(hasTree);
    m_page.setDropViewHidden(!hasTree);
    m_page.setBtnEnable(hasTree);
    if (!hasTree)
        return m_page.m_statusLine->clear();
    const auto root = m_page.m_model->index(0, 0);
    m_page.m_outlineView->expand(root);
    m_page.m_outlineView->setAccessibleName(
        vantoro::KXArchiveContentsViewController::tr("Contents of %1").arg(root.data(Qt::DisplayRole).toString()));
    m_page.m_outlineView->selectionModel()->setCurrentIndex(root, QItemSelectionModel::NoUpdate);
    m_page.m_outlineView->setFocus();
}

void KXArchiveContentsViewController::View::showRows(std::shared_ptr<const ArchiveTree> tree, bool areFiltered)
{
    const auto nodes = tree->nodeCount();
    m_page.m_model->setTree(std::move(tree), m_page.m_presenter->archive().path());
    if (areFiltered)
        m_page.m_outlineView->openAll(nodes);
    else
        m_page.m_outlineView->expand(m_page.m_model->index(0, 0));
    m_page.updateButtons();
}

void KXArchiveContentsViewController::View::showStatus(const QString& text) { m_page.m_statusLine->setText(text); }

void KXArchiveContentsViewController::View::showInformation(const QString& reason)
{
    auto* box = new QMessageBox(QMessageBox::Information, vantoro::KXArchiveContentsViewController::tr("Information"),
                                vantoro::KXArchiveContentsViewController::tr(
                                    "DO NOT support quicklook this archive, please close 'Preview an archive's "
                                    "file list without extraction' in Preferences Panel to extract directly"),
                                QMessageBox::NoButton, m_page.window());
    box->setInformativeText(reason);
    auto* ok = box->addButton(vantoro::KXArchiveContentsViewController::tr("OK"), QMessageBox::AcceptRole);
    box->setEscapeButton(nullptr);
    QObject::connect(ok, &QAbstractButton::clicked, &m_page, [host = &m_page.m_host] { host->openPrefsWindow(); });
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void KXArchiveContentsViewController::View::showNotice(Notice notice)
{
    const bool isPassword = notice == Notice::WrongPassword;
    ProgressOverlay::showMessage(m_page.window(), QStringLiteral("glyph-warning"),
                                 isPassword ? vantoro::KXArchiveContentsViewController::tr("Wrong Password!")
                                            : vantoro::KXArchiveContentsViewController::tr("This archive is empty"));
}

void KXArchiveContentsViewController::View::showPWDPanel(const QString& archiveName)
{
    m_page.m_passWdPanel->ask(archiveName);
}
void KXArchiveContentsViewController::View::closePWDPanel() { m_page.m_passWdPanel->dismiss(); }

void KXArchiveContentsViewController::View::showPreview(const PreviewContent& content)
{
    EntryIcons icons;
    m_page.quicklookWindow().showContent(content, icons.iconForPath(content.itemPath, content.isFolder));
    m_page.setBtnEnable(true);
}

void KXArchiveContentsViewController::View::kx_close() { m_page.closePreview(); }

ArchiveTree::Node KXArchiveContentsViewController::View::selectedNode() const
{
    return m_page.m_model->nodeAt(m_page.m_outlineView->selectedIndex());
}

}
