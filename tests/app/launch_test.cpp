#include "app/CommandLine.h"
#include "app/ExtractionSummary.h"

#include <QTest>

Q_DECLARE_METATYPE(vantoro::LaunchRequest::Kind)

namespace vantoro {

using Kind = LaunchRequest::Kind;

class LaunchTest : public QObject {
    Q_OBJECT
private slots:
    void commandLine_data();
    void commandLine();
    void mistakesNameTheWord_data();
    void mistakesNameTheWord();
    void helpNamesEveryOption();
    void summaryNamesWhatWasExtractedWhere();
    void summaryReportsEveryProblem();
    void nothingIsSaidWhenTheUserStoppedEverything();
};

void LaunchTest::commandLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QString>("folder");
    const QStringList none;
    QTest::newRow("nothing") << none << Kind::Activate << none << "";
    QTest::newRow("relative") << QStringList{"a.zip", "../b c.zip"} << Kind::Open
                              << QStringList{"/home/me/here/a.zip", "/home/me/b c.zip"} << "";
    QTest::newRow("absolute and URI") << QStringList{"/x/a.zip", "file:///y/%C3%A4%20b.zip"} << Kind::Open
                                      << QStringList{"/x/a.zip", QString::fromUtf8("/y/ä b.zip")} << "";
    QTest::newRow("here") << QStringList{"--extract-here", "a.zip"} << Kind::ExtractHere
                          << QStringList{"/home/me/here/a.zip"} << "";
    QTest::newRow("to") << QStringList{"a.zip", "--extract-to", "out"} << Kind::ExtractTo
                        << QStringList{"/home/me/here/a.zip"} << "/home/me/here/out";
    QTest::newRow("name like an option") << QStringList{"--", "--help"} << Kind::Open
                                         << QStringList{"/home/me/here/--help"} << "";
    QTest::newRow("compress") << QStringList{"--compress", "a.txt", "b"} << Kind::Compress
                              << QStringList{"/home/me/here/a.txt", "/home/me/here/b"} << "";
    QTest::newRow("new archive") << QStringList{"--compress"} << Kind::Compress << none << "";
    QTest::newRow("ask") << QStringList{"--extract-ask", "a.zip"} << Kind::ExtractAsking
                         << QStringList{"/home/me/here/a.zip"} << "";
    QTest::newRow("service") << QStringList{"--dbus-service"} << Kind::BusService << none << "";
    QTest::newRow("colon in a name") << QStringList{"a:b.zip"} << Kind::Open << QStringList{"/home/me/here/a:b.zip"}
                                     << "";
}

void LaunchTest::commandLine()
{
    QFETCH(QStringList, arguments);
    const LaunchRequest request = parseCommandLine(arguments, "/home/me/here");
    QTEST(request.kind, "kind");
    QTEST(request.paths, "paths");
    QTEST(request.folder, "folder");
}

void LaunchTest::mistakesNameTheWord_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("word");
    QTest::newRow("unknown option") << QStringList{"--nonsense"} << "--nonsense";
    QTest::newRow("no folder") << QStringList{"a.zip", "--extract-to"} << "--extract-to";
    QTest::newRow("remote") << QStringList{"https://example.org/a.zip"} << "https://example.org/a.zip";
    QTest::newRow("no archive") << QStringList{"--extract-here"} << "archive";
}

void LaunchTest::mistakesNameTheWord()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, word);
    const LaunchRequest request = parseCommandLine(arguments, "/");
    QCOMPARE(request.kind, Kind::Mistake);
    QVERIFY(request.mistake.contains(word));
}

void LaunchTest::helpNamesEveryOption()
{
    for (const char* option : {"--extract-here", "--extract-to ", "--extract-to-desktop", "--extract-ask", "--extract ",
                               "--compress", "--dbus-service", "--version"})
        QVERIFY2(helpText().contains(option), option);
}

ExtractionOutcome done(const QString& archive, const QString& item)
{
    ExtractionOutcome outcome;
    outcome.archive = archive;
    outcome.succeeded = true;
    outcome.item = item;
    return outcome;
}

void LaunchTest::summaryNamesWhatWasExtractedWhere()
{
    const auto one = summarize({done("a.zip", "/home/u/a")});
    QVERIFY(one->title.contains("a.zip"));
    QVERIFY(one->body.contains("/home/u") && one->report.isEmpty());
    QCOMPARE(one->item, "/home/u/a");
    const auto two = summarize({done("a.zip", "/home/u/a"), done("b.zip", "/tmp/b")});
    QVERIFY(two->title.contains("2"));
    QVERIFY(two->body.contains("/home/u") && two->body.contains("/tmp"));
    const auto many = summarize(std::vector(200, done("a.zip", "/home/u/a")));
    QVERIFY(many->body.count('\n') < 10 && many->body.contains("195"));
}

void LaunchTest::summaryReportsEveryProblem()
{
    auto damaged = done("a.zip", "/home/u/a");
    damaged.problems = QStringList{"first is damaged", "second is refused"};
    ExtractionOutcome failed;
    failed.archive = "b.zip";
    failed.error = "the disk is full";
    const auto summary = summarize({damaged, failed});
    QVERIFY(summary->title.contains("1") && summary->title.contains("2"));
    for (const char* text : {"a.zip", "first is damaged", "second is refused", "b.zip", "the disk is full"})
        QVERIFY2(summary->report.contains(text), text);
    QCOMPARE(summarize({failed})->body, "the disk is full");
}

void LaunchTest::nothingIsSaidWhenTheUserStoppedEverything()
{
    ExtractionOutcome stopped;
    stopped.cancelled = true;
    QVERIFY(!summarize({stopped}));
    QVERIFY(!summarize({}));
    QCOMPARE(summarize({stopped, done("a.zip", "/a")})->item, "/a");
}

}

QTEST_GUILESS_MAIN(vantoro::LaunchTest)
#include "launch_test.moc"
