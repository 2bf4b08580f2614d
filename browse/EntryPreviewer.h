#pragma once

#include "browse/BrowsedArchive.h"

#include <deque>

namespace vantoro {

class BrowserView;
class OverlayWork;
class PasswordGate;
struct PreviewContent;

/// Reads an entry into memory and shows it; writes no file. What was read stays in the items while the archive is open,
/// within KXUnarchiveWrapper::previewLimit() for all of them together: the oldest give way. Main thread.
class EntryPreviewer {
public:
    EntryPreviewer(BrowserView& view, OverlayWork& work, PasswordGate& gate) : m_view(view), m_work(work), m_gate(gate)
    {
    }

    /// `row` counts the outline's rows; rows that are no choice preview nothing.
    void previewItem(const BrowsedArchive& archive, qsizetype row, ArchiveTree::Node node);
    /// The archive goes, and its items with it.
    void reset() { m_kept.clear(); }

private:
    void readItem(const BrowsedArchive& archive, KXArchiveItem* item);
    void quicklookItem(KXArchiveItem* item, const PreviewContent& content);
    void keepWithinLimit(KXArchiveItem* item);

    BrowserView& m_view;
    OverlayWork& m_work;
    PasswordGate& m_gate;
    std::deque<KXArchiveItem*> m_kept; // items with data, oldest first
};

}
