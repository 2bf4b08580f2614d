#include "app/WindowDrops.h"

#include "widgets/DropArea.h"

#include <QDropEvent>

namespace vantoro {

WindowDrops::WindowDrops(QWidget* window) : QObject(window)
{
    window->setAcceptDrops(true);
    window->installEventFilter(this);
}

bool WindowDrops::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::DragEnter) {
        auto* drag = static_cast<QDragEnterEvent*>(event);
        if (!DropArea::offersFiles(drag->mimeData()))
            return false;
        drag->setDropAction(Qt::CopyAction); // never moves what it was given
        drag->accept();
        return true;
    }
    if (event->type() == QEvent::Drop) {
        auto* drop = static_cast<QDropEvent*>(event);
        drop->setDropAction(Qt::CopyAction);
        drop->accept();
        emit filesDropped(DropArea::localPaths(drop->mimeData()));
        return true;
    }
    return QObject::eventFilter(watched, event);
}

}
