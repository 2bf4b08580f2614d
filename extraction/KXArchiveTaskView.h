#pragma once

#include "extraction/KXArchiveManageController.h"
#include "extraction/KXMultipleTasksView.h"
#include "extraction/TaskPanel.h"
#include "extraction/TaskViewPort.h"

#include "platform/Answer.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>

namespace vantoro {

class EncodingPanel;
class PasswordPanel;
class ProgressPanel;
class QuestionPanel;
class WaitPanel;

/// The row of one extraction job. Its panels are made when they are first needed and kept. The job's thread asks its
/// questions here and is parked on the row's lock until the user has answered on the main thread.
class KXArchiveTaskView final : public KXMultipleTasksView, public TaskViewPort {
    Q_OBJECT

public:
    explicit KXArchiveTaskView(QWidget* parent = nullptr);
    ~KXArchiveTaskView() override;

    // Main thread.
    KXArchiveManageController* archiveController() const override { return m_archive; }
    void setArchiveController(KXArchiveManageController* archive) override;
    void setCancelAction(Action<TaskViewPort*> action) override;
    void setUIResponseAction(Action<TaskViewPort*, int> action) { m_responseAction = std::move(action); }
    void setupWaitView() override;
    void updateWaitView() override;
    void setupProgressViewInPreparingMode() override;
    void displayNotWritableErrorWithResponseAction(Action<TaskViewPort*, int> action) override;
    /// Hands a button's number to the job that is parked, or to the response action when one is set.
    void provideResponseFromUI(int response);
    /// Whether the box of the error panel is ticked. The box is not shown: every failing entry is reported.
    bool judegIsIgnoreAll() const { return false; }
    /// Deletes the row in a later turn of the main loop, but not before its job.
    void deleteWhenUnused();

    // Any thread.
    void closeQuestions() override;

    // The job's thread.
    bool displayError(const QString& message, bool* ignoreAll) override;
    void displayOpenError(const QString& message) override;
    Secret displayPasswordInputWithApplyToAllPointer(bool* applyToAll, CharsetId* encoding, unsigned attempt) override;
    CharsetId displayEncodingSelectorForXADString(const XADString& string) override;
    void setName(const QString& name) override;
    void setProgress(double fraction) override;
    void setProgressDetail(const XADProgress& progress) override;

private:
    /// What a button of a question gives back: its number, and what stood in the panel when it was pressed.
    struct Response {
        int number = 0;
        Secret password;
        CharsetId encoding = kCharsetUnknown;
    };
    /// The newest state that the job has told and that has not been shown yet.
    struct Pending {
        std::optional<QString> name;
        std::optional<double> fraction;
        std::optional<XADProgress> detail;
    };

    Response waitForResponseFromUI(std::function<void()> setup);
    void performOnMainThread(std::function<void()> work);
    void postUpdate();
    void applyUpdate();
    void applyProgress(double fraction);

    void showPanel(TaskPanel* panel);
    void showQuestion(QuestionPanel* panel);
    void showProgressAgain();
    void drawAttention(TaskPanel* panel);
    void cancelPressed(WaitPanel* wait, ProgressPanel* progress);
    ProgressPanel* progressView();
    QuestionPanel* makeQuestion(TaskPanel::Mark mark);
    void setupErrorView(const QString& message);
    void setupOpenErrorView(const QString& message);
    void setupPasswordView(unsigned attempt);
    void setupEncodingViewForXADString(const XADString& string);
    QString archiveName() const;
    QIcon archiveIcon() const;

    QPointer<KXArchiveManageController> m_archive;
    QString m_filename; // of the job, as last asked on this thread
    Action<TaskViewPort*> m_cancelAction;
    Action<TaskViewPort*, int> m_responseAction;
    Answer<Response> m_pauselock;
    bool m_isAsking = false; // the parked job's question is on the screen and has no answer yet

    WaitPanel* m_waitview = nullptr;
    ProgressPanel* m_progressview = nullptr;
    QuestionPanel* m_notwritableview = nullptr;
    QuestionPanel* m_errorview = nullptr;
    QuestionPanel* m_openerrorview = nullptr;
    PasswordPanel* m_passwordview = nullptr;
    EncodingPanel* m_encodingview = nullptr;

    std::mutex m_pendingMutex;
    Pending m_pending;
    std::atomic<bool> m_updatePosted{false};
    QTimer m_updateTimer;
    QElapsedTimer m_lastUpdate;
};

}
