#include "extraction/KXTaskQueueObject.h"

#include <QTest>

namespace vantoro {

struct Worker : QObject {
    void run(const QString& name) { log += name; }
    void dry(KXTaskQueueObject*) { log += "dry"; }
    void runAndFinish(KXTaskQueueObject* queue, const QString& name)
    {
        log += name;
        queue->finishCurrentTask();
    }
    QStringList log;
};

class TaskQueueTest : public QObject {
    Q_OBJECT
private slots:
    void taskWaitsForALaterTurnAndForFinish();
    void finishingTwiceOrIdleChangesNothing();
    void runningDryIsToldEachTimeButNotAtCreation();
    void taskMayFinishItselfAndQueueMore();
    void stalledQueueStartsItsHeadAgain();
    void argumentsOutliveTheCaller();
    void tasksOfAGoneTargetAreSkipped();
};

void TaskQueueTest::taskWaitsForALaterTurnAndForFinish()
{
    Worker worker;
    KXTaskQueueObject queue;
    queue.taskWithTarget(&worker).call(&Worker::run, "first");
    queue.taskWithTarget(&worker).call(&Worker::run, "second");
    QVERIFY(worker.log.isEmpty());
    QVERIFY(queue.isRunning());
    QTRY_COMPARE(worker.log, QStringList{"first"});
    QCoreApplication::processEvents();
    QCOMPARE(worker.log, QStringList{"first"});
    queue.finishCurrentTask();
    QCOMPARE(worker.log, QStringList{"first"}); // never inside the call that ended the one before
    QTRY_COMPARE(worker.log, (QStringList{"first", "second"}));
}

void TaskQueueTest::finishingTwiceOrIdleChangesNothing()
{
    Worker worker;
    KXTaskQueueObject queue;
    queue.setFinishAction({&worker, &Worker::dry});
    queue.finishCurrentTask();
    QVERIFY(worker.log.isEmpty());
    queue.taskWithTarget(&worker).call(&Worker::run, "task");
    QTRY_COMPARE(worker.log.size(), 1);
    queue.finishCurrentTask();
    queue.finishCurrentTask();
    QCOMPARE(worker.log, (QStringList{"task", "dry"}));
    QVERIFY(queue.isEmpty());
}

void TaskQueueTest::runningDryIsToldEachTimeButNotAtCreation()
{
    Worker worker;
    KXTaskQueueObject queue;
    queue.setFinishAction({&worker, &Worker::dry});
    QCoreApplication::processEvents();
    QVERIFY(worker.log.isEmpty());
    for (int round = 0; round < 2; ++round)
        queue.taskWithTarget(&worker).call(&Worker::runAndFinish, &queue, QString::number(round));
    QTRY_COMPARE(worker.log, (QStringList{"0", "1", "dry"}));
    queue.taskWithTarget(&worker).call(&Worker::runAndFinish, &queue, QString("2"));
    QTRY_COMPARE(worker.log, (QStringList{"0", "1", "dry", "2", "dry"}));
}

void TaskQueueTest::taskMayFinishItselfAndQueueMore()
{
    Worker worker;
    KXTaskQueueObject queue;
    struct Chain : QObject {
        Chain(KXTaskQueueObject& owner, Worker& log) : queue(owner), worker(log) {}
        void step(int left)
        {
            worker.log += QString::number(left);
            if (left > 0)
                queue.taskWithTarget(this).call(&Chain::step, left - 1);
            queue.finishCurrentTask();
        }
        KXTaskQueueObject& queue;
        Worker& worker;
    } chain(queue, worker);
    queue.taskWithTarget(&chain).call(&Chain::step, 3);
    QTRY_COMPARE(worker.log, (QStringList{"3", "2", "1", "0"}));
    QVERIFY(queue.isEmpty());
}

void TaskQueueTest::stalledQueueStartsItsHeadAgain()
{
    Worker worker;
    KXTaskQueueObject queue;
    queue.stallCurrentTask();
    QVERIFY(!queue.isStalled()); // nothing to stall
    queue.taskWithTarget(&worker).call(&Worker::run, "head");
    QTRY_COMPARE(worker.log.size(), 1);
    queue.stallCurrentTask();
    QVERIFY(queue.isStalled() && !queue.isRunning() && !queue.isEmpty());
    queue.finishCurrentTask();
    QVERIFY(queue.isStalled());
    queue.taskWithTarget(&worker).call(&Worker::run, "next");
    QTRY_COMPARE(worker.log, (QStringList{"head", "head"}));
    queue.finishCurrentTask();
    QTRY_COMPARE(worker.log, (QStringList{"head", "head", "next"}));
    QVERIFY(!queue.isEmpty()); // nothing clears the flag
}

void TaskQueueTest::argumentsOutliveTheCaller()
{
    Worker worker;
    KXTaskQueueObject queue;
    {
        QString name("kept");
        queue.taskWithTarget(&worker).call(&Worker::run, name);
        name = "changed";
    }
    QTRY_COMPARE(worker.log, QStringList{"kept"});
}

void TaskQueueTest::tasksOfAGoneTargetAreSkipped()
{
    auto gone = std::make_unique<Worker>();
    Worker worker;
    KXTaskQueueObject queue;
    queue.taskWithTarget(gone.get()).call(&Worker::run, "never");
    queue.taskWithTarget(&worker).call(&Worker::run, "after");
    gone.reset();
    QTRY_COMPARE(worker.log, QStringList{"after"});
}

}

QTEST_GUILESS_MAIN(vantoro::TaskQueueTest)
#include "task_queue_test.moc"
