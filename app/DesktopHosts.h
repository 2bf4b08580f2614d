#pragma once

#include "app/AppHosts.h"

#include "extraction/TaskWindow.h"

#include <QObject>

#include <memory>

namespace vantoro {

/// The task window on the screen, made when it is first needed.
class DesktopTaskWindow final : public QObject, public TaskWindowHost {
    Q_OBJECT
public:
    DesktopTaskWindow();
    ~DesktopTaskWindow() override;

    TaskListPort& taskLists() override;
    void bringToFront() override;
    void orderOut() override;
    bool isVisible() const override;
    bool isActive() const override { return m_window && m_window->isActiveWindow(); }

    /// Null while it is not shown.
    QWidget* visibleWindow() const { return m_window && m_window->isVisible() ? m_window.get() : nullptr; }

signals:
    void filesDropped(const QStringList& paths);

private:
    TaskWindow& window();
    void buildEncodingList();
    void listResized(KXTaskListsView* list);

    std::unique_ptr<TaskWindow> m_window;
};

}
