#include "platform/Panels.h"

namespace vantoro {
namespace {

class NoPanels final : public PanelService {
public:
    void runOpenPanel(const OpenPanel&, Action<PanelResult> finishAction) override { finishAction.later(std::nullopt); }
    void runSavePanel(const SavePanel&, Action<PanelResult> finishAction) override { finishAction.later(std::nullopt); }
};

PanelService* g_service = nullptr; // main thread

}

PanelService& PanelService::shared()
{
    static NoPanels none;
    return g_service ? *g_service : none;
}

void PanelService::setShared(PanelService* service) { g_service = service; }

}
