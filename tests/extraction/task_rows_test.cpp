#include "browse/KXEncodePopButton.h"
#include "extraction/KXArchiveManageController.h"
#include "extraction/KXArchiveTaskView.h"
#include "extraction/KXTaskListsView.h"
#include "extraction/QuestionPanels.h"
#include "extraction/StatusPanels.h"
#include "widgets/FlatButton.h"
#include "widgets/PasswordField.h"

#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <future>

using namespace vantoro;

namespace {

constexpr CharsetId kShiftJis = 20;

/// A question under way. A test that fails in between leaves no thread waiting.
template <class Value> struct Asked {
    QPointer<KXArchiveTaskView> row;
    std::future<Value> future;
    Asked(KXArchiveTaskView* asker, std::future<Value> answer) : row(asker), future(std::move(answer)) {}
    Asked(Asked&&) = default;
    ~Asked()
    {
        if (row)
            row->closeQuestions();
    }
    bool isReady() const { return future.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }
    Value get() { return future.get(); }
};

/// A row in a list in a window, and a thread that plays the job.
struct Fixture {
    QWidget window;
    KXTaskListsView list{&window};
    std::unique_ptr<KXArchiveManageController> job;
    KXArchiveTaskView* row;

    explicit Fixture(const QString& path = "/tmp/Tax papers.zip")
        : job(KXArchiveManageController::initWithFilename(path))
    {
        window.resize(500, 400);
        list.setGeometry(window.rect());
        row = dynamic_cast<KXArchiveTaskView*>(list.makeTaskView());
        row->setArchiveController(job.get());
        row->setupWaitView();
        list.addTaskView(static_cast<DDTaskView*>(row));
        window.show();
    }

    template <class Question> auto ask(Question question)
    {
        return Asked<decltype(question())>(row, std::async(std::launch::async, std::move(question)));
    }
    template <class Panel> Panel* panel() { return qobject_cast<Panel*>(row->displayedView()); }
};

class EventCounter : public QObject {
public:
    int metaCalls = 0;
    bool eventFilter(QObject*, QEvent* event) override
    {
        metaCalls += event->type() == QEvent::MetaCall;
        return false;
    }
};

QString textOf(const Secret& secret)
{
    return QString::fromUtf8(secret.text().data(), static_cast<qsizetype>(secret.text().size()));
}

}

class TaskRowsTest : public QObject {
    Q_OBJECT

private slots:
    void waitingNamesTheArchiveAndCountsItsVolumes()
    {
        const QString packer = QStandardPaths::findExecutable("7z");
        if (packer.isEmpty())
            QSKIP("7z is not installed: no set of volumes to show");
        QTemporaryDir folder;
        QFile data(folder.filePath("noise"));
        QVERIFY(data.open(QIODevice::WriteOnly));
        for (int i = 0; i < 2500; ++i)
            data.write(QByteArray(1, static_cast<char>(i * 7919 >> 3)));
        data.close();
        QProcess pack;
        pack.setWorkingDirectory(folder.path());
        pack.start(packer, {"a", "-mx0", "-v1000b", "set.7z", "noise"});
        QVERIFY(pack.waitForFinished() && pack.exitCode() == 0);

        Fixture fixture(folder.filePath("set.7z.001"));
        QCOMPARE(fixture.panel<WaitPanel>()->text(), QString("set.7z.001"));
        fixture.job->prepare();
        fixture.row->updateWaitView();
        QCOMPARE(fixture.panel<WaitPanel>()->text(), QString("set.7z.001 (+2 more)"));
    }

    void theFirstProgressEndsThePreparation()
    {
        Fixture fixture;
        fixture.row->setupProgressViewInPreparingMode();
        auto* panel = fixture.panel<ProgressPanel>();
        QCOMPARE(panel->action(), QString("Preparing to extract \"Tax papers.zip\""));
        QVERIFY(panel->isPreparing());
        fixture.row->setName("2021/return.pdf");
        fixture.row->setProgress(0.25);
        QTRY_COMPARE(panel->fraction(), 0.25);
        QCOMPARE(panel->action(), QString("Extracting \"Tax papers.zip\""));
        QCOMPARE(panel->name(), QString("2021/return.pdf"));
        QVERIFY(!panel->isPreparing());
        panel->setAction("kept");
        fixture.row->setProgress(0.5);
        QTRY_COMPARE(panel->fraction(), 0.5);
        QCOMPARE(panel->action(), QString("kept"));
    }

    void aFloodOfProgressReachesTheDisplayThirtyTimesASecond()
    {
        Fixture fixture;
        fixture.row->setupProgressViewInPreparingMode();
        EventCounter counter;
        fixture.row->installEventFilter(&counter);
        QElapsedTimer clock;
        clock.start();
        const auto told = fixture.ask([&] {
            int count = 0;
            for (; clock.elapsed() < 500; ++count) {
                fixture.row->setName(QString::number(count));
                fixture.row->setProgress(static_cast<double>(clock.elapsed()) / 1000);
            }
            fixture.row->setName("last");
            return count;
        });
        QTRY_COMPARE(fixture.panel<ProgressPanel>()->name(), QString("last"));
        QVERIFY(counter.metaCalls <= static_cast<int>(clock.elapsed() * 30 / 1000) + 2);
        QVERIFY(counter.metaCalls >= 3);
    }

    void aPasswordIsTypedAndConfirmedByKeys()
    {
        Fixture fixture;
        fixture.row->setupProgressViewInPreparingMode();
        auto answer
            = fixture.ask([&] { return fixture.row->displayPasswordInputWithApplyToAllPointer(nullptr, nullptr, 0); });
        QTRY_VERIFY(fixture.panel<PasswordPanel>());
        auto* panel = fixture.panel<PasswordPanel>();
        QCOMPARE(panel->message(), QString("Enter a PASSWORD to open the archive \"Tax papers.zip\"."));
        QVERIFY(panel->hint().isEmpty());
        QVERIFY(!panel->popup()->isVisible());
        QTRY_COMPARE(QApplication::focusWidget(), panel->field());
        QTest::keyClicks(panel->field(), "geheim");
        QTest::keyClick(panel->field(), Qt::Key_Return);
        QTRY_VERIFY(answer.isReady());
        QCOMPARE(textOf(answer.get()), QString("geheim"));
        QVERIFY(panel->field()->text().isEmpty());
        QTRY_VERIFY(fixture.panel<ProgressPanel>());
    }

    void afterAWrongPasswordThePanelSaysSo()
    {
        Fixture fixture;
        auto answer
            = fixture.ask([&] { return fixture.row->displayPasswordInputWithApplyToAllPointer(nullptr, nullptr, 1); });
        QTRY_VERIFY(fixture.panel<PasswordPanel>());
        auto* panel = fixture.panel<PasswordPanel>();
        QVERIFY(panel->hint().contains("not right"));
        QTest::keyClick(panel->field(), Qt::Key_A);
        QVERIFY(!panel->hint().contains("not right"));
        QTest::keyClick(panel->field(), Qt::Key_Escape);
        QTRY_VERIFY(answer.isReady());
        QVERIFY(answer.get().isEmpty());
    }

    void anEmptyPasswordCountsAsNone()
    {
        Fixture fixture;
        auto answer
            = fixture.ask([&] { return fixture.row->displayPasswordInputWithApplyToAllPointer(nullptr, nullptr, 0); });
        QTRY_VERIFY(fixture.panel<PasswordPanel>());
        fixture.panel<PasswordPanel>()->button(1)->click();
        QTRY_VERIFY(answer.isReady());
        QVERIFY(answer.get().isEmpty());
    }

    void theEncodingPanelShowsTheNameAsItWouldRead()
    {
        const auto name = XADString::stringWithBytes("\x83\x74\x83\x40.txt", kShiftJis, 0.5F);
        Fixture fixture;
        auto answer = fixture.ask([&] { return fixture.row->displayEncodingSelectorForXADString(name); });
        QTRY_VERIFY(fixture.panel<EncodingPanel>());
        auto* panel = fixture.panel<EncodingPanel>();
        QCOMPARE(panel->selectedTag(), kShiftJis);
        QCOMPARE(panel->preview(), QString::fromUtf8("ファ.txt"));
        QVERIFY(panel->popup()->selectItemWithTag(kCharsetLatin1));
        QCOMPARE(panel->preview(), name.stringWithEncoding(kCharsetLatin1));
        panel->popup()->selectItemWithTag(kShiftJis);
        QTest::keyClick(panel->popup(), Qt::Key_Return);
        QTRY_VERIFY(answer.isReady());
        QCOMPARE(answer.get(), kShiftJis);
    }

    void theEncodingPanelFallsBackToLatin1AndStopsWithZero()
    {
        // UTF-8 was guessed, but cannot read the name.
        const auto name = XADString::stringWithBytes("caf\xe9.txt", kCharsetUtf8, 0.2F);
        Fixture fixture;
        auto answer = fixture.ask([&] { return fixture.row->displayEncodingSelectorForXADString(name); });
        QTRY_VERIFY(fixture.panel<EncodingPanel>());
        QCOMPARE(fixture.panel<EncodingPanel>()->selectedTag(), kCharsetLatin1);
        fixture.panel<EncodingPanel>()->button(0)->click();
        QTRY_VERIFY(answer.isReady());
        QCOMPARE(answer.get(), kCharsetUnknown);
    }

    void anErrorIsContinuedOrStoppedAndNeverIgnoresAll()
    {
        for (const int choice : {0, 1}) {
            Fixture fixture;
            fixture.row->setupProgressViewInPreparingMode();
            bool ignoreAll = false;
            auto answer = fixture.ask([&] { return fixture.row->displayError("It is damaged.", &ignoreAll); });
            QTRY_VERIFY(fixture.panel<QuestionPanel>());
            QCOMPARE(fixture.panel<QuestionPanel>()->message(), QString("It is damaged."));
            fixture.panel<QuestionPanel>()->button(choice)->click();
            QTRY_VERIFY(answer.isReady());
            QCOMPARE(answer.get(), choice == 1);
            QVERIFY(!ignoreAll);
            QTRY_VERIFY(fixture.panel<ProgressPanel>());
        }
    }

    void aSecondClickDoesNotAnswerTheNextQuestion()
    {
        Fixture fixture;
        auto answers = fixture.ask([&] {
            const bool first = fixture.row->displayError("one", nullptr);
            const bool second = fixture.row->displayError("two", nullptr);
            return std::pair(first, second);
        });
        QTRY_VERIFY(fixture.panel<QuestionPanel>());
        auto* panel = fixture.panel<QuestionPanel>();
        panel->button(1)->click();
        panel->button(1)->click();
        QTRY_COMPARE(panel->message(), QString("two"));
        QTest::qWait(20);
        QVERIFY(!answers.isReady());
        panel->button(0)->click();
        QTRY_VERIFY(answers.isReady());
        QCOMPARE(answers.get(), std::pair(true, false));
    }

    void closingTheQuestionsAnswersThemWithStop()
    {
        Fixture fixture;
        auto answer = fixture.ask([&] { return fixture.row->displayError("open", nullptr); });
        QTRY_VERIFY(fixture.panel<QuestionPanel>());
        fixture.row->closeQuestions();
        QVERIFY(!answer.get());
        QVERIFY(!fixture.row->displayError("later", nullptr)); // does not wait at all
    }

    void theNotWritableAnswerGoesToWhomWasNamed()
    {
        Fixture fixture;
        fixture.job->setDestination("/media/Photos");
        QList<int> answers;
        TaskViewPort* sender = nullptr;
        QObject context;
        fixture.row->displayNotWritableErrorWithResponseAction(
            Action<TaskViewPort*, int>(&context, [&](TaskViewPort* view, int response) {
                sender = view;
                answers << response;
            }));
        auto* panel = fixture.panel<QuestionPanel>();
        QVERIFY(panel);
        QVERIFY(panel->message().contains("/media/Photos"));
        for (const int response : {2, 1, 0})
            panel->button(response)->click();
        QCOMPARE(answers, QList<int>({2, 1, 0}));
        QCOMPARE(sender, fixture.row);

        // The next question is the job's again.
        auto answer = fixture.ask([&] { return fixture.row->displayError("later", nullptr); });
        QTRY_COMPARE(fixture.panel<QuestionPanel>()->message(), QString("later"));
        fixture.panel<QuestionPanel>()->button(1)->click();
        QVERIFY(answer.get());
        QCOMPARE(answers.size(), 3);
    }

    void cancelTellsWhomItShouldAndDisablesItself()
    {
        Fixture fixture;
        int told = 0;
        QObject context;
        const Action<TaskViewPort*> action(&context, [&](TaskViewPort*) { ++told; });
        auto* wait = fixture.panel<WaitPanel>();
        fixture.row->setCancelAction({});
        wait->cancelButton()->click();
        QVERIFY(!wait->cancelButton()->isEnabled());
        QCOMPARE(told, 0);
        fixture.row->setCancelAction(action);
        QVERIFY(wait->cancelButton()->isEnabled());
        wait->cancelButton()->click();
        QCOMPARE(told, 1);
        fixture.row->setupProgressViewInPreparingMode();
        auto* progress = fixture.panel<ProgressPanel>();
        progress->cancelButton()->click();
        QCOMPARE(told, 2);
        QVERIFY(!progress->cancelButton()->isEnabled());
        QCOMPARE(progress->name(), QString("Stopping…"));
    }

    void aRemovedRowOutlivesItsJob()
    {
        Fixture fixture;
        QPointer<KXArchiveTaskView> row = fixture.row;
        fixture.list.removeTaskView(static_cast<TaskViewPort*>(fixture.row));
        QVERIFY(!fixture.list.containsTaskView(static_cast<TaskViewPort*>(fixture.row)));
        QTest::qWait(20);
        QVERIFY(row); // the job may still call it
        fixture.job.reset();
        QTRY_VERIFY(row.isNull());
    }
};

QTEST_MAIN(TaskRowsTest)
#include "task_rows_test.moc"
