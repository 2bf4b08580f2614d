#pragma once

#include "app/AppHosts.h"

#include "extraction/TaskWindow.h"

#include <QObject>

#include <functional>
#include <memory>

namespace vantoro {

class AppDelegate;
class StartWindow;

/// The task window on the screen.
class DesktopTaskWindow final : public QObject, public TaskWindowHost {
    Q_OBJECT
public:
    DesktopTaskWindow();
    ~DesktopTaskWindow() override;

    TaskListPort& taskLists() override;
    void bringToFront() override;
    void orderOut() override { m_window.orderOut(); }
    bool isActive() const override { return m_window.isActiveWindow(); }

    QWidget* window() { return &m_window; }
    /// Fills the choice of encodings, and selects what the settings hold: the last item, which is the separator, when
    /// they hold none.
    void buildEncodingList();

signals:
    void filesDropped(const QStringList& paths);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void listResized(KXTaskListsView* list);

    TaskWindow m_window;
};

/// The main windows; until one with pages exists, a window for archives to be dropped on stands for all of them.
class DesktopMainWindows final : public MainWindowsHost {
public:
    DesktopMainWindows();
    ~DesktopMainWindows() override;
    /// Before the first call that shows a window.
    void setDelegate(AppDelegate& delegate) { m_delegate = &delegate; }

    void showTwoPageWindow() override;
    void hideTwoPageWindow() override;
    bool isTwoPageWindowVisible() const override;
    void showSinglePageWindow() override { showTwoPageWindow(); }
    void hideSinglePageWindow() override { hideTwoPageWindow(); }
    bool isSinglePageWindowVisible() const override { return false; }
    void setTableViewEnable(bool) override {}
    void showPrefsWindow() override { showTwoPageWindow(); }
    void browseArchive(const QString& path) override;
    void compressFiles(const QStringList&) override { showTwoPageWindow(); }

private:
    AppDelegate* m_delegate = nullptr;
    std::unique_ptr<StartWindow> m_window;
};

}
