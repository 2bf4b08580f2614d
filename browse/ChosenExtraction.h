#pragma once

#include "browse/BrowsedArchive.h"

#include "files/AppSandboxFileAccess.h"
#include "platform/Panels.h"

#include <QObject>

namespace vantoro {

class BrowserHost;
class BrowserView;
class OverlayWork;
class PasswordGate;

/// Extracts what the user picked in the tree: through a job of the controller, but from a zip right here. Main thread.
class ChosenExtraction final : public QObject {
    Q_OBJECT

public:
    /// All outlive this.
    struct Surroundings {
        BrowserView& view;
        BrowserHost& host;
        PanelService& panels;
        OverlayWork& work;
        PasswordGate& gate;
        const BrowsedArchive& archive; ///< the one that is open at this moment
    };
    explicit ChosenExtraction(const Surroundings& around);

    /// The node at a row of the outline; -1 where nothing is chosen. What counts as no choice extracts everything.
    void toggleExtractSelectedItem(qsizetype row, ArchiveTree::Node node);

signals:
    /// Entries of a zip that are done, and what could not be done, one line each.
    void extracted(qsizetype entries, const QStringList& problems);

private:
    void startToExtract(const BrowsedArchive& archive);
    void extractBesideArchive(const BrowsedArchive& archive);
    void customExtract(const BrowsedArchive& archive);
    void extractBeing(const BrowsedArchive& archive);
    void extractEntries(const BrowsedArchive& archive, std::vector<quint64> indices);

    Surroundings m_around;
    AppSandboxFileAccess m_fileAccess;
    QString m_destArchivePath;
};

/// Entry numbers of the leaves at and beneath a node, in the tree's order: what a zip extracts for it. Folders that
/// hold something come into being through what they hold.
std::vector<quint64> leafEntries(const ArchiveTree& tree, ArchiveTree::Node node);

}
