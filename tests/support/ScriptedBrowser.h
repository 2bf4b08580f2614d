#pragma once

#include "browse/BrowserHost.h"
#include "browse/BrowserView.h"

#include <QStringList>

namespace vantoro {

/// A page without widgets: does its work at once and writes down what it is told.
class ScriptedBrowserView final : public BrowserView {
public:
    void showWhileExecuting(OverlayTask task) override
    {
        struct Silent final : OverlayProgress {
            void setProgress(double) override {}
            void setDetail(const QString&) override {}
        } progress;
        log += "work: " + task.label;
        if (cancelsWork)
            task.cancel();
        task.block(progress);
        task.finished();
    }
    void showTree(std::shared_ptr<const ArchiveTree> shown, const QString&) override { tree = std::move(shown); }
    void showRows(std::shared_ptr<const ArchiveTree> shown, bool) override { tree = std::move(shown); }
    void showStatus(const QString& text) override { status = text; }
    void showInformation(const QString& reason) override { log += "information: " + reason; }
    void showNotice(Notice notice) override
    {
        log += notice == Notice::WrongPassword ? "notice: wrong password" : "notice: empty archive";
    }
    void showPWDPanel(const QString& archiveName) override { log += "password of " + archiveName; }
    void closePWDPanel() override {}
    void showPreview(const PreviewContent& content) override { previews.push_back(content); }
    void kx_close() override {}
    ArchiveTree::Node selectedNode() const override { return selected; }

    std::shared_ptr<const ArchiveTree> tree;
    ArchiveTree::Node selected = ArchiveTree::kNoNode;
    bool cancelsWork = false;
    QString status;
    QStringList log;
    std::vector<PreviewContent> previews;
};

/// Writes down what it is asked to do.
class RecordingBrowserHost final : public BrowserHost {
public:
    void unarchiveZip(const QString& path) override { log += "all of " + path.section('/', -1); }
    void unarchiveZip(const QString& path, std::shared_ptr<const std::vector<quint64>> numArray) override
    {
        QStringList numbers;
        for (const quint64 number : *numArray)
            numbers += QString::number(number);
        log += numbers.join(' ') + " of " + path.section('/', -1);
    }
    void openPrefsWindow() override { log += "settings"; }
    void setMainTableViewEnable(bool) override {}

    QStringList log;
};

}
