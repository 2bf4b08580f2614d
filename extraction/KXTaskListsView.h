#pragma once

#include "extraction/TaskViewPort.h"

#include <QWidget>

#include <vector>

namespace vantoro {

class DDTaskView;

/// The rows below one another in the order in which they were added. The list says how high it wants to be and leaves
/// it to its window to follow.
class KXTaskListsView : public QWidget, public TaskListPort {
    Q_OBJECT

public:
    explicit KXTaskListsView(QWidget* parent = nullptr);
    ~KXTaskListsView() override;

    void addTaskView(DDTaskView* taskView);
    /// Takes the row out; it is deleted in a later turn of the main loop, once its job is gone.
    void removeTaskView(DDTaskView* taskView);
    bool containsTaskView(const DDTaskView* taskView) const;
    void setHeightForView(int height, DDTaskView* taskView);
    /// Told when the rows' total height has changed.
    void setResizeAction(Action<KXTaskListsView*> action) { m_resizeAction = std::move(action); }
    QSize preferredSize() const;
    int taskCount() const { return static_cast<int>(m_rows.size()); }

    // TaskListPort
    TaskViewPort* makeTaskView() override;
    void addTaskView(TaskViewPort* view) override;
    void removeTaskView(TaskViewPort* view) override;
    bool containsTaskView(const TaskViewPort* view) const override;

    QSize sizeHint() const override { return preferredSize(); }

signals:
    void taskCountChanged(int count);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Row {
        DDTaskView* view = nullptr;
        int height = 0;
    };
    std::vector<Row>::iterator find(const DDTaskView* taskView);
    void layoutSubviews();

    std::vector<Row> m_rows;
    Action<KXTaskListsView*> m_resizeAction;
    int m_totalheight = -1; // so that the first layout reports a change
    bool m_isLayingOut = false;
};

}
