#pragma once

#include "widgets/DropArea.h"

namespace vantoro {

class AppDelegate;

/// What the user sees without an archive: a place to drop archives on, and a button to choose them.
class StartWindow final : public DropArea {
    Q_OBJECT
public:
    explicit StartWindow(AppDelegate& delegate);
    void bringToFront();

protected:
    bool performDrop(const QStringList& paths) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    AppDelegate& m_delegate;
};

}
