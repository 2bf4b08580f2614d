#pragma once

#include <QElapsedTimer>
#include <QWidget>

namespace vantoro {

/// A small window attached to a place on the screen. Transient: it goes when the user turns to something else, if only
/// by a click on the empty desktop.
class Popover final : public QWidget {
    Q_OBJECT
public:
    /// Takes the content into its tree.
    explicit Popover(QWidget* content);

    /// Below the frame, or above it where there is no room, and always whole on the screen.
    void showRelativeTo(const QRect& frame);
    /// The place for a panel of this size.
    static QRect placeFor(QSize size, const QRect& frame, const QRect& screen, Qt::LayoutDirection direction);
    /// It went just now, by the very click that is being answered.
    bool hasJustClosed() const;

signals:
    void closed();

protected:
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void takePointer(int attempts);

    QElapsedTimer m_sinceClosed;
};

}
