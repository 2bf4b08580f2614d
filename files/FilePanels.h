#pragma once

#include "platform/Panels.h"

class QWidget;

namespace vantoro {

/// Panels as file dialogs of the desktop, or of Qt's own making where the desktop's cannot do what is asked.
class FilePanels final : public PanelService {
public:
    /// Asked at each panel for the window that it blocks; null where there is none.
    explicit FilePanels(std::function<QWidget*()> sheetParent) : m_sheetParent(std::move(sheetParent)) {}

    void runOpenPanel(const OpenPanel& panel, Action<PanelResult> finishAction) override;
    void runSavePanel(const SavePanel& panel, Action<PanelResult> finishAction) override;

private:
    std::function<QWidget*()> m_sheetParent;
};

}
