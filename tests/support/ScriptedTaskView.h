#pragma once

#include "extraction/TaskViewPort.h"

#include <QStringList>

#include <atomic>
#include <deque>
#include <functional>
#include <mutex>

namespace vantoro {

/// A row whose user has decided everything beforehand. Questions are answered on the job's thread, at once.
class ScriptedTaskView final : public TaskViewPort {
public:
    struct Asked {
        QString what; ///< "error", "open error", "password", "encoding"
        QString text;
    };

    std::atomic<bool> goesOn = true; ///< after an error
    std::deque<QByteArray> passwords; ///< empty: the prompt is stopped
    CharsetId encoding = kCharsetUnknown;
    std::function<void(const QString& step)> onStep; ///< on the job's thread: "name", "progress" or a question's kind

    std::vector<Asked> asked() const
    {
        const std::lock_guard lock(m_mutex);
        return m_asked;
    }
    QStringList names() const
    {
        const std::lock_guard lock(m_mutex);
        return m_names;
    }
    QStringList log; ///< of the main thread's calls
    std::vector<unsigned> attempts;
    Action<TaskViewPort*> cancelAction;
    Action<TaskViewPort*, int> notWritableAction;

    KXArchiveManageController* archiveController() const override { return m_archive; }
    void setArchiveController(KXArchiveManageController* archive) override { m_archive = archive; }
    void setCancelAction(Action<TaskViewPort*> action) override { cancelAction = std::move(action); }
    void setupWaitView() override { log += "wait"; }
    void updateWaitView() override { log += "update"; }
    void setupProgressViewInPreparingMode() override { log += "prepare"; }
    void displayNotWritableErrorWithResponseAction(Action<TaskViewPort*, int> action) override
    {
        log += "not writable";
        notWritableAction = std::move(action);
    }
    void closeQuestions() override { goesOn = false; }

    bool displayError(const QString& message, bool*) override
    {
        ask("error", message);
        return goesOn;
    }
    void displayOpenError(const QString& message) override { ask("open error", message); }
    Secret displayPasswordInputWithApplyToAllPointer(bool*, CharsetId*, unsigned attempt) override
    {
        ask("password", {});
        attempts.push_back(attempt);
        if (passwords.empty())
            return {};
        const QByteArray password = passwords.front();
        passwords.pop_front();
        return Secret(password.toStdString());
    }
    CharsetId displayEncodingSelectorForXADString(const XADString& string) override
    {
        ask("encoding", QString::fromLatin1(string.bytes()));
        return encoding;
    }
    void setName(const QString& name) override
    {
        {
            const std::lock_guard lock(m_mutex);
            m_names += name;
        }
        step("name");
    }
    void setProgress(double) override { step("progress"); }

private:
    void ask(const QString& what, const QString& text)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_asked.push_back({what, text});
        }
        step(what);
    }
    void step(const QString& what) const
    {
        if (onStep)
            onStep(what);
    }

    mutable std::mutex m_mutex;
    std::vector<Asked> m_asked;
    QStringList m_names;
    KXArchiveManageController* m_archive = nullptr;
};

}
