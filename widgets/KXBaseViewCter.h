#pragma once

#include "widgets/MASPreferencesWindowController.h"

#include <QColor>
#include <QWidget>

namespace vantoro {

/// What the two pages of the main windows, browsing and compressing, have in common: each is a widget that a tabbed
/// window or a plain one can show. A window calls viewWillAppear() and viewWillDisappear() around the page's stay.
class KXBaseViewCter : public QWidget, public MASPreferencesViewController {
    Q_OBJECT

public:
    using QWidget::QWidget;

    QWidget* view() override { return this; }

    QObject* delegate() const { return m_delegate; }
    void setDelegate(QObject* delegate) { m_delegate = delegate; }
    QColor color() const { return m_color; }
    void setColor(const QColor& color) { m_color = color; }

private:
    QObject* m_delegate = nullptr;
    QColor m_color;
};

}
