#pragma once

#include "platform/Action.h"
#include "platform/XADSimpleUnarchiver.h"

namespace vantoro {

class KXArchiveManageController;

/// The row of one extraction as its job and the controller see it. The widget implements it, and so does a scripted
/// double in the tests. Rows belong to the task list: removing one from it deletes the row in a later turn of the main
/// loop, when its job is gone.
class TaskViewPort {
public:
    virtual ~TaskViewPort() = default;

    // Main thread.
    virtual KXArchiveManageController* archiveController() const = 0;
    /// Not owned; outlives every panel of the row.
    virtual void setArchiveController(KXArchiveManageController* archive) = 0;
    /// Whom the cancel button tells, with the row; an empty action: the button only disables itself.
    virtual void setCancelAction(Action<TaskViewPort*> action) = 0;
    virtual void setupWaitView() = 0;
    /// The volume list is known now.
    virtual void updateWaitView() = 0;
    virtual void setupProgressViewInPreparingMode() = 0;
    /// Answers with the row and 0 (stop), 1 (extract to the Desktop) or 2 (choose another folder); nobody waits.
    virtual void displayNotWritableErrorWithResponseAction(Action<TaskViewPort*, int> action) = 0;
    /// The job is to end: the open question and all later ones are answered with stop. From any thread.
    virtual void closeQuestions() = 0;

    // The job's thread; each waits for the user.
    /// True: go on.
    virtual bool displayError(const QString& message, bool* ignoreAll) = 0;
    virtual void displayOpenError(const QString& message) = 0;
    /// Empty: stopped. `attempt` above 0: the password before was wrong. The out-values may stay untouched.
    virtual Secret displayPasswordInputWithApplyToAllPointer(bool* applyToAll, CharsetId* encoding, unsigned attempt)
        = 0;
    /// 0: stopped.
    virtual CharsetId displayEncodingSelectorForXADString(const XADString& string) = 0;

    // The job's thread; return at once.
    virtual void setName(const QString& name) = 0;
    /// 0 to 1.
    virtual void setProgress(double fraction) = 0;
    /// Follows setProgress() with what it was made of: for bytes done, rate and time left.
    virtual void setProgressDetail(const XADProgress&) {}
};

/// The list of rows in the task window. Main thread.
class TaskListPort {
public:
    virtual ~TaskListPort() = default;
    virtual TaskViewPort* makeTaskView() = 0; ///< not in the list yet; the list owns it from here on
    virtual void addTaskView(TaskViewPort* view) = 0;
    /// Removes and later deletes it; nothing when it is not in the list.
    virtual void removeTaskView(TaskViewPort* view) = 0;
    virtual bool containsTaskView(const TaskViewPort* view) const = 0;
};

}
