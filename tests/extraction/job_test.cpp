#include "extraction/KXArchiveManageController.h"

#include "app/KXPrefsDefault.h"
#include "platform/OrphanedFolders.h"
#include "tests/support/FakeWorkspace.h"
#include "tests/support/MemoryDefaultsStore.h"
#include "tests/support/ScriptedTaskView.h"
#include "tests/support/ZipBuilder.h"

#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace vantoro {
namespace {

const QByteArray kShiftJisName = "\x93\xFA\x96\x7B\x8C\xEA\x83\x74\x83\x40\x83\x43\x83\x8B.txt"; // 日本語ファイル.txt
const QString kShiftJisText = QString::fromUtf8("日本語ファイル.txt");

/// Everything below a folder, folders with a slash at the end, hidden items included.
QStringList itemsIn(const QString& folder)
{
    QStringList items;
    for (const QFileInfo& info :
         QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)) {
        items += info.fileName() + (info.isDir() ? "/" : "");
        if (info.isDir()) {
            for (const QString& below : itemsIn(info.filePath()))
                items += info.fileName() + "/" + below;
        }
    }
    items.sort();
    return items;
}

}

class JobTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void placesTheResult_data();
    void placesTheResult();
    void neverOverwrites();
    void ownChoicesBeatTheSettings_data();
    void ownChoicesBeatTheSettings();
    void numbersOfHiddenFoldersRiseAndSkipTakenNames();
    void hiddenFolderIsListedWhileTheJobRuns();
    void takesOnlyTheChosenEntries();
    void tellsTheNamesOfEntries();
    void folderNamedLikeAProgramLosesItsExtension();
    void folderTakesTheArchivesDateOnlyWhenAskedTo_data();
    void folderTakesTheArchivesDateOnlyWhenAskedTo();

    void damagedEntryAsksAndKeepsTheArchive();
    void stoppingAtADamagedEntryLeavesNothing();
    void unknownFileIsRefusedWithASentence();
    void missingFileSaysWhy();
    void destinationThatVanishedSaysSo();

    void passwordIsAskedAgainAfterAWrongOne_data();
    void passwordIsAskedAgainAfterAWrongOne();
    void refusedPasswordLeavesNothingAndSaysNothing_data();
    void refusedPasswordLeavesNothingAndSaysNothing();

    void encodingIsAskedBelowTheThreshold_data();
    void encodingIsAskedBelowTheThreshold();
    void stoppedEncodingQuestionLeavesNothing();

    void cancelAtEachStepLeavesNothing_data();
    void cancelAtEachStepLeavesNothing();
    void jobThatIsDroppedInTheMiddleCleansUp();

    void archiveGoesToTheTrashWithItsVolumes();
    void opensOrRevealsTheResult_data();
    void opensOrRevealsTheResult();

private:
    QString path(const QString& name) const { return QDir(m_folder->path()).canonicalPath() + "/" + name; }
    QString destination() const { return path("out"); }
    std::unique_ptr<KXArchiveManageController> makeJob(const QString& archive);
    void run(KXArchiveManageController& job);
    void extract(const QString& archive) { run(*makeJob(archive)); }
    bool pack(const QStringList& arguments) const;
    QStringList askedKinds() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MemoryDefaultsStore> m_store;
    std::unique_ptr<FakeWorkspace> m_workspace;
    std::unique_ptr<ScriptedTaskView> m_view;
    int m_finished = 0;
};

void JobTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_store = std::make_unique<MemoryDefaultsStore>();
    m_workspace = std::make_unique<FakeWorkspace>();
    m_view = std::make_unique<ScriptedTaskView>();
    m_finished = 0;
    SharedSelection::clear();
    QVERIFY(QDir(m_folder->path()).mkdir("out"));
    KXPrefsDefault::setCreateFolder(1);
    KXPrefsDefault::setAutoThreshold(80);
}

void JobTest::cleanup()
{
    QCOMPARE(OrphanedFolders::paths(), QStringList());
    m_view.reset();
    m_workspace.reset();
    m_store.reset();
}

std::unique_ptr<KXArchiveManageController> JobTest::makeJob(const QString& archive)
{
    auto job = KXArchiveManageController::initWithFilename(path(archive));
    job->setDestination(destination());
    job->setTaskView(m_view.get());
    m_view->setArchiveController(job.get());
    return job;
}

void JobTest::run(KXArchiveManageController& job)
{
    const int before = m_finished;
    job.prepare();
    job.runWithFinishAction(
        Action<KXArchiveManageController*>(this, [this](KXArchiveManageController*) { ++m_finished; }));
    QTRY_COMPARE_WITH_TIMEOUT(m_finished, before + 1, 30000);
}

bool JobTest::pack(const QStringList& arguments) const
{
    QProcess program;
    program.setWorkingDirectory(m_folder->path());
    program.start("7z", arguments);
    return program.waitForFinished() && program.exitCode() == 0;
}

QStringList JobTest::askedKinds() const
{
    QStringList kinds;
    for (const auto& asked : m_view->asked())
        kinds += asked.what;
    return kinds;
}

void JobTest::placesTheResult_data()
{
    QTest::addColumn<bool>("single");
    QTest::addColumn<qint64>("mode");
    QTest::addColumn<QStringList>("items");
    const QStringList enclosed{"things/", "things/a.txt", "things/b/", "things/b/c.txt"};
    QTest::newRow("several, as needed") << false << qint64{1} << enclosed;
    QTest::newRow("several, always") << false << qint64{2} << enclosed;
    QTest::newRow("several, never") << false << qint64{3} << QStringList{"a.txt", "b/", "b/c.txt"};
    QTest::newRow("several, unknown mode") << false << qint64{7} << enclosed;
    QTest::newRow("single, as needed") << true << qint64{1} << QStringList{"a.txt"};
    QTest::newRow("single, always") << true << qint64{2} << QStringList{"things/", "things/a.txt"};
    QTest::newRow("single, never") << true << qint64{3} << QStringList{"a.txt"};
}

void JobTest::placesTheResult()
{
    QFETCH(bool, single);
    QFETCH(qint64, mode);
    ZipBuilder zip;
    zip.add("a.txt", "first");
    if (!single)
        zip.add("b/", {}).add("b/c.txt", "second");
    QVERIFY(zip.write(path("things.zip")));
    KXPrefsDefault::setCreateFolder(mode);
    extract("things.zip");
    auto items = itemsIn(destination());
    QTEST(items, "items");
    QCOMPARE(askedKinds(), QStringList());
    QVERIFY(QFile::exists(path("things.zip")));
}

void JobTest::neverOverwrites()
{
    QVERIFY(ZipBuilder().add("a.txt", "new").write(path("a.zip")));
    QFile existing(destination() + "/a.txt");
    QVERIFY(existing.open(QIODevice::ReadWrite) && existing.write("old") == 3);
    existing.close();
    for (const qint64 mode : {1, 3}) {
        KXPrefsDefault::setCreateFolder(mode);
        extract("a.zip");
    }
    QCOMPARE(itemsIn(destination()).size(), 3);
    QVERIFY(existing.open(QIODevice::ReadOnly));
    QCOMPARE(existing.readAll(), "old");
}

void JobTest::ownChoicesBeatTheSettings_data()
{
    QTest::addColumn<int>("own");
    QTest::addColumn<bool>("setting");
    QTest::addColumn<bool>("flag"); // of deleteArchive and openExtractedItem
    QTest::addColumn<bool>("soloDate"); // has no setting that counts
    QTest::newRow("setting on") << -1 << true << true << false;
    QTest::newRow("setting off") << -1 << false << false << false;
    QTest::newRow("own on") << 1 << false << true << true;
    QTest::newRow("own off") << 0 << true << false << false;
}

void JobTest::ownChoicesBeatTheSettings()
{
    QFETCH(int, own);
    QFETCH(bool, setting);
    QFETCH(bool, flag);
    QFETCH(bool, soloDate);
    KXPrefsDefault::setRemoveArchive(setting);
    KXPrefsDefault::setOpenFolder(setting);
    KXPrefsDefault::setChangeDate(setting);
    KXPrefsDefault::setModifiedDate(setting ? 2 : 1);
    const auto job = makeJob("a.zip");
    job->setDeleteArchive(own);
    job->setOpenExctractedItem(own);
    job->setChangeDateOfExtractedSingleItems(own);
    job->setCopyArchiveDateToExtractedFolder(own);
    job->setFolderCreationMode(own);
    QCOMPARE(job->deleteArchive(), flag);
    QCOMPARE(job->openExtractedItem(), flag);
    QCOMPARE(job->copyArchiveDateToExtractedFolder(), flag);
    QCOMPARE(job->changeDateOfExtractedSingleItems(), soloDate);
    QCOMPARE(job->folderCreationMode(), own >= 0 ? own : 1);
}

void JobTest::numbersOfHiddenFoldersRiseAndSkipTakenNames()
{
    QVERIFY(ZipBuilder().add("a.txt", "a").write(path("a.zip")));
    static const QRegularExpression pattern("\\.Vantoro(\\d+)$");
    const auto numberOfNext = [&] {
        int number = -1;
        m_view->onStep = [&](const QString& step) {
            if (step == "name")
                number = pattern.match(OrphanedFolders::paths().value(0)).captured(1).toInt();
        };
        extract("a.zip");
        return number;
    };
    const int first = numberOfNext();
    QVERIFY(first >= 0);
    QCOMPARE(numberOfNext(), first + 1);
    QVERIFY(QDir(destination()).mkdir(QStringLiteral(".Vantoro%1").arg(first + 2)));
    QCOMPARE(numberOfNext(), first + 3);
    QVERIFY(QDir(destination()).rmdir(QStringLiteral(".Vantoro%1").arg(first + 2))); // not ours, so it stood
}

void JobTest::hiddenFolderIsListedWhileTheJobRuns()
{
    QVERIFY(ZipBuilder().add("a.txt", "a").write(path("a.zip")));
    for (const qint64 mode : {1, 2, 3}) {
        QStringList listed;
        m_view->onStep = [&](const QString& step) {
            if (step == "name")
                listed = OrphanedFolders::paths();
        };
        KXPrefsDefault::setCreateFolder(mode);
        extract("a.zip");
        QCOMPARE(listed.size(), mode == 3 ? 0 : 1);
    }
}

void JobTest::takesOnlyTheChosenEntries()
{
    QVERIFY(ZipBuilder().add("a.txt", "a").add("b.txt", "b").add("c.txt", "c").write(path("abc.zip")));
    SharedSelection::set(std::make_shared<const EntryIndices>(EntryIndices{2, 0}));
    extract("abc.zip");
    QCOMPARE(itemsIn(destination()), (QStringList{"abc/", "abc/a.txt", "abc/c.txt"}));
    // A job that was given its entries does not look at the list any more.
    const auto job = makeJob("abc.zip");
    job->setSelectedEntries({1});
    run(*job);
    QVERIFY(itemsIn(destination()).contains("b.txt"));
}

void JobTest::tellsTheNamesOfEntries()
{
    QVERIFY(ZipBuilder().add("a.txt", "a").add("d/b\x1B[0m.txt", "b").write(path("a.zip")));
    extract("a.zip");
    QVERIFY(m_view->names().contains("a.txt"));
    QVERIFY(!m_view->names().join("").contains(QChar(0x1B))); // control characters do not reach the screen
}

void JobTest::folderNamedLikeAProgramLosesItsExtension()
{
    QVERIFY(ZipBuilder().add("a.txt", "a").add("b.txt", "b").write(path("tool.app.zip")));
    QVERIFY(ZipBuilder().add("Real.app/run", "a").write(path("real.zip")));
    extract("tool.app.zip");
    extract("real.zip"); // the single item of the archive keeps its name
    QCOMPARE(itemsIn(destination()), (QStringList{"Real.app/", "Real.app/run", "tool/", "tool/a.txt", "tool/b.txt"}));
}

void JobTest::folderTakesTheArchivesDateOnlyWhenAskedTo_data()
{
    QTest::addColumn<qint64>("setting");
    QTest::addColumn<bool>("taken");
    QTest::newRow("no") << qint64{1} << false;
    QTest::newRow("yes") << qint64{2} << true;
    QTest::newRow("other") << qint64{3} << false;
}

void JobTest::folderTakesTheArchivesDateOnlyWhenAskedTo()
{
    QFETCH(qint64, setting);
    QVERIFY(ZipBuilder().add("a.txt", "a").add("b.txt", "b").write(path("ab.zip")));
    const QDateTime old(QDate(2001, 2, 3), QTime(4, 5, 6));
    QFile archive(path("ab.zip"));
    QVERIFY(archive.open(QIODevice::ReadWrite) && archive.setFileTime(old, QFileDevice::FileModificationTime));
    archive.close();
    KXPrefsDefault::setModifiedDate(setting);
    extract("ab.zip");
    const bool taken = QFileInfo(destination() + "/ab").lastModified() == old;
    QTEST(taken, "taken");
}

void JobTest::damagedEntryAsksAndKeepsTheArchive()
{
    QVERIFY(ZipBuilder().add("good.txt", "g").add("bad.txt", "b", ZipBuilder::Damage::Checksum).write(path("a.zip")));
    KXPrefsDefault::setRemoveArchive(true);
    const auto job = makeJob("a.zip");
    run(*job);
    QCOMPARE(askedKinds(), QStringList{"error"});
    QVERIFY(m_view->asked().front().text.startsWith("DO NOT extract the files \"bad.txt\" from archive \"a.zip\": "));
    QVERIFY(itemsIn(destination()).join(' ').contains("good.txt"));
    QCOMPARE(m_workspace->log, QStringList()); // an archive with errors stays
    QVERIFY(job->outcome().succeeded);
    QCOMPARE(job->outcome().problems.size(), 1);
}

void JobTest::stoppingAtADamagedEntryLeavesNothing()
{
    QVERIFY(ZipBuilder().add("bad.txt", "b", ZipBuilder::Damage::Checksum).add("good.txt", "g").write(path("a.zip")));
    m_view->goesOn = false;
    const auto job = makeJob("a.zip");
    run(*job);
    QCOMPARE(askedKinds(), QStringList{"error"});
    QCOMPARE(itemsIn(destination()), QStringList());
    QVERIFY(job->isCancelled() && !job->outcome().succeeded);
}

void JobTest::unknownFileIsRefusedWithASentence()
{
    QFile file(path("letter.zip"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("Dear Madam, this is no archive.") > 0);
    file.close();
    const auto job = makeJob("letter.zip");
    run(*job);
    QCOMPARE(askedKinds(), QStringList{"open error"});
    QCOMPARE(m_view->asked().front().text, "DO NOT support unarchive this archive due to the format error.");
    QCOMPARE(itemsIn(destination()), QStringList());
    QVERIFY(!job->outcome().error.isEmpty());
}

void JobTest::missingFileSaysWhy()
{
    m_view->goesOn = false;
    extract("gone.zip");
    QCOMPARE(askedKinds(), QStringList{"error"});
    QVERIFY(m_view->asked().front().text.startsWith(
        "ERROR happened while reading the contents of the file \"gone.zip\": "));
}

void JobTest::destinationThatVanishedSaysSo()
{
    QVERIFY(ZipBuilder().add("a.txt", "a").write(path("a.zip")));
    QVERIFY(QDir(m_folder->path()).rmdir("out"));
    extract("a.zip");
    QCOMPARE(askedKinds(), QStringList{"open error"});
    QVERIFY(m_view->asked().front().text.startsWith(
        "ERROR happened while extracting the contents of the file \"a.zip\": "));
}

void JobTest::passwordIsAskedAgainAfterAWrongOne_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("archive");
    QTest::newRow("zip") << QStringList{"a", "-psecret", "s.zip", "plain.txt"} << "s.zip";
    QTest::newRow("zip with AES") << QStringList{"a", "-psecret", "-mem=AES256", "s.zip", "plain.txt"} << "s.zip";
    QTest::newRow("7z") << QStringList{"a", "-psecret", "s.7z", "plain.txt"} << "s.7z";
    QTest::newRow("7z with encrypted names") << QStringList{"a", "-psecret", "-mhe=on", "s.7z", "plain.txt"} << "s.7z";
}

void JobTest::passwordIsAskedAgainAfterAWrongOne()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, archive);
    QFile plain(path("plain.txt"));
    QVERIFY(plain.open(QIODevice::WriteOnly) && plain.write(QByteArray(5000, 'p')) == 5000);
    plain.close();
    if (!pack(arguments))
        QSKIP("needs the tool 7z");
    m_view->passwords = {"wrong", "secret"};
    extract(archive);
    QCOMPARE(askedKinds(), (QStringList{"password", "password"}));
    QCOMPARE(m_view->attempts, (std::vector<unsigned>{0, 1}));
    QCOMPARE(itemsIn(destination()), QStringList{"plain.txt"});
}

void JobTest::refusedPasswordLeavesNothingAndSaysNothing_data() { passwordIsAskedAgainAfterAWrongOne_data(); }

void JobTest::refusedPasswordLeavesNothingAndSaysNothing()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, archive);
    QFile plain(path("plain.txt"));
    QVERIFY(plain.open(QIODevice::WriteOnly) && plain.write(QByteArray(5000, 'p')) == 5000);
    plain.close();
    if (!pack(arguments))
        QSKIP("needs the tool 7z");
    const auto job = makeJob(archive);
    run(*job);
    QCOMPARE(askedKinds(), QStringList{"password"});
    QVERIFY(job->isCancelled() && !job->outcome().succeeded);
    QCOMPARE(itemsIn(destination()), QStringList());
}

void JobTest::encodingIsAskedBelowTheThreshold_data()
{
    QTest::addColumn<qint64>("threshold");
    QTest::addColumn<bool>("setting"); // the encoding is fixed in the settings
    QTest::addColumn<bool>("asks");
    QTest::newRow("below") << qint64{101} << false << true;
    QTest::newRow("reached") << qint64{0} << false << false;
    QTest::newRow("fixed") << qint64{101} << true << false;
}

void JobTest::encodingIsAskedBelowTheThreshold()
{
    QFETCH(qint64, threshold);
    QFETCH(bool, setting);
    QFETCH(bool, asks);
    const CharsetId shiftJis = XADString::encodingForEncodingName("Shift_JIS");
    QVERIFY(ZipBuilder().add(kShiftJisName, "a").write(path("j.zip")));
    KXPrefsDefault::setAutoThreshold(threshold);
    KXPrefsDefault::setFileEncode(setting ? shiftJis : 0);
    m_view->encoding = shiftJis;
    extract("j.zip");
    QCOMPARE(askedKinds(), asks ? QStringList{"encoding"} : QStringList());
    if (asks || setting)
        QCOMPARE(itemsIn(destination()), QStringList{kShiftJisText});
}

void JobTest::stoppedEncodingQuestionLeavesNothing()
{
    QVERIFY(ZipBuilder().add(kShiftJisName, "a").write(path("j.zip")));
    KXPrefsDefault::setAutoThreshold(101);
    const auto job = makeJob("j.zip");
    run(*job);
    QCOMPARE(askedKinds(), QStringList{"encoding"});
    QVERIFY(job->isCancelled());
    QCOMPARE(itemsIn(destination()), QStringList());
}

void JobTest::cancelAtEachStepLeavesNothing_data()
{
    QTest::addColumn<QString>("step");
    QTest::addColumn<qint64>("mode");
    for (const qint64 mode : {1, 2, 3}) {
        for (const char* step : {"start", "name", "progress", "error", "encoding"})
            QTest::addRow("%s in mode %lld", step, static_cast<long long>(mode)) << step << mode;
    }
}

void JobTest::cancelAtEachStepLeavesNothing()
{
    QFETCH(QString, step);
    QFETCH(qint64, mode);
    ZipBuilder zip;
    zip.add(kShiftJisName, QByteArray(300000, 'x')).add("bad.txt", "b", ZipBuilder::Damage::Checksum);
    for (int i = 0; i < 50; ++i)
        zip.add("file" + QByteArray::number(i), QByteArray(300000, 'y'));
    QVERIFY(zip.write(path("a.zip")));
    KXPrefsDefault::setCreateFolder(mode);
    KXPrefsDefault::setAutoThreshold(101);
    m_view->encoding = XADString::encodingForEncodingName("Shift_JIS");
    const auto job = makeJob("a.zip");
    m_view->onStep = [&](const QString& reached) {
        if (reached == step)
            job->setIsCancelled(true);
    };
    if (step == "start")
        job->setIsCancelled(true);
    run(*job);
    QVERIFY(!job->outcome().succeeded);
    QVERIFY(!askedKinds().contains("open error")); // who stops is told nothing
    if (mode != 3)
        QCOMPARE(itemsIn(destination()), QStringList());
    for (const QString& item : itemsIn(destination()))
        QVERIFY2(!item.startsWith('.'), qPrintable(item)); // whole files may stay, working folders may not
}

void JobTest::jobThatIsDroppedInTheMiddleCleansUp()
{
    ZipBuilder zip;
    for (int i = 0; i < 200; ++i)
        zip.add("file" + QByteArray::number(i), QByteArray(100000, 'y'));
    QVERIFY(zip.write(path("a.zip")));
    auto job = makeJob("a.zip");
    std::atomic<bool> started{false};
    m_view->onStep = [&started, running = job.get()](const QString&) {
        started = true;
        while (!running->isCancelled())
            std::this_thread::yield();
    };
    job->prepare();
    job->runWithFinishAction(
        Action<KXArchiveManageController*>(this, [this](KXArchiveManageController*) { ++m_finished; }));
    QTRY_VERIFY(started);
    job.reset();
    QCoreApplication::processEvents();
    QCOMPARE(itemsIn(destination()), QStringList());
    QCOMPARE(m_finished, 0);
}

void JobTest::archiveGoesToTheTrashWithItsVolumes()
{
    QFile plain(path("plain.bin"));
    QVERIFY(plain.open(QIODevice::WriteOnly));
    for (int i = 0; i < 300000; ++i)
        plain.putChar(static_cast<char>(i * i % 251 ^ i >> 8));
    plain.close();
    if (!pack({"a", "-v40k", "-mx0", "s.7z", "plain.bin"}))
        QSKIP("needs the tool 7z");
    KXPrefsDefault::setRemoveArchive(true);
    extract("s.7z.001");
    QCOMPARE(itemsIn(destination()), QStringList{"plain.bin"});
    QCOMPARE(m_workspace->log.size(), 1);
    QVERIFY(m_workspace->log.front().startsWith("recycle " + path("").chopped(1) + ": s.7z.001 s.7z.002"));
    QVERIFY(m_workspace->log.front().endsWith("s.7z.008"));
}

void JobTest::opensOrRevealsTheResult_data()
{
    QTest::addColumn<QByteArray>("entry"); // the single top item, or nothing for two items
    QTest::addColumn<qint64>("mode");
    QTest::addColumn<QString>("done"); // %1 stands for the destination
    QTest::newRow("folder") << QByteArray() << qint64{1} << "open %1/r";
    QTest::newRow("file") << QByteArray("a.txt") << qint64{1} << "reveal %1/a.txt";
    QTest::newRow("package") << QByteArray("T.app/x") << qint64{1} << "reveal %1/T.app";
    QTest::newRow("into the destination") << QByteArray("a.txt") << qint64{3} << "open %1";
}

void JobTest::opensOrRevealsTheResult()
{
    QFETCH(QByteArray, entry);
    QFETCH(qint64, mode);
    QFETCH(QString, done);
    ZipBuilder zip;
    if (entry.isEmpty())
        zip.add("1", "1").add("2", "2");
    else
        zip.add(entry, "x");
    QVERIFY(zip.write(path("r.zip")));
    KXPrefsDefault::setCreateFolder(mode);
    KXPrefsDefault::setOpenFolder(true);
    extract("r.zip");
    QCOMPARE(m_workspace->log, QStringList{done.arg(destination())});
}

}

QTEST_GUILESS_MAIN(vantoro::JobTest)
#include "job_test.moc"
