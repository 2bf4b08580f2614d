#pragma once

#include "extraction/DDTaskView.h"

namespace vantoro {

class TaskPanel;

/// A row that shows one of several panels and takes that panel's height.
class KXMultipleTasksView : public DDTaskView {
    Q_OBJECT

public:
    using DDTaskView::DDTaskView;

    void setDisplayedView(TaskPanel* panel);
    TaskPanel* displayedView() const { return m_displayed; }

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    void fitHeight();

    TaskPanel* m_displayed = nullptr;
};

}
