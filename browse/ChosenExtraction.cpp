#include "browse/ChosenExtraction.h"

#include "browse/BrowserHost.h"
#include "browse/OverlayWork.h"
#include "browse/PasswordGate.h"

#include "app/KXPrefsDefault.h"
#include "files/CustomePanel.h"
#include "platform/Workspace.h"
#include "platform/XADException.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace vantoro {
namespace {

constexpr qsizetype kProblemsKept = 1000;

/// What the overlay's thread tells when it is done.
struct Outcome {
    int error = 0;
    qsizetype failed = 0;
    QStringList problems;
};

}

std::vector<quint64> leafEntries(const ArchiveTree& tree, ArchiveTree::Node node)
{
    std::vector<quint64> entries;
    std::vector<ArchiveTree::Node> pending{node};
    while (!pending.empty()) {
        const auto next = pending.back();
        pending.pop_back();
        const int children = tree.childCount(next);
        for (int row = children - 1; row >= 0; --row)
            pending.push_back(tree.child(next, row));
        const auto index = children == 0 ? tree.listing().indexOfItem(tree.representedObject(next)) : -1;
        if (index >= 0)
            entries.push_back(static_cast<quint64>(index));
    }
    return entries;
}

ChosenExtraction::ChosenExtraction(const Surroundings& around) : m_around(around) {}

void ChosenExtraction::toggleExtractSelectedItem(qsizetype row, ArchiveTree::Node node)
{
    const auto& archive = m_around.archive;
    if (!archive.isOpen() || m_around.work.isRunning())
        return;
    if (!rowIsChosenEntry(row, archive.entryCount()))
        return m_around.host.unarchiveZip(archive.path());
    if (QFileInfo(archive.path()).suffix().toLower() == QLatin1String("zip"))
        return startToExtract(archive);
    auto indices = std::make_shared<const std::vector<quint64>>(archive.shown->entryIndices(node));
    if (!indices->empty())
        m_around.host.unarchiveZip(archive.path(), std::move(indices));
}

void ChosenExtraction::startToExtract(const BrowsedArchive& archive)
{
    m_around.gate.pass(archive.wrapper, [this, archive] {
        if (m_around.gate.passwordCheckState() == PasswordCheckState::Rejected)
            return;
        if (KXPrefsDefault::extractToCurrent())
            extractBesideArchive(archive);
        else
            customExtract(archive);
    });
}

void ChosenExtraction::extractBesideArchive(const BrowsedArchive& archive)
{
    const QFileInfo file(archive.path());
    if (!file.exists()) {
        qWarning("ERR: KXArchiveContentsViewController: %s: File not found!", qUtf8Printable(archive.path()));
        return customExtract(archive);
    }
    m_fileAccess.persistPermissionPath(archive.path());
    const QString folder = file.isDir() ? file.filePath() : file.absolutePath();
    m_fileAccess.accessFilePath(
        folder, true,
        [this, archive, folder] {
            m_destArchivePath = folder;
            extractBeing(archive);
        },
        [this, archive](bool allowed) {
            if (!allowed)
                customExtract(archive);
        });
}

void ChosenExtraction::customExtract(const BrowsedArchive& archive)
{
    const QString last = KXPrefsDefault::lastDestination();
    const auto panel = CustomePanel::openPanelWithTitleMessage({.message = tr("Please select the destination"),
                                                                .prompt = tr("Extract"),
                                                                .chooseFiles = false,
                                                                .chooseDirectories = true,
                                                                .createDirectories = true,
                                                                .directory = last.isEmpty() ? QDir::homePath() : last});
    m_around.panels.runOpenPanel(panel, {this, [this, archive](const PanelResult& chosen) {
                                             const QString folder
                                                 = chosen && !chosen->isEmpty() ? chosen->front().toLocalFile() : "";
                                             if (folder.isEmpty())
                                                 return;
                                             m_destArchivePath = folder;
                                             KXPrefsDefault::setLastDestination(folder);
                                             extractBeing(archive);
                                         }});
}

void ChosenExtraction::extractBeing(const BrowsedArchive& archive)
{
    if (archive.wrapper != m_around.archive.wrapper || m_around.work.isRunning())
        return; // another one was opened while the user was asked
    const auto node = m_around.view.selectedNode(); // whatever is selected by now
    if (node == ArchiveTree::kNoNode)
        return;
    extractEntries(archive, leafEntries(*m_around.archive.shown, node));
    if (KXPrefsDefault::openFolder())
        Workspace::shared().openFile(m_destArchivePath); // while entries are still being written
}

void ChosenExtraction::extractEntries(const BrowsedArchive& archive, std::vector<quint64> indices)
{
    auto outcome = std::make_shared<Outcome>();
    const auto count = static_cast<qsizetype>(indices.size());
    auto extract = [wrapper = archive.wrapper, indices = std::move(indices), folder = m_destArchivePath,
                    outcome](OverlayProgress& progress) {
        const XADExtractionWatch watch{.progressed =
                                           [&progress](double fraction, const QString& entry) {
                                               progress.setProgress(fraction);
                                               progress.setDetail(QFileInfo(entry).fileName());
                                           },
                                       .failed =
                                           [outcome](const QString& entry, int error) {
                                               ++outcome->failed;
                                               if (outcome->problems.size() < kProblemsKept)
                                                   outcome->problems << entry + QStringLiteral(": ")
                                                           + XADException::describeXADError(error);
                                           }};
        outcome->error = wrapper->archive()->extractEntries(indices, folder, watch);
    };
    m_around.work.run({.label = tr("Extracting…"),
                       .cover = OverlayTask::Cover::Page,
                       .dims = false,
                       .block = std::move(extract),
                       .cancel = [wrapper = archive.wrapper] { wrapper->stop(); },
                       .finished =
                           [this, outcome, count, path = archive.path()] {
                               if (outcome->error == XADException::kBreak)
                                   return;
                               if (outcome->error != 0 && outcome->failed == 0)
                                   outcome->problems << QFileInfo(path).fileName() + QStringLiteral(": ")
                                           + XADException::describeXADError(outcome->error);
                               emit extracted(count - outcome->failed, outcome->problems);
                           }});
}

}
