#include "extraction/KXMultipleTasksView.h"

#include "extraction/KXTaskListsView.h"
#include "extraction/TaskPanel.h"

#include <QEvent>

namespace vantoro {

void KXMultipleTasksView::setDisplayedView(TaskPanel* panel)
{
    if (m_displayed != panel) {
        if (m_displayed)
            m_displayed->hide();
        m_displayed = panel;
        panel->setParent(this);
    }
    panel->show();
    fitHeight();
}

void KXMultipleTasksView::fitHeight()
{
    if (!m_displayed)
        return;
    const int height = m_displayed->heightAtWidth(width());
    m_displayed->setGeometry(0, 0, width(), height);
    if (auto* list = taskListsView(); list && list->containsTaskView(this))
        list->setHeightForView(height, this);
    else if (height != this->height())
        resize(width(), height);
}

QSize KXMultipleTasksView::sizeHint() const { return m_displayed ? m_displayed->sizeHint() : QSize(); }

void KXMultipleTasksView::resizeEvent(QResizeEvent* event)
{
    DDTaskView::resizeEvent(event);
    fitHeight();
}

bool KXMultipleTasksView::event(QEvent* event)
{
    const bool result = DDTaskView::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::FontChange)
        fitHeight();
    return result;
}

}
