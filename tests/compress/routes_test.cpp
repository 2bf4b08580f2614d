#include "app/KXPrefsDefault.h"
#include "compress/KXArchiveWrapper.h"
#include "compress/PackRoutes.h"
#include "platform/LzmaSDKObjCWriter.h"
#include "platform/SSZipArchive.h"
#include "platform/SVZArchive.h"
#include "platform/WriterMonitor.h"
#include "tests/support/FakeWorkspace.h"
#include "tests/support/MemoryDefaultsStore.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

namespace vantoro {

/// What the routes write, seen through other programs' eyes.
class RoutesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void sevenZipIsNamedAfterTheFirstPathAndHoldsNoTimes();
    void sevenZipHidesNamesBehindThePassword();
    void wrapperKnowsOneKindInAnyCaseOfLetters();
    void zipMakesOneArchivePerFolderAndOneForAllFiles();
    void zipArchivesThatShareANameReplaceEachOther();
    void zipTakesAPasswordAndNoneWhenItIsEmpty();
    void otherKindsHoldTheWholeTree_data();
    void otherKindsHoldTheWholeTree();
    void singleFileKindsPackOneFile();
    void destinationFolderIsOpenedWhenTheSettingsSaySo();
    void failuresAreLoggedAndLeaveNothing_data();
    void failuresAreLoggedAndLeaveNothing();
    void stoppingLeavesNothingAndWritesNoMore();
    void pathsAreListedOnceAndTheFirstGivesTheDestination();
    void zipCanLeaveTheFolderItselfOut();
    void genericArchivesSayWhyTheyCannotBeOpened();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    QString write(const QString& name, const QByteArray& content) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write a test file");
        return path(name);
    }
    QString output(const QString& program, const QStringList& arguments) const
    {
        QProcess process;
        process.start(program, arguments);
        process.waitForFinished();
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    /// Names in the archive in its order.
    QStringList names(const QString& archive) const
    {
        return output(QStringLiteral("bsdtar"), {"-tf", path(archive)}).split('\n', Qt::SkipEmptyParts);
    }
    bool opens(const QString& archive, const QString& password) const
    {
        QProcess process;
        process.start(QStringLiteral("7z"), {"t", "-p" + password, path(archive)});
        return process.waitForFinished() && process.exitCode() == 0;
    }
    QStringList inOut() const
    {
        return QDir(path("out")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    /// As the page does it.
    void run(PackRoutes& routes, const QString& kind, const QStringList& files, const QString& password = {})
    {
        routes.loadFilesPath(files);
        routes.setDestArchivePath(path("out"));
        routes.setArchiveExtension(kind);
        routes.setPassword(password);
        if (!routes.takesPassword())
            routes.appendArchiveName();
        routes.startArchive();
    }
    void run(const QString& kind, const QStringList& files, const QString& password = {})
    {
        PackRoutes routes;
        run(routes, kind, files, password);
        QCOMPARE(routes.destArchivePath(), path("out"));
        QCOMPARE(routes.filesArray(), files);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    MemoryDefaultsStore m_store;
    FakeWorkspace m_workspace;
};

class Watcher final : public WriterMonitor {
public:
    void progressed(double fraction, const QString& name) override
    {
        fractions.push_back(fraction);
        last = name;
        if (stops)
            cancel.cancel();
    }
    std::vector<double> fractions;
    QString last;
    bool stops = false;
};

void RoutesTest::initTestCase()
{
    for (const QString tool : {"7z", "bsdtar", "unzip"}) {
        if (QStandardPaths::findExecutable(tool).isEmpty())
            QSKIP(qPrintable("needs the tool " + tool));
    }
}

void RoutesTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QDir().mkpath(path("out"));
    KXPrefsDefault::setOpenFolder(false);
    m_workspace.log.clear();
}

void RoutesTest::sevenZipIsNamedAfterTheFirstPathAndHoldsNoTimes()
{
    run("7z", {write("trip.tar.gz", "1"), write("b.txt", "2")});
    QCOMPARE(inOut(), QStringList{"trip.tar.7z"});
    const QString about = output("7z", {"l", "-slt", path("out/trip.tar.7z")});
    QVERIFY(about.contains("\nPath = trip.tar.gz\n") && about.contains("\nPath = b.txt\n"));
    QVERIFY(!about.contains(QRegularExpression("\n(Modified|Created|Accessed) = [0-9]")));
    QVERIFY(about.contains("LZMA2"));
}

void RoutesTest::sevenZipHidesNamesBehindThePassword()
{
    run("7z", {write("diary.txt", "dear diary")}, "sesame");
    QVERIFY(opens("out/diary.7z", "sesame"));
    QVERIFY(!opens("out/diary.7z", "wrong"));
    QVERIFY(!output("7z", {"l", "-pwrong", path("out/diary.7z")}).contains("diary.txt"));
}

void RoutesTest::wrapperKnowsOneKindInAnyCaseOfLetters()
{
    const QStringList files{write("My.Project/a", "a")};
    KXArchiveWrapper::initWithPathArray(files)->compress();
    const auto zip = KXArchiveWrapper::initWithPathArray(files, {}, "zip", path("out"));
    zip->setDestinationPath();
    zip->compress();
    QCOMPARE(inOut(), QStringList());
    const auto upper = KXArchiveWrapper::initWithPathArray({path("My.Project")}, {}, "7Z", path("out"));
    upper->setDestinationPath();
    QCOMPARE(upper->destFileName(), "My");
    QCOMPARE(upper->destinationPath(), path("out/My.7Z"));
    upper->compress();
    QCOMPARE(inOut(), QStringList{"My.7Z"});
}

void RoutesTest::zipMakesOneArchivePerFolderAndOneForAllFiles()
{
    write("A/in a", "a");
    write("B/sub/in b", "b");
    PackRoutes routes;
    Watcher watcher;
    routes.setMonitor(&watcher);
    run(routes, "zip", {path("A"), write("c.txt", "c"), path("B"), write("d.txt", "d")});
    QCOMPARE(inOut(), (QStringList{"A.zip", "B.zip", "c.zip"}));
    QCOMPARE(names("out/A.zip"), (QStringList{"A/", "A/in a"}));
    QCOMPARE(names("out/B.zip"), (QStringList{"B/", "B/sub/", "B/sub/in b"}));
    QCOMPARE(names("out/c.zip"), (QStringList{"c.txt", "d.txt"}));
    QVERIFY(std::is_sorted(watcher.fractions.begin(), watcher.fractions.end()));
    QVERIFY(!watcher.fractions.empty() && watcher.fractions.back() <= 1.0);
}

void RoutesTest::zipArchivesThatShareANameReplaceEachOther()
{
    write("report/x", "x");
    write("out/report.zip", "what stood there before");
    run("zip", {write("report.txt", "r"), path("report")});
    QCOMPARE(inOut(), QStringList{"report.zip"});
    QCOMPARE(names("out/report.zip"), QStringList{"report.txt"}); // the files' archive is written last
}

void RoutesTest::zipTakesAPasswordAndNoneWhenItIsEmpty()
{
    run("zip", {write("a.txt", "a")}, "sesame");
    QVERIFY(opens("out/a.zip", "sesame") && !opens("out/a.zip", "wrong"));
    run("zip", {write("b.txt", "b")}, "");
    QVERIFY(opens("out/b.zip", "none is needed"));
}

void RoutesTest::otherKindsHoldTheWholeTree_data()
{
    QTest::addColumn<QString>("kind");
    for (const QString kind : {"tar.gz", "tar.xz", "tar.zst", "tar.bz2", "tar", "tar.lz4", "cpio", "iso", "xar", "jar"})
        QTest::newRow(qPrintable(kind)) << kind;
}

void RoutesTest::otherKindsHoldTheWholeTree()
{
    QFETCH(QString, kind);
    write("src/x/y.c", "int y;");
    write("src/.hidden", "h");
    QDir().mkpath(path("src/empty"));
    QFile::link("x/y.c", path("src/link"));
    QFile::link("src", path("by name"));
    ::chmod(qPrintable(path("src/x")), 0750);
    run(kind, {path("src"), write("loose", "l"), path("by name")}, "no kind here has a password");
    QCOMPARE(inOut(), QStringList{"src." + kind});
    QDir().mkpath(path("back"));
    QCOMPARE(QProcess::execute("bsdtar", {"-xf", path("out/src." + kind), "-C", path("back")}), 0);
    for (const QString tree : {"back/src", "back/by name"}) {
        QCOMPARE(QProcess::execute("diff", {"-r", "--no-dereference", path("src"), path(tree)}), 0);
        QVERIFY(QFileInfo(path(tree + "/link")).isSymLink() && QFileInfo(path(tree + "/empty")).isDir());
    }
    QVERIFY(QFile::exists(path("back/loose")));
    if (kind != "iso" && kind != "jar")
        QCOMPARE(QFileInfo(path("back/src/x")).permissions() & QFile::ReadOther, QFile::Permissions());
}

void RoutesTest::singleFileKindsPackOneFile()
{
    const QString file = write("old.tar.x", "some text");
    run("gz", {file});
    QCOMPARE(inOut(), QStringList{"old.tar.gz"}); // whatever the name looks like
    QCOMPARE(output("gzip", {"-dc", path("out/old.tar.gz")}), "some text");
}

void RoutesTest::destinationFolderIsOpenedWhenTheSettingsSaySo()
{
    const QStringList files{write("a.txt", "a")};
    run("tar", files);
    QTest::qWait(0);
    QCOMPARE(m_workspace.log, QStringList());
    KXPrefsDefault::setOpenFolder(true);
    run("tar", files);
    QTRY_COMPARE(m_workspace.log, QStringList{"open " + path("out")});
}

void RoutesTest::failuresAreLoggedAndLeaveNothing_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("complaint");
    for (const QString kind : {"7z", "zip", "tar.gz"}) {
        QTest::addRow("%s, nothing to read", qPrintable(kind)) << kind << ".*gone.* cannot be written: .*";
        QTest::addRow("%s, a folder in the way", qPrintable(kind)) << kind << ".*a\\.[.7a-z]+ cannot be .*";
    }
    QTest::newRow("no such kind") << "sit"
                                  << ".*a.sit cannot be written: .*";
}

void RoutesTest::failuresAreLoggedAndLeaveNothing()
{
    QFETCH(QString, kind);
    QFETCH(QString, complaint);
    QStringList before;
    QString source = path("gone");
    if (!complaint.contains("gone")) {
        source = write("a.txt", "a");
        QDir().mkpath(path("out/a." + kind));
        before = QStringList{"a." + kind};
    }
    if (kind == "sit") {
        QDir(path("out")).rmdir("a.sit");
        before.clear();
    }
    if (complaint.contains("gone"))
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("WAR: .*gone was left out of .*"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(complaint));
    run(kind, {source});
    QCOMPARE(inOut(), before);
}

void RoutesTest::stoppingLeavesNothingAndWritesNoMore()
{
    const QByteArray block(3 << 20, 'x');
    write("A/a", block);
    write("B/b", block);
    KXPrefsDefault::setOpenFolder(true);
    for (const QString kind : {"zip", "7z", "tar.gz"}) {
        PackRoutes routes;
        Watcher watcher;
        watcher.stops = true;
        routes.setMonitor(&watcher);
        run(routes, kind, {path("A"), path("B")});
        QVERIFY(!watcher.last.isEmpty());
        QCOMPARE(inOut(), QStringList());
        QCOMPARE(routes.destArchivePath(), path("out"));
    }
    QTest::qWait(0);
    QCOMPARE(m_workspace.log, QStringList());
}

void RoutesTest::pathsAreListedOnceAndTheFirstGivesTheDestination()
{
    PackRoutes routes;
    routes.loadFilesPath({});
    QVERIFY(routes.destArchivePath().isNull());
    routes.loadFilesPath({"/one/a", "/two/b", "/one/a", "/one/a/"});
    QCOMPARE(routes.filesArray(), (QStringList{"/one/a", "/two/b", "/one/a/"}));
    QCOMPARE(routes.destArchivePath(), "/one");
    routes.loadFilesPath({"/two/b", "/three/c"});
    QCOMPARE(routes.filesArray().size(), 4);
    QCOMPARE(routes.destArchivePath(), "/two");
}

void RoutesTest::zipCanLeaveTheFolderItselfOut()
{
    write("A/a", "a");
    QVERIFY(SSZipArchive::createZipFileAtPath(path("out/flat.zip"), path("A"), false, {}));
    QCOMPARE(names("out/flat.zip"), QStringList{"a"});
}

void RoutesTest::genericArchivesSayWhyTheyCannotBeOpened()
{
    QString why;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(".*cannot be opened.*"));
    QVERIFY(!SVZArchive::archiveWithURL(QUrl::fromLocalFile(path("no such/a.tar")), true, &why));
    QVERIFY(!why.isEmpty());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(".*cannot be opened.*"));
    QVERIFY(!SVZArchive::archiveWithURL(QUrl::fromLocalFile(path("out/a.tar")), false, &why));
    const auto archive = SVZArchive::archiveWithURL(QUrl::fromLocalFile(path("out/a.tar")), true, &why);
    QVERIFY(archive && why.isEmpty());
    const auto gone = SVZArchiveEntry::archiveEntryWithDirectoryName("folder", "/no/such/folder");
    QVERIFY(archive->updateEntries({gone, SVZArchiveEntry::archiveEntryWithDirectoryName("folder/in it")}, &why));
    QCOMPARE(names("out/a.tar"), (QStringList{"folder/", "folder/in it/"}));
}

}

QTEST_GUILESS_MAIN(vantoro::RoutesTest)
#include "routes_test.moc"
