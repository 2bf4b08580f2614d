#include "app/StartWindow.h"

#include "app/AppDelegate.h"

#include "widgets/FlatButton.h"
#include "widgets/Icons.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace vantoro {

StartWindow::StartWindow(AppDelegate& delegate) : m_delegate(delegate)
{
    setWindowTitle(tr("Vantoro"));
    setWindowIcon(icons::application());
    setIllustration(icons::application());
    setSentence(tr("Drop archives here to extract them"));
    setHint(tr("or choose them from your folders"));
    button()->setText(tr("Select Archives…"));
    connect(this, &DropArea::buttonClicked, this, [this] { m_delegate.extractToOthers(); });
    resize(520, 380);
}

void StartWindow::bringToFront()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

bool StartWindow::performDrop(const QStringList& paths)
{
    for (const QString& path : paths)
        m_delegate.applicationOpenFile(path);
    return !paths.isEmpty();
}

void StartWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Quit))
        QCoreApplication::quit();
    else if (event->matches(QKeySequence::Close))
        close();
    else if (event->matches(QKeySequence::Open))
        m_delegate.extractToOthers();
    else
        DropArea::keyPressEvent(event);
}

}
