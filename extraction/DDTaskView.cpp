#include "extraction/DDTaskView.h"

#include "extraction/KXTaskListsView.h"

namespace vantoro {

KXTaskListsView* DDTaskView::taskListsView() const { return qobject_cast<KXTaskListsView*>(parentWidget()); }

}
