#include "widgets/ProgressOverlay.h"

#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

using namespace vantoro;

/// Work behind a covered window.
class ProgressOverlayTest : public QObject {
    Q_OBJECT

    struct Covered {
        QWidget window;
        QPushButton* button = new QPushButton("below", &window);
        QSignalSpy clicks{button, &QPushButton::clicked};
        QSignalSpy shortcuts{new QShortcut(QKeySequence("F5"), &window), &QShortcut::activated};
        Covered()
        {
            window.resize(300, 200);
            button->setGeometry(window.rect());
            window.show();
        }
    };

private slots:
    void runsTheBlockElsewhereAndFinishesOnTheMainThread()
    {
        Covered covered;
        auto* overlay = new ProgressOverlay(&covered.window);
        QPointer<ProgressOverlay> alive(overlay);
        std::atomic<QThread*> ranOn{nullptr};
        QThread* finishedOn = nullptr;
        overlay->showWhileExecuting([&](ProgressOverlay::Work&) { ranOn = QThread::currentThread(); },
                                    [&] { finishedOn = QThread::currentThread(); });
        QTRY_COMPARE(finishedOn, QThread::currentThread());
        QVERIFY(ranOn.load() != QThread::currentThread());
        QTRY_VERIFY(alive.isNull());
    }

    void keepsInputFromTheWindowWhileItRuns()
    {
        Covered covered;
        QVERIFY(QTest::qWaitForWindowActive(&covered.window));
        auto* overlay = new ProgressOverlay(&covered.window);
        std::atomic<bool> go{false};
        bool finished = false;
        overlay->showWhileExecuting(
            [&](ProgressOverlay::Work&) {
                while (!go)
                    QThread::msleep(1);
            },
            [&] { finished = true; });
        QCOMPARE(covered.window.childAt(150, 100), overlay);
        QTest::keyClick(overlay, Qt::Key_F5);
        QTest::keyClick(overlay, Qt::Key_Tab);
        QVERIFY(!covered.button->hasFocus());
        covered.window.resize(400, 350);
        QTRY_COMPARE(overlay->size(), QSize(400, 350));
        go = true;
        QTRY_VERIFY(finished);
        QCOMPARE(covered.shortcuts.count(), 0);
        QTest::keyClick(&covered.window, Qt::Key_F5);
        QCOMPARE(covered.shortcuts.count(), 1);
    }

    void escapeStopsOnlyWhatMayBeStopped()
    {
        for (const bool cancellable : {true, false}) {
            Covered covered;
            auto* overlay = new ProgressOverlay(&covered.window);
            overlay->setCancellable(cancellable);
            std::atomic<bool> go{false};
            std::atomic<bool> sawStop{false};
            bool finished = false;
            overlay->showWhileExecuting(
                [&](ProgressOverlay::Work& work) {
                    while (!go && !work.isCancelled())
                        QThread::msleep(1);
                    sawStop = work.isCancelled();
                },
                [&] { finished = true; });
            QTest::qWait(200); // the card comes after a moment
            QTest::keyClick(overlay, Qt::Key_Escape);
            if (!cancellable)
                go = true;
            QTRY_VERIFY(finished);
            QCOMPARE(sawStop.load(), cancellable);
        }
    }

    void aVanishingWindowStopsTheWorkAndWaitsForIt()
    {
        std::atomic<bool> ended{false};
        bool finished = false;
        {
            Covered covered;
            auto* overlay = new ProgressOverlay(&covered.window);
            overlay->showWhileExecuting(
                [&](ProgressOverlay::Work& work) {
                    for (int i = 0; !work.isCancelled(); ++i) {
                        work.setProgress(i / 1e6);
                        work.setDetail(QString::number(i));
                    }
                    ended = true;
                },
                [&] { finished = true; });
            QTest::qWait(50);
        }
        QVERIFY(ended);
        QTest::qWait(20);
        QVERIFY(!finished);
    }
};

QTEST_MAIN(ProgressOverlayTest)
#include "progress_overlay_test.moc"
