#pragma once

#include "app/AppHosts.h"
#include "tests/support/ScriptedTaskView.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace vantoro {

/// The task window without a screen. Rows that were removed are kept, so that the test can look at them.
class FakeTaskWindow final : public TaskWindowHost, private TaskListPort {
public:
    TaskListPort& taskLists() override { return *this; }
    void bringToFront() override { log += "front"; }
    void orderOut() override { log += "out"; }
    bool isVisible() const override { return visible; }
    bool isActive() const override { return active; }

    /// Called on each new row before it gets its job.
    std::function<void(ScriptedTaskView&)> prepareRow;
    std::vector<std::unique_ptr<ScriptedTaskView>> rows; ///< all that were ever made
    std::vector<TaskViewPort*> listed;
    QStringList log;
    bool active = true;
    bool visible = true; ///< the user may close it while jobs run

private:
    TaskViewPort* makeTaskView() override
    {
        auto& row = *rows.emplace_back(std::make_unique<ScriptedTaskView>());
        if (prepareRow)
            prepareRow(row);
        return &row;
    }
    void addTaskView(TaskViewPort* view) override { listed.push_back(view); }
    void removeTaskView(TaskViewPort* view) override { std::erase(listed, view); }
    bool containsTaskView(const TaskViewPort* view) const override
    {
        return std::ranges::find(listed, view) != listed.end();
    }
};

class FakeMainWindows final : public MainWindowsHost {
public:
    void showTwoPageWindow() override { twoPage = true; }
    void hideTwoPageWindow() override { twoPage = false; }
    bool isTwoPageWindowVisible() const override { return twoPage; }
    void showSinglePageWindow() override { singlePage = true; }
    void hideSinglePageWindow() override { singlePage = false; }
    bool isSinglePageWindowVisible() const override { return singlePage; }
    void setTableViewEnable(bool enable) override { log += enable ? "enable" : "disable"; }
    void showPrefsWindow() override { log += "prefs"; }
    void showHowToUseWindow() override { log += "how to"; }
    void showShortcutsWindow() override { log += "shortcuts"; }
    void showInfoWindow() override { log += "info"; }
    void browseArchive(const QString& path) override { log += "browse " + path; }
    void compressFiles(const QStringList& paths) override { log += "compress " + paths.join(' '); }
    void chooseArchive() override { log += "choose archive"; }
    void chooseFilesToCompress() override { log += "choose files"; }
    bool extractShownArchive() override
    {
        log += "extract shown";
        return showsArchive;
    }
    void quit() override { log += "quit"; }

    bool twoPage = false;
    bool singlePage = false;
    bool showsArchive = false;
    QStringList log;
};

}
