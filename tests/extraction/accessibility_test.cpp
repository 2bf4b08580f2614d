#include "extraction/KXArchiveManageController.h"
#include "extraction/KXArchiveTaskView.h"
#include "extraction/KXTaskListsView.h"
#include "extraction/QuestionPanels.h"
#include "extraction/ReportWindow.h"
#include "extraction/TaskWindow.h"
#include "widgets/FlatButton.h"

#include <QAccessible>
#include <QTest>

#include <future>

using namespace vantoro;

namespace {

/// Every control that takes the keyboard and has no name, as "role in parent".
void collectNameless(QAccessibleInterface* item, QStringList& nameless)
{
    if (!item)
        return;
    const auto state = item->state();
    if (state.focusable && !state.invisible && item->text(QAccessible::Name).isEmpty()
        && item->role() != QAccessible::Client)
        nameless << QStringLiteral("role %1 in \"%2\"")
                        .arg(static_cast<int>(item->role()))
                        .arg(item->parent() ? item->parent()->text(QAccessible::Name) : QString());
    for (int i = 0; i < item->childCount(); ++i)
        collectNameless(item->child(i), nameless);
}

QStringList namelessIn(QWidget& window)
{
    QStringList nameless;
    collectNameless(QAccessible::queryAccessibleInterface(&window), nameless);
    return nameless;
}

}

/// What somebody who cannot see the rows is told.
class AccessibilityTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TaskWindow> m_window;
    std::unique_ptr<KXArchiveManageController> m_job;
    KXArchiveTaskView* m_row = nullptr;

private slots:
    void init()
    {
        m_window = std::make_unique<TaskWindow>();
        m_job = KXArchiveManageController::initWithFilename("/tmp/Tax papers.zip");
        m_row = dynamic_cast<KXArchiveTaskView*>(m_window->taskListsView()->makeTaskView());
        m_row->setArchiveController(m_job.get());
        m_row->setupWaitView();
        m_window->taskListsView()->addTaskView(static_cast<TaskViewPort*>(m_row));
        m_window->fitToList();
        m_window->show();
    }
    void cleanup()
    {
        m_row->closeQuestions();
        m_window.reset();
        m_job.reset();
    }

    void everyControlHasAName()
    {
        QCOMPARE(namelessIn(*m_window), QStringList());
        m_row->setupProgressViewInPreparingMode();
        QCOMPARE(namelessIn(*m_window), QStringList());
        m_row->displayNotWritableErrorWithResponseAction({});
        QCOMPARE(namelessIn(*m_window), QStringList());
        ReportWindow report;
        report.show();
        QCOMPARE(namelessIn(report), QStringList());
    }

    void aQuestionIsReadOutWithItsPanelAndItsButtons()
    {
        struct Question {
            std::function<void()> ask;
            QString text;
        };
        const QList<Question> questions{
            {[this] { m_row->displayPasswordInputWithApplyToAllPointer(nullptr, nullptr, 0); },
             "Enter a PASSWORD to open the archive \"Tax papers.zip\"."},
            {[this] {
                 m_row->displayEncodingSelectorForXADString(
                     XADString::stringWithBytes("caf\xe9", kCharsetLatin1, 0.3F));
             },
             "The file names in \"Tax papers.zip\""},
            {[this] { m_row->displayError("It is damaged.", nullptr); }, "It is damaged."},
            {[this] { m_row->displayOpenError("It cannot be read."); }, "It cannot be read."},
        };
        for (const Question& question : questions) {
            auto asked = std::async(std::launch::async, question.ask);
            QString read;
            QString described;
            QStringList nameless;
            const bool shown = QTest::qWaitFor([&] {
                auto* panel = qobject_cast<QuestionPanel*>(m_row->displayedView());
                if (!panel || !panel->message().startsWith(question.text))
                    return false;
                read = QAccessible::queryAccessibleInterface(panel)->text(QAccessible::Name);
                described = QAccessible::queryAccessibleInterface(panel->button(0))->text(QAccessible::Description);
                nameless = namelessIn(*m_window);
                panel->button(0)->click();
                return true;
            });
            if (!shown)
                m_row->closeQuestions();
            asked.wait();
            QVERIFY(read.startsWith(question.text));
            QVERIFY(described.startsWith(question.text));
            QCOMPARE(nameless, QStringList());
        }
    }
};

QTEST_MAIN(AccessibilityTest)
#include "accessibility_test.moc"
