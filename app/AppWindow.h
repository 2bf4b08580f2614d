#pragma once

#include <QWidget>

class QAbstractButton;
class QMenu;
class QScrollArea;

namespace vantoro {

/// A window of the program: its way to the front, no larger than the screen, and movable by its ground.
class AppWindow : public QWidget {
    Q_OBJECT
public:
    enum class Escape { Ignored, Closes };
    explicit AppWindow(Escape escape = Escape::Ignored);

    void bringToFront();
    /// At most what the screen has to give.
    void resizeWithinScreen(QSize wanted);

protected:
    /// Makes `content` all that the window shows; it scrolls where the window is lower.
    QScrollArea* fillWith(QWidget* content);
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    Escape m_escape;
};

/// Shows the window, or takes it out of its icon, in front of the others and with the keyboard.
void bringWindowToFront(QWidget& window);
/// Opens the menu at the button's clicks, below or above it, from its leading edge or, where there is no room, to its
/// trailing one. Unlike the toolkit's own way it does not keep who clicks, such as assistive technology, waiting.
void attachMenu(QAbstractButton* button, QMenu* menu);
/// What the screen leaves of `wanted` for a window with its frame.
QSize sizeWithinScreen(const QWidget& window, QSize wanted);

}
