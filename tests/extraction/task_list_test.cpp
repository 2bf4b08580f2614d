#include "extraction/HDAlert.h"
#include "extraction/KXArchiveManageController.h"
#include "extraction/KXArchiveTaskView.h"
#include "extraction/KXTaskListsView.h"
#include "extraction/ProgressEstimate.h"
#include "extraction/ReportWindow.h"
#include "extraction/StatusPanels.h"
#include "extraction/TaskWindow.h"
#include "widgets/FlatButton.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QMessageBox>
#include <QScreen>
#include <QTest>

#include <cmath>

using namespace vantoro;

namespace {

/// Adds rows whose jobs live as long as this.
struct Rows {
    TaskWindow window;
    std::vector<std::unique_ptr<KXArchiveManageController>> jobs;
    int resizes = 0;

    Rows()
    {
        window.resize(500, 100);
        window.show();
        list().setResizeAction(Action<KXTaskListsView*>(&window, [this](KXTaskListsView*) {
            ++resizes;
            window.fitToList();
        }));
    }
    KXTaskListsView& list() { return *window.taskListsView(); }
    KXArchiveTaskView* add(const QString& path)
    {
        jobs.push_back(KXArchiveManageController::initWithFilename(path));
        auto* row = dynamic_cast<KXArchiveTaskView*>(list().makeTaskView());
        row->setArchiveController(jobs.back().get());
        row->setupWaitView();
        list().addTaskView(static_cast<TaskViewPort*>(row));
        return row;
    }
};

QAbstractButton* buttonOfAlert(const QString& text)
{
    for (QWidget* top : QApplication::topLevelWidgets()) {
        auto* box = qobject_cast<QMessageBox*>(top);
        if (!box || !box->isVisible())
            continue;
        for (auto* button : box->buttons()) {
            if (button->text() == text)
                return button;
        }
    }
    return nullptr;
}

}

class TaskListTest : public QObject {
    Q_OBJECT

private slots:
    void rowsStandBelowOneAnotherWithAGapOfOne()
    {
        Rows rows;
        auto* first = rows.add("/tmp/a.zip");
        auto* second = rows.add("/tmp/b.zip");
        auto* third = rows.add("/tmp/c.zip");
        QTRY_COMPARE(third->y(), second->y() + second->height() + 1);
        QCOMPARE(first->y(), 0);
        QCOMPARE(second->y(), first->height() + 1);
        QCOMPARE(rows.list().preferredSize().height(), first->height() + second->height() + third->height() + 2);
        for (auto* row : {first, second, third})
            QCOMPARE(row->width(), rows.list().width());
    }

    void aRowTakesTheHeightOfItsPanel()
    {
        Rows rows;
        auto* first = rows.add("/tmp/a.zip");
        auto* second = rows.add("/tmp/b.zip");
        const int waiting = first->height();
        const int before = rows.resizes;
        first->setupProgressViewInPreparingMode();
        QVERIFY(first->height() > waiting);
        QCOMPARE(second->y(), first->height() + 1);
        QVERIFY(rows.resizes > before);
        rows.window.resize(316, rows.window.height());
        first->displayNotWritableErrorWithResponseAction({});
        QTRY_COMPARE(first->width(), rows.list().width());
        QVERIFY(first->height() >= first->displayedView()->heightAtWidth(first->width()));
        QTRY_COMPARE(second->y(), first->height() + 1);
    }

    void removingTheLastRowReportsAnEmptyList()
    {
        Rows rows;
        auto* row = rows.add("/tmp/a.zip");
        const int before = rows.resizes;
        rows.list().removeTaskView(static_cast<TaskViewPort*>(row));
        QCOMPARE(rows.list().preferredSize().height(), 0);
        QCOMPARE(rows.resizes, before + 1);
        rows.list().removeTaskView(static_cast<TaskViewPort*>(row));
        QCOMPARE(rows.resizes, before + 1);
    }

    void twoHundredRowsStayOnTheScreenAndQuestionsScrollIntoView()
    {
        Rows rows;
        KXArchiveTaskView* last = nullptr;
        for (int i = 0; i < 200; ++i)
            last = rows.add(QStringLiteral("/tmp/archive %1.zip").arg(i));
        QVERIFY(rows.window.height() <= rows.window.screen()->availableGeometry().height());
        QTRY_VERIFY(last->visibleRegion().isEmpty());
        last->displayNotWritableErrorWithResponseAction({});
        QTRY_VERIFY(!last->visibleRegion().isEmpty());
    }

    void theTimeLeftIsSteadyThoughTheSpeedIsNot()
    {
        ProgressEstimate estimate;
        const double total = 1e9;
        double done = 0;
        int shown = -1;
        for (int tick = 0; done < total * 0.9; ++tick) {
            const double seconds = tick * 0.25;
            const double speed = 1e7 * (1 + 0.8 * std::sin(tick)); // a hundred seconds in all
            estimate.add(seconds, static_cast<quint64>(done), done / total);
            const auto left = estimate.secondsLeft();
            if (seconds < 3)
                QVERIFY(!left);
            if (left && shown >= 0)
                QVERIFY2(*left <= shown + 2, qPrintable(QString("%1 after %2").arg(*left).arg(shown)));
            if (left) {
                const double truly = (total - done) / 1e7;
                QVERIFY2(std::abs(*left - truly) < 0.35 * truly + 3, qPrintable(QString::number(truly)));
                shown = *left;
            }
            done += speed * 0.25;
        }
        QVERIFY(shown >= 0);
        QVERIFY(std::abs(*estimate.rate() - 1e7) < 3e6);
    }

    void aPauseIsNotSlowProgress()
    {
        ProgressEstimate estimate;
        for (int tick = 0; tick <= 40; ++tick)
            estimate.add(tick * 0.25, static_cast<quint64>(tick) * 250'000, tick / 400.0);
        const auto before = estimate.rate();
        estimate.pause();
        estimate.add(500, 40 * 250'000, 0.1);
        estimate.add(500.25, 41 * 250'000, 41 / 400.0);
        QVERIFY(std::abs(*estimate.rate() - *before) < 1e4);
        QVERIFY(*estimate.secondsLeft() < 120);
    }

    void amountsAndTimesReadWell()
    {
        XADProgress progress;
        progress.written = 24 << 20;
        progress.writtenTotal = 96 << 20;
        QCOMPARE(amountText(progress), QString("24.0 MB of 96.0 MB"));
        progress = {};
        progress.entries = 1200;
        progress.entriesTotal = 200'000;
        QCOMPARE(amountText(progress), QString("1,200 of 200,000 files"));
        QCOMPARE(timeLeftText(3), QString("A few seconds left"));
        QCOMPARE(timeLeftText(23), QString("About 25 seconds left"));
        QCOMPARE(timeLeftText(130), QString("About 2 minute(s) left")); // plural forms come with the translation
    }

    void anAlertCallsTheHandlerOfItsButton()
    {
        QWidget window;
        window.show();
        QList<int> tags;
        {
            const auto alert = HDAlert::alertWithTitle("Title", "Message", HDAlert::Style::Warning);
            alert->addButtonWithTitle("First", [&](const HDAlertItem& item) { tags << item.tag; });
            alert->addButtonWithTitle("Second", [&](const HDAlertItem& item) { tags << item.tag; });
            QCOMPARE(alert->addButtonWithTitle("Third"), 2);
            alert->show(&window);
        }
        QTRY_VERIFY(buttonOfAlert("Second")); // lives on its own
        buttonOfAlert("Second")->click();
        QCOMPARE(tags, QList<int>({1}));
        QTRY_VERIFY(!buttonOfAlert("Second"));
    }

    void aReportCanBeCopied()
    {
        ReportWindow window;
        window.setReport("2 files were refused.", "b.zip\n../y: would leave the folder.");
        window.show();
        for (auto* button : window.findChildren<FlatButton*>()) {
            if (button->text().contains("Copy"))
                button->click();
        }
        const QString copied = QApplication::clipboard()->text();
        QVERIFY(copied.startsWith("2 files were refused."));
        QVERIFY(copied.contains("../y: would leave the folder."));
    }
};

QTEST_MAIN(TaskListTest)
#include "task_list_test.moc"
