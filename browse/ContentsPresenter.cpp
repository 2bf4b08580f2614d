#include "browse/ContentsPresenter.h"

#include "browse/ArchiveTexts.h"
#include "browse/BrowserHost.h"

#include "app/KXPrefsDefault.h"
#include "platform/XADException.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>
#include <QThreadPool>

namespace vantoro {

/// What the overlay's thread makes of a path, and how that thread is reached.
struct ContentsPresenter::Opening {
    CancelToken cancel;
    std::atomic<OverlayProgress*> progress{nullptr}; // while the work runs
    std::shared_ptr<KXUnarchiveWrapper> wrapper;
    std::shared_ptr<const ArchiveTree> tree;

    void listed(qsizetype entries) const
    {
        if (auto* overlay = progress.load())
            overlay->setDetail(texts::entryCount(entries));
    }
};

ContentsPresenter::ContentsPresenter(BrowserView& view, BrowserHost& host, PanelService& panels)
    : m_view(view)
    , m_host(host)
    , m_work(view)
    , m_gate(view, m_work)
    , m_previewer(view, m_work, m_gate)
    , m_extraction({view, host, panels, m_work, m_gate, m_archive})
{
    connect(&m_extraction, &ChosenExtraction::extracted, this, &ContentsPresenter::showExtracted);
}

ContentsPresenter::~ContentsPresenter() { stopSkeleton(); }

void ContentsPresenter::stop() { m_work.stop(); }

void ContentsPresenter::getArchiveContainerWithPath(const QString& path)
{
    m_work.stopThen([this, path] { openArchive(path); });
}

void ContentsPresenter::openArchive(const QString& path)
{
    m_view.kx_close();
    clearAllFiles();
    if (!KXPrefsDefault::listArchive())
        return m_host.unarchiveZip(path);
    auto opening = std::make_shared<Opening>();
    auto open = [path, opening](OverlayProgress& progress) {
        opening->progress = &progress;
        const ListingWatch watch{.listed =
                                     [about = std::weak_ptr(opening)](qsizetype entries) {
                                         if (const auto target = about.lock())
                                             target->listed(entries);
                                     },
                                 .cancel = opening->cancel};
        opening->wrapper = KXUnarchiveWrapper::initWithPath(path, watch);
        if (opening->wrapper->archive()) {
            opening->wrapper->listContents();
            opening->tree = ArchiveTree::generateTree(*opening->wrapper);
        }
        opening->progress = nullptr;
    };
    m_work.run({.label = tr("Opening “%1”…").arg(QFileInfo(path).fileName()),
                .block = std::move(open),
                .cancel = [cancel = opening->cancel] { cancel.cancel(); },
                .finished = [this, opening] { startLoading(opening); }});
}

void ContentsPresenter::startLoading(const std::shared_ptr<Opening>& opening)
{
    if (!opening->wrapper || opening->cancel.isCancelled() || opening->wrapper->openingError() == XADException::kBreak)
        return clearAllFiles();
    if (!opening->wrapper->archive()) {
        m_view.showInformation(QFileInfo(opening->wrapper->archivePath()).fileName() + QStringLiteral(": ")
                               + XADException::describeXADError(opening->wrapper->openingError()));
        return clearAllFiles();
    }
    m_listingCancel = opening->cancel;
    m_archive = {opening->wrapper, opening->tree, opening->tree};
    if (opening->wrapper->needsPasswordToList())
        askForListing();
    else
        reloadDData();
}

/// The names themselves are encrypted: asked until the password is right or the user has enough.
void ContentsPresenter::askForListing()
{
    m_gate.ask(m_archive.wrapper, [this] {
        if (m_archive.wrapper->needsPasswordToList()) {
            const bool isWrong = m_gate.wasAnswered();
            return isWrong ? askForListing() : clearAllFiles();
        }
        m_archive.tree = ArchiveTree::generateTree(*m_archive.wrapper);
        m_archive.shown = m_archive.tree;
        reloadDData();
    });
}

void ContentsPresenter::reloadDData()
{
    if (m_archive.tree->hasChildren()) {
        m_view.showTree(m_archive.shown, m_archive.path());
        m_view.showStatus(status());
        return startSkeleton();
    }
    if (m_archive.entryCount() > 0)
        m_view.showInformation({});
    else
        m_view.showNotice(Notice::EmptyArchive);
    clearAllFiles();
}

void ContentsPresenter::clearAllFiles()
{
    stopSkeleton();
    m_gate.reset();
    m_previewer.reset();
    m_archive = {};
    m_filter.clear();
    ++m_search;
    m_view.showTree(nullptr, {});
}

/// The tree needs no skeleton to be shown, and the user need not wait for it.
void ContentsPresenter::startSkeleton()
{
    m_skeleton = std::thread([wrapper = m_archive.wrapper] { wrapper->buildSkeleton(); });
}

void ContentsPresenter::stopSkeleton()
{
    if (!m_skeleton.joinable())
        return;
    m_listingCancel.cancel();
    m_skeleton.join();
}

void ContentsPresenter::toggleExtractSelectedItem(qsizetype row, ArchiveTree::Node node)
{
    m_extraction.toggleExtractSelectedItem(row, node);
}

void ContentsPresenter::previewItem(qsizetype row, ArchiveTree::Node node)
{
    m_previewer.previewItem(m_archive, row, node);
}

void ContentsPresenter::setFilter(const QString& text)
{
    if (!m_archive.isOpen() || text == m_filter)
        return;
    m_filter = text;
    ++m_search;
    if (text.isEmpty())
        return showRows(m_archive.tree);
    QThreadPool::globalInstance()->start([tree = m_archive.tree, text, search = m_search, target = QPointer(this)] {
        auto rows = tree->filtered(text);
        QMetaObject::invokeMethod(
            qApp,
            [target, search, rows] {
                if (target && target->m_search == search)
                    target->showRows(rows);
            },
            Qt::QueuedConnection);
    });
}

void ContentsPresenter::showRows(std::shared_ptr<const ArchiveTree> rows)
{
    m_archive.shown = std::move(rows);
    m_view.showRows(m_archive.shown, m_archive.shown != m_archive.tree);
}

void ContentsPresenter::showExtracted(qsizetype entries, const QStringList& problems)
{
    const QString done = tr("%Ln entries extracted", nullptr, static_cast<int>(entries));
    if (problems.isEmpty())
        return m_view.showStatus(done);
    const QString first = problems.size() == 1
        ? problems.front()
        : tr("%1, and %Ln more failed", nullptr, static_cast<int>(problems.size() - 1)).arg(problems.front());
    m_view.showStatus(done + texts::separator() + first);
}

QString ContentsPresenter::status() const
{
    const QString summary = texts::summary(m_archive.wrapper->archive()->summary());
    const int error = m_archive.wrapper->openingError();
    if (error == 0)
        return summary;
    return tr("The list is incomplete: %1").arg(XADException::describeXADError(error)) + texts::separator() + summary;
}

}
