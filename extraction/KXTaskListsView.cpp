#include "extraction/KXTaskListsView.h"

#include "extraction/KXArchiveTaskView.h"
#include "widgets/Theme.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace vantoro {
namespace {

constexpr int kGap = 1;

}

KXTaskListsView::KXTaskListsView(QWidget* parent) : QWidget(parent)
{
    setAccessibleName(tr("Extractions"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
}

KXTaskListsView::~KXTaskListsView() = default;

std::vector<KXTaskListsView::Row>::iterator KXTaskListsView::find(const DDTaskView* taskView)
{
    return std::find_if(m_rows.begin(), m_rows.end(), [taskView](const Row& row) { return row.view == taskView; });
}

void KXTaskListsView::addTaskView(DDTaskView* taskView)
{
    if (containsTaskView(taskView))
        return;
    taskView->setParent(this);
    m_rows.push_back({taskView, taskView->height()});
    taskView->resize(width(), taskView->height());
    taskView->show();
    layoutSubviews();
    emit taskCountChanged(taskCount());
}

void KXTaskListsView::removeTaskView(DDTaskView* taskView)
{
    const auto row = find(taskView);
    if (row == m_rows.end())
        return;
    m_rows.erase(row);
    taskView->hide();
    taskView->setParent(nullptr);
    if (auto* archiveView = qobject_cast<KXArchiveTaskView*>(taskView))
        archiveView->deleteWhenUnused();
    else
        taskView->deleteLater();
    layoutSubviews();
    emit taskCountChanged(taskCount());
}

bool KXTaskListsView::containsTaskView(const DDTaskView* taskView) const
{
    return std::any_of(m_rows.begin(), m_rows.end(), [taskView](const Row& row) { return row.view == taskView; });
}

void KXTaskListsView::setHeightForView(int height, DDTaskView* taskView)
{
    const auto row = find(taskView);
    if (row == m_rows.end() || row->height == height)
        return;
    row->height = height;
    layoutSubviews();
}

QSize KXTaskListsView::preferredSize() const { return {width(), qMax(0, m_totalheight)}; }

TaskViewPort* KXTaskListsView::makeTaskView()
{
    auto* view = new KXArchiveTaskView(this);
    view->hide();
    view->resize(width(), 0);
    return view;
}

void KXTaskListsView::addTaskView(TaskViewPort* view)
{
    if (auto* row = dynamic_cast<DDTaskView*>(view))
        addTaskView(row);
}

void KXTaskListsView::removeTaskView(TaskViewPort* view)
{
    if (auto* row = dynamic_cast<DDTaskView*>(view))
        removeTaskView(row);
}

bool KXTaskListsView::containsTaskView(const TaskViewPort* view) const
{
    const auto* row = dynamic_cast<const DDTaskView*>(view);
    return row && containsTaskView(row);
}

void KXTaskListsView::layoutSubviews()
{
    if (m_isLayingOut)
        return; // a row that takes its new width asks for another height: the outer round sees it
    m_isLayingOut = true;
    const int before = m_totalheight;
    int y = 0;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        m_rows[i].view->resize(width(), m_rows[i].height); // may change the height through setHeightForView()
        m_rows[i].view->setGeometry(0, y, width(), m_rows[i].height);
        y += m_rows[i].height + kGap;
    }
    m_totalheight = y == 0 ? 0 : y - kGap;
    m_isLayingOut = false;
    update();
    if (m_totalheight == before)
        return;
    setMinimumHeight(m_totalheight);
    updateGeometry();
    m_resizeAction(this);
}

void KXTaskListsView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layoutSubviews();
}

void KXTaskListsView::paintEvent(QPaintEvent* event)
{
    const auto colors = theme::colors(palette());
    QPainter painter(this);
    painter.fillRect(event->rect(), colors.surface);
    bool alternate = false;
    for (const Row& row : m_rows) {
        const QRect place = row.view->geometry();
        if (place.intersects(event->rect().adjusted(0, 0, 0, kGap))) {
            painter.fillRect(place, alternate ? colors.surfaceAlternate : colors.surface);
            painter.fillRect(QRect(0, place.bottom() + 1, width(), kGap), colors.border);
        }
        alternate = !alternate;
    }
}

}
