#include "app/Popover.h"

#include "widgets/Theme.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

namespace vantoro {
namespace {

constexpr int kOneClickMs = 300;
constexpr int kGrabAgainMs = 50;
constexpr int kGrabAttempts = 40;

}

// A window of the type for pop-ups would not be in the accessibility tree.
Popover::Popover(QWidget* content) : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("popover"));
    setWindowTitle(tr("Vantoro"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(content);
}

QRect Popover::placeFor(QSize size, const QRect& frame, const QRect& screen, Qt::LayoutDirection direction)
{
    QRect place(QPoint(), size);
    if (direction == Qt::LeftToRight)
        place.moveRight(frame.right());
    else
        place.moveLeft(frame.left());
    place.moveTop(frame.bottom() + 1 + theme::kSpaceXs);
    if (place.bottom() > screen.bottom())
        place.moveBottom(frame.top() - 1 - theme::kSpaceXs);
    place.moveLeft(qMax(screen.left(), qMin(place.left(), screen.right() - size.width() + 1)));
    place.moveTop(qMax(screen.top(), qMin(place.top(), screen.bottom() - size.height() + 1)));
    return place;
}

void Popover::showRelativeTo(const QRect& frame)
{
    adjustSize();
    const QScreen* at = QGuiApplication::screenAt(frame.center());
    const QRect area = (at ? at : QGuiApplication::primaryScreen())->availableGeometry();
    setGeometry(placeFor(sizeHint(), frame, area, layoutDirection()));
    show();
    raise();
    activateWindow();
    if (QGuiApplication::platformName() == QLatin1String("xcb"))
        takePointer(kGrabAttempts);
}

/// Without it nobody tells of a click that moves no focus. The window may not be on the screen yet, and the panel may
/// still hold the pointer for the click that led here; the toolkit does not say whether it got it.
void Popover::takePointer(int attempts)
{
    if (!isVisible() || attempts == 0)
        return;
    windowHandle()->setMouseGrabEnabled(true);
    QTimer::singleShot(kGrabAgainMs, this, [this, attempts] { takePointer(attempts - 1); });
}

bool Popover::hasJustClosed() const { return m_sinceClosed.isValid() && m_sinceClosed.elapsed() < kOneClickMs; }

void Popover::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_sinceClosed.start();
    emit closed();
}

void Popover::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && !isActiveWindow())
        hide();
}

void Popover::mousePressEvent(QMouseEvent* event)
{
    if (!rect().contains(event->position().toPoint()))
        hide();
}

void Popover::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QWidget::keyPressEvent(event);
}

}
