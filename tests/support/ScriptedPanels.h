#pragma once

#include "platform/Panels.h"

#include <deque>
#include <vector>

namespace vantoro {

/// The shared panels for as long as it lives: answers each open panel with the next of the answers, and cancels when
/// there is none left.
class ScriptedPanels final : public PanelService {
public:
    ScriptedPanels() { setShared(this); }
    ~ScriptedPanels() override { setShared(nullptr); }

    void runOpenPanel(const OpenPanel& panel, Action<PanelResult> finishAction) override
    {
        shown.push_back(panel);
        finishAction.later(nextAnswer());
    }
    void runSavePanel(const SavePanel&, Action<PanelResult> finishAction) override { finishAction.later(nextAnswer()); }

    void choose(const QString& path) { answers.push_back(QList<QUrl>{QUrl::fromLocalFile(path)}); }

    std::vector<OpenPanel> shown;
    std::deque<PanelResult> answers;

private:
    PanelResult nextAnswer()
    {
        if (answers.empty())
            return std::nullopt;
        PanelResult answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

}
