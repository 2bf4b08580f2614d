#include "app/DesktopHosts.h"

#include "app/AppDelegate.h"
#include "app/KXPrefsDefault.h"
#include "app/StartWindow.h"

#include "browse/KXEncodePopButton.h"
#include "extraction/KXTaskListsView.h"
#include "widgets/DropArea.h"

#include <QApplication>
#include <QDropEvent>
#include <QWindow>

namespace vantoro {

DesktopTaskWindow::DesktopTaskWindow()
{
    m_window.setAcceptDrops(true);
    m_window.installEventFilter(this);
    m_window.taskListsView()->setResizeAction({this, &DesktopTaskWindow::listResized});
}

DesktopTaskWindow::~DesktopTaskWindow() = default;

TaskListPort& DesktopTaskWindow::taskLists() { return *m_window.taskListsView(); }

void DesktopTaskWindow::bringToFront()
{
    m_window.bringToFront();
    if (QWindow* handle = m_window.windowHandle())
        handle->requestActivate(); // with the activation token of the launch, where the desktop wants one
}

void DesktopTaskWindow::listResized(KXTaskListsView*) { m_window.fitToList(); }

void DesktopTaskWindow::buildEncodingList()
{
    KXEncodePopButton* button = m_window.encodePopButton();
    button->buildEncodingListWithAutoDetect();
    const auto encoding = static_cast<CharsetId>(KXPrefsDefault::fileEncode());
    if (encoding == kCharsetUnknown || !button->selectItemWithTag(encoding))
        button->selectItemAtIndex(button->count() - 1);
    connect(button, &QComboBox::activated, this,
            [button] { KXPrefsDefault::setFileEncode(static_cast<qint64>(button->selectedTag())); });
}

bool DesktopTaskWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::DragEnter) {
        auto* drag = static_cast<QDragEnterEvent*>(event);
        if (!DropArea::offersFiles(drag->mimeData()))
            return false;
        drag->acceptProposedAction();
        return true;
    }
    if (event->type() == QEvent::Drop) {
        auto* drop = static_cast<QDropEvent*>(event);
        drop->acceptProposedAction();
        emit filesDropped(DropArea::localPaths(drop->mimeData()));
        return true;
    }
    return QObject::eventFilter(watched, event);
}

DesktopMainWindows::DesktopMainWindows() = default;
DesktopMainWindows::~DesktopMainWindows() = default;

void DesktopMainWindows::showTwoPageWindow()
{
    if (!m_window)
        m_window = std::make_unique<StartWindow>(*m_delegate);
    m_window->bringToFront();
}

void DesktopMainWindows::hideTwoPageWindow()
{
    if (m_window)
        m_window->hide();
}

bool DesktopMainWindows::isTwoPageWindowVisible() const { return m_window && m_window->isVisible(); }

void DesktopMainWindows::browseArchive(const QString& path)
{
    m_delegate->extractPaths({path},
                             KXPrefsDefault::extractToCurrent() ? DestinationType::Current : DestinationType::Ask);
}

}
