#include "browse/EntryPreviewer.h"

#include "browse/OverlayWork.h"
#include "browse/PasswordGate.h"

#include <QCoreApplication>

#include <algorithm>

namespace vantoro {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(EntryPreviewer)
};

/// What the overlay's thread makes of an entry.
struct Reading {
    std::optional<QByteArray> data;
    ReadProblem problem;
    PreviewContent content;
};

qint64 sizeOf(const KXArchiveItem* item) { return item->data() ? item->data()->size() : 0; }

}

void EntryPreviewer::previewItem(const BrowsedArchive& archive, qsizetype row, ArchiveTree::Node node)
{
    if (!archive.isOpen() || !rowIsChosenEntry(row, archive.entryCount()) || m_work.isRunning())
        return;
    auto* item = archive.shown->representedObject(node);
    if (item->isFolder())
        return m_view.showPreview(folderPreview(*item, archive.shown->totals(node)));
    m_gate.pass(archive.wrapper, [this, archive, item] {
        if (m_gate.passwordCheckState() != PasswordCheckState::Rejected)
            readItem(archive, item);
    });
}

void EntryPreviewer::readItem(const BrowsedArchive& archive, KXArchiveItem* item)
{
    auto reading = std::make_shared<Reading>();
    reading->data = item->data();
    m_work.run({.label = Texts::tr("Reading “%1”…").arg(item->fileName()),
                .block =
                    [wrapper = archive.wrapper, item, reading](OverlayProgress&) {
                        if (!reading->data)
                            reading->data = wrapper->itemDataForItem(item, &reading->problem);
                        reading->content = previewContent(*item, reading->data, reading->problem);
                    },
                .cancel = [wrapper = archive.wrapper] { wrapper->stop(); },
                .finished =
                    [this, wrapper = archive.wrapper, item, reading] {
                        if (reading->problem.kind == ReadProblem::Kind::Stopped)
                            return;
                        item->setData(std::move(reading->data));
                        quicklookItem(item, reading->content);
                    }});
}

void EntryPreviewer::quicklookItem(KXArchiveItem* item, const PreviewContent& content)
{
    keepWithinLimit(item);
    m_view.showPreview(content);
}

void EntryPreviewer::keepWithinLimit(KXArchiveItem* item)
{
    std::erase(m_kept, item);
    m_kept.push_back(item);
    qint64 total = 0;
    for (const auto* kept : m_kept)
        total += sizeOf(kept);
    while (m_kept.size() > 1 && total > KXUnarchiveWrapper::previewLimit()) {
        total -= sizeOf(m_kept.front());
        m_kept.front()->setData(std::nullopt);
        m_kept.pop_front();
    }
}

}
