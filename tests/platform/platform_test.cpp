#include "app/KXPrefsDefault.h"
#include "platform/Action.h"
#include "platform/Answer.h"
#include "platform/DefaultsStore.h"
#include "platform/PathNames.h"
#include "platform/SecurityScopedURL.h"
#include "platform/XADException.h"
#include "platform/XADString.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <set>
#include <thread>

namespace vantoro {

class PlatformTest : public QObject {
    Q_OBJECT
private slots:
    void storeSeesWhatAnotherProcessWrote();
    void storeIsOnDiskWhenAWriteReturns();
    void storeSetsADamagedFileAside();
    void storeKeepsKeysAndValuesOfAnyText();
    void storeConvertsLikeALenientOne_data();
    void storeConvertsLikeALenientOne();
    void storeTakesWritesFromManyThreads();
    void settingsReadNothingOnAFreshAccount();
    void pathNames_data();
    void pathNames();
    void containment_data();
    void containment();
    void symlinksAreResolvedAsFarAsThePathExists();
    void answerIsTakenOnceAndNeverKeptForTheNextQuestion();
    void closedAnswerEndsEveryWait();
    void actionDoesNothingOnceItsTargetIsGone();
    void nameDecodesOnlyInFittingEncodings();
    void everyErrorHasACodeOfItsOwn();
    void bookmarkFollowsNoOtherFile();
};

struct StoreFile {
    QTemporaryDir folder;
    QString path = folder.filePath("vantoro/vantoro.conf");
    QByteArray contents() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QByteArray& contents) const
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }
};

void PlatformTest::storeSeesWhatAnotherProcessWrote()
{
    const StoreFile file;
    const auto ours = makeFileDefaultsStore(file.path);
    ours->setObject("kAutoThreshold", 80);
    QCOMPARE(ours->integerForKey("kAutoThreshold"), 80);
    file.write("[General]\nkAutoThreshold=1234\nkDesktop=/home/a/Desktop\n");
    QCOMPARE(ours->integerForKey("kAutoThreshold"), 1234);
    ours->setObject("kEncoding", 5);
    QCOMPARE(ours->stringForKey("kDesktop"), "/home/a/Desktop"); // our write has not undone the other's
}

void PlatformTest::storeIsOnDiskWhenAWriteReturns()
{
    const StoreFile file;
    const auto store = makeFileDefaultsStore(file.path);
    store->setObject("kRemoveArchive", true);
    store->setObject("kLastDestinationMAX", "/a");
    QVERIFY(file.contents().contains("[General]"));
    QVERIFY(file.contents().contains("kRemoveArchive=true"));
    QVERIFY(file.contents().contains("kLastDestinationMAX=/a"));
    store->removeObjectForKey("kLastDestinationMAX");
    QVERIFY(!file.contents().contains("kLastDestinationMAX"));
}

void PlatformTest::storeSetsADamagedFileAside()
{
    const StoreFile file;
    const QByteArray damaged = "\x01\x02 this is no settings file\n[General\nkAutoThreshold\n";
    file.write(damaged);
    const auto store = makeFileDefaultsStore(file.path);
    QCOMPARE(store->integerForKey("kAutoThreshold"), 0);
    store->setObject("kAutoThreshold", 70);
    QCOMPARE(makeFileDefaultsStore(file.path)->integerForKey("kAutoThreshold"), 70);
    QFile aside(file.path + ".damaged");
    QVERIFY(aside.open(QIODevice::ReadOnly));
    QCOMPARE(aside.readAll(), damaged);
}

void PlatformTest::storeKeepsKeysAndValuesOfAnyText()
{
    const StoreFile file;
    const QString key = "bd_file:///Users/a%20b/\\x/";
    const QString other = "bd_file:/Users/a%20b/\\x/"; // must not meet the first
    const QStringList one{"/tmp/a, b/.Vantoro0"};
    {
        const auto store = makeFileDefaultsStore(file.path);
        store->setObject(key, QByteArray("\0\xFF grant", 8));
        store->setObject("orphanedTempDirectories", one);
        store->setObject("none", QStringList());
        store->setObject("map", QVariantMap{{"/a/b", QByteArray("1")}, {"/c", QByteArray("2")}});
    }
    const auto store = makeFileDefaultsStore(file.path);
    QCOMPARE(store->objectForKey(key).toByteArray(), QByteArray("\0\xFF grant", 8));
    QVERIFY(!store->objectForKey(other).isValid());
    QCOMPARE(store->stringArrayForKey("orphanedTempDirectories"), one);
    QCOMPARE(store->stringArrayForKey("none"), QStringList());
    QCOMPARE(store->objectForKey("map").toMap().value("/a/b").toByteArray(), "1");
}

void PlatformTest::storeConvertsLikeALenientOne_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("flag");
    QTest::addColumn<qint64>("number");
    QTest::newRow("true") << "true" << true << qint64{1};
    QTest::newRow("YES") << "YES" << true << qint64{1};
    QTest::newRow("false") << "false" << false << qint64{0};
    QTest::newRow("number as flag") << "3" << true << qint64{3};
    QTest::newRow("zero") << "0" << false << qint64{0};
    QTest::newRow("number with rest") << "80 percent" << true << qint64{80};
    QTest::newRow("negative") << "-1" << true << qint64{-1};
    QTest::newRow("text") << "/home/a" << false << qint64{0};
    QTest::newRow("fraction") << "2.9" << true << qint64{2};
}

void PlatformTest::storeConvertsLikeALenientOne()
{
    QFETCH(QString, stored);
    const StoreFile file;
    file.write("[General]\nkey=" + stored.toUtf8() + "\n");
    const auto store = makeFileDefaultsStore(file.path);
    QTEST(store->boolForKey("key"), "flag");
    QTEST(store->integerForKey("key"), "number");
    QCOMPARE(store->stringForKey("key"), stored);
}

void PlatformTest::storeTakesWritesFromManyThreads()
{
    const StoreFile file;
    const auto store = makeFileDefaultsStore(file.path);
    constexpr int kThreads = 4;
    constexpr int kWrites = 20;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < kWrites; ++i)
                store->setObject(QStringLiteral("key%1-%2").arg(t).arg(i), i);
        });
    }
    for (auto& thread : threads)
        thread.join();
    const auto again = makeFileDefaultsStore(file.path);
    for (int t = 0; t < kThreads; ++t) {
        for (int i = 0; i < kWrites; ++i)
            QCOMPARE(again->integerForKey(QStringLiteral("key%1-%2").arg(t).arg(i)), i);
    }
}

void PlatformTest::settingsReadNothingOnAFreshAccount()
{
    const StoreFile file;
    const auto store = makeFileDefaultsStore(file.path);
    DefaultsStore::setStandard(store.get());
    QVERIFY(!KXPrefsDefault::listArchive() && !KXPrefsDefault::extractToCurrent() && !KXPrefsDefault::openFolder());
    QCOMPARE(KXPrefsDefault::autoThreshold(), 0);
    QVERIFY(KXPrefsDefault::lastDestination().isNull() && KXPrefsDefault::desktop().isNull());
    KXPrefsDefault::setLastDestination("/first");
    KXPrefsDefault::setLastDestination("/second");
    QCOMPARE(KXPrefsDefault::lastDestination(), "/second");
    QVERIFY(file.contents().contains("kLastDestinationMAX=/second"));
    DefaultsStore::setStandard(nullptr);
}

void PlatformTest::pathNames_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("last");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("extension");
    QTest::newRow("plain") << "/a/b.zip"
                           << "b.zip"
                           << "/a"
                           << "zip";
    QTest::newRow("two") << "/a/b.tar.gz"
                         << "b.tar.gz"
                         << "/a"
                         << "gz";
    QTest::newRow("hidden") << "/a/.bashrc"
                            << ".bashrc"
                            << "/a"
                            << "";
    QTest::newRow("slash") << "/a.d/b/"
                           << "b"
                           << "/a.d"
                           << "";
    QTest::newRow("root item") << "/b"
                               << "b"
                               << "/"
                               << "";
    QTest::newRow("dot last") << "/a/b."
                              << "b."
                              << "/a"
                              << "";
}

void PlatformTest::pathNames()
{
    QFETCH(QString, path);
    QTEST(lastPathComponent(path), "last");
    QTEST(deletingLastPathComponent(path), "folder");
    QTEST(pathExtension(path), "extension");
}

void PlatformTest::containment_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("inside");
    QTest::newRow("same") << "/a/b"
                          << "/a/b" << true;
    QTest::newRow("below") << "/a/b/c"
                           << "/a/b" << true;
    QTest::newRow("same beginning") << "/a/bc"
                                    << "/a/b" << false;
    QTest::newRow("root holds all") << "/a/b"
                                    << "/" << true;
    QTest::newRow("above") << "/a"
                           << "/a/b" << false;
}

void PlatformTest::containment()
{
    QFETCH(QString, path);
    QFETCH(QString, folder);
    QTEST(pathLiesInside(path, folder), "inside");
}

void PlatformTest::symlinksAreResolvedAsFarAsThePathExists()
{
    const QTemporaryDir folder;
    const QString real = QDir(folder.path()).canonicalPath();
    QVERIFY(QDir(real).mkdir("real"));
    QVERIFY(QFile::link(real + "/real", real + "/link"));
    QVERIFY(QFile::link(real + "/nowhere", real + "/dangling"));
    QCOMPARE(resolvingSymlinks(real + "/link"), real + "/real");
    QCOMPARE(resolvingSymlinks(real + "/link/new.zip"), real + "/real/new.zip");
    QVERIFY(resolvingSymlinks(real + "/dangling").isNull());
    QVERIFY(resolvingSymlinks(QString()).isNull());
}

void PlatformTest::answerIsTakenOnceAndNeverKeptForTheNextQuestion()
{
    Answer<int> answer;
    QVERIFY(!answer.give(7)); // nobody asked
    std::atomic<int> asked{0};
    std::vector<int> taken;
    std::thread worker([&] {
        for (int question = 1; question <= 2; ++question) {
            answer.ask();
            asked = question;
            taken.push_back(answer.wait());
        }
    });
    QTRY_COMPARE(asked.load(), 1);
    QVERIFY(answer.give(1));
    QTRY_COMPARE(asked.load(), 2);
    QVERIFY(answer.give(2));
    QVERIFY(!answer.give(3)); // the second click on the same button
    worker.join();
    QCOMPARE(taken, (std::vector{1, 2}));
}

void PlatformTest::closedAnswerEndsEveryWait()
{
    Answer<int> answer;
    int first = -1;
    int second = -1;
    std::thread worker([&] {
        answer.ask();
        first = answer.wait();
        answer.ask();
        second = answer.wait();
    });
    answer.close(0);
    worker.join();
    QCOMPARE(first, 0);
    QCOMPARE(second, 0);
}

struct Counter : QObject {
    void count(int by) { total += by; }
    int total = 0;
};

void PlatformTest::actionDoesNothingOnceItsTargetIsGone()
{
    auto counter = std::make_unique<Counter>();
    const Action<int> action(counter.get(), &Counter::count);
    action(2);
    action.later(3);
    QCOMPARE(counter->total, 2);
    QTRY_COMPARE(counter->total, 5);
    action.later(1);
    counter.reset();
    QCoreApplication::processEvents();
    action(1);
    QVERIFY(!action);
}

void PlatformTest::nameDecodesOnlyInFittingEncodings()
{
    const CharsetId shiftJis = XADString::encodingForEncodingName("Shift_JIS");
    const auto name = XADString::stringWithBytes("\x93\xFA\x96\x7B.txt", shiftJis, 0.6F);
    QVERIFY(name.canDecodeWithEncoding(shiftJis));
    QVERIFY(!name.canDecodeWithEncoding(kCharsetUtf8));
    QCOMPARE(name.stringWithEncoding(shiftJis), QString::fromUtf8("日本.txt"));
    QCOMPARE(XADString::stringWithText(QString::fromUtf8("日本")).stringWithEncoding(kCharsetLatin1),
             QString::fromUtf8("日本"));
    QVERIFY(XADString::encodingNameForEncoding(0).isEmpty());
}

void PlatformTest::everyErrorHasACodeOfItsOwn()
{
    std::set<int> codes;
    const std::string_view unknown = describe(static_cast<ErrorCode>(255));
    for (int code = 0; describe(static_cast<ErrorCode>(code)) != unknown; ++code) {
        const auto error = static_cast<ErrorCode>(code);
        const int number = XADException::codeForError({error});
        QVERIFY2(number > 0 && codes.insert(number).second, qPrintable(QString::number(code)));
        QCOMPARE(XADException::describeXADError(number), QString::fromUtf8(describe(error)));
    }
    QCOMPARE(XADException::codeForError({ErrorCode::Cancelled}), 13);
    QVERIFY(codes.size() > 30);
}

void PlatformTest::bookmarkFollowsNoOtherFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("granted");
    QVERIFY(QDir(folder.path()).mkdir("granted"));
    const auto bookmark = SecurityScopedURL::fileURLWithPath(path).bookmarkData();
    QVERIFY(bookmark);
    bool isStale = true;
    QCOMPARE(SecurityScopedURL::URLByResolvingBookmarkData(*bookmark, &isStale)->path(), path);
    QVERIFY(!isStale);
    QVERIFY(QDir().rename(path, folder.filePath("kept"))); // keeps the old inode in use
    QVERIFY(!SecurityScopedURL::URLByResolvingBookmarkData(*bookmark));
    QVERIFY(QDir(folder.path()).mkdir("granted"));
    QVERIFY(SecurityScopedURL::URLByResolvingBookmarkData(*bookmark, &isStale));
    QVERIFY(isStale);
}

}

QTEST_GUILESS_MAIN(vantoro::PlatformTest)
#include "platform_test.moc"
