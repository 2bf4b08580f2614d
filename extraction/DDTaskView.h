#pragma once

#include <QWidget>

namespace vantoro {

class KXTaskListsView;

/// A row of the task list.
class DDTaskView : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// The list that the row stands in; null outside of one.
    KXTaskListsView* taskListsView() const;
};

}
