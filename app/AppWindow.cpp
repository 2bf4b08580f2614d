#include "app/AppWindow.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QWindow>

namespace vantoro {
namespace {

constexpr int kFrame = 40; // of a title bar and a panel's shadow, in pixels

}

void bringWindowToFront(QWidget& window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
    if (QWindow* handle = window.windowHandle())
        handle->requestActivate(); // with the activation token of the call, where the desktop wants one
}

void attachMenu(QAbstractButton* button, QMenu* menu)
{
    QObject::connect(button, &QAbstractButton::clicked, menu, [button, menu] {
        const QSize size = menu->sizeHint();
        const QRect area = button->screen()->availableGeometry();
        const QRect window(button->window()->mapToGlobal(QPoint()), button->window()->size());
        QRect place(button->mapToGlobal(QPoint(0, button->height())), size);
        if (button->isRightToLeft() || place.right() > window.right())
            place.moveRight(button->mapToGlobal(QPoint(button->width() - 1, 0)).x());
        if (button->isRightToLeft() && place.left() < window.left())
            place.moveLeft(button->mapToGlobal(QPoint()).x());
        if (place.bottom() > area.bottom())
            place.moveBottom(button->mapToGlobal(QPoint()).y() - 1);
        menu->popup(place.topLeft());
    });
}

QSize sizeWithinScreen(const QWidget& window, QSize wanted)
{
    return wanted.boundedTo(window.screen()->availableSize() - QSize(kFrame, kFrame));
}

AppWindow::AppWindow(Escape escape) : m_escape(escape) {}

void AppWindow::bringToFront() { bringWindowToFront(*this); }

void AppWindow::resizeWithinScreen(QSize wanted) { resize(sizeWithinScreen(*this, wanted)); }

QScrollArea* AppWindow::fillWith(QWidget* content)
{
    auto* scroll = new QScrollArea(this);
    scroll->setWidget(content);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(scroll);
    return scroll;
}

void AppWindow::keyPressEvent(QKeyEvent* event)
{
    if (m_escape == Escape::Closes && event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void AppWindow::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && windowHandle())
        windowHandle()->startSystemMove();
    else
        QWidget::mousePressEvent(event);
}

}
