#include "app/DesktopHosts.h"

#include "app/AppWindow.h"
#include "app/KXPrefsDefault.h"
#include "app/SettingsWindow.h"
#include "app/WindowDrops.h"

#include "browse/KXEncodePopButton.h"
#include "extraction/KXTaskListsView.h"

#include <QTimer>

namespace vantoro {

DesktopTaskWindow::DesktopTaskWindow() = default;
DesktopTaskWindow::~DesktopTaskWindow() = default;

TaskWindow& DesktopTaskWindow::window()
{
    if (m_window)
        return *m_window;
    m_window = std::make_unique<TaskWindow>();
    m_window->taskListsView()->setResizeAction({this, &DesktopTaskWindow::listResized});
    connect(new WindowDrops(m_window.get()), &WindowDrops::filesDropped, this, &DesktopTaskWindow::filesDropped);
    // Sorting a hundred names must not delay the window.
    QTimer::singleShot(0, this, &DesktopTaskWindow::buildEncodingList);
    return *m_window;
}

TaskListPort& DesktopTaskWindow::taskLists() { return *window().taskListsView(); }

void DesktopTaskWindow::bringToFront() { bringWindowToFront(window()); }

bool DesktopTaskWindow::isVisible() const { return m_window && m_window->isVisible() && !m_window->isMinimized(); }

void DesktopTaskWindow::orderOut()
{
    if (m_window)
        m_window->orderOut();
}

void DesktopTaskWindow::listResized(KXTaskListsView*) { window().fitToList(); }

void DesktopTaskWindow::buildEncodingList()
{
    KXEncodePopButton* button = m_window->encodePopButton();
    button->buildEncodingListWithAutoDetect();
    SettingsWindow::selectDefaultEncoding(*button);
    connect(button, &QComboBox::activated, this,
            [button] { KXPrefsDefault::setFileEncode(static_cast<qint64>(button->selectedTag())); });
}

}
