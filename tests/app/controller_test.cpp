#include "app/AppDelegate.h"
#include "app/KXPrefsDefault.h"

#include "files/CSURLCache.h"
#include "platform/OrphanedFolders.h"
#include "tests/support/FakeHosts.h"
#include "tests/support/FakeWorkspace.h"
#include "tests/support/MemoryDefaultsStore.h"
#include "tests/support/ScriptedPanels.h"
#include "tests/support/ZipBuilder.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace vantoro {

/// Everything around one controller, fresh for each test.
struct Stage {
    QTemporaryDir folder;
    MemoryDefaultsStore store;
    FakeWorkspace workspace;
    ScriptedPanels panels;
    FakeTaskWindow window;
    FakeMainWindows mainWindows;
    AppDelegate delegate{window, mainWindows, panels};

    Stage()
    {
        KXPrefsDefault::setCreateFolder(1);
        SharedSelection::clear();
        QDir(folder.path()).mkdir("out");
    }
    QString path(const QString& name) const { return QDir(folder.path()).canonicalPath() + "/" + name; }
    QString zip(const QString& name) const
    {
        ZipBuilder().add(name.toUtf8() + ".txt", "x").write(path(name));
        return path(name);
    }
    bool exists(const QString& name) const { return QFile::exists(path(name)); }
    void waitUntilDone() { QTRY_VERIFY_WITH_TIMEOUT(!delegate.isRunning(), 20000); }
};

class ControllerTest : public QObject {
    Q_OBJECT
private slots:
    void init() { m_stage = std::make_unique<Stage>(); }
    void cleanup() { m_stage.reset(); }

    void launchResetsNineSettings();
    void launchShowsTheMainWindowOnlyForPreviews();
    void leftoversOfACrashAreRemoved();
    void openedFileIsShownOrExtracted_data();
    void openedFileIsShownOrExtracted();
    void danglingLinkIsIgnored();
    void destinationFollowsItsType_data();
    void destinationFollowsItsType();
    void servicesShareOneRuleAndTakeEveryFile();
    void liveArchiveIsNotTakenTwice();
    void volumesOfALiveArchiveAreNotTakenAgain();
    void chosenFolderServesTheBatch();
    void cancelledPanelDropsTheJobAndGoesOn();
    void panelOpensWhereTheSettingsSay();
    void readOnlyDestinationAsksAndTakesEachAnswer_data();
    void readOnlyDestinationAsksAndTakesEachAnswer();
    void cancelledRowIsSkippedWhereverItWaits();
    void archivesComeOutOneAfterTheOther();
    void windowGoesWhenBothQueuesAreEmpty();
    void browserExtractsItsEntriesWhateverIsOpenedMeanwhile();
    void menuCommandsChooseArchives_data();
    void menuCommandsChooseArchives();
    void viewModeToggleSwitchesWindows();
    void missingVolumeInASandboxAsksForTheFolder();
    void outcomesAreToldOnceAllIsDone();
    void quittingInTheMiddleLeavesNothing();

private:
    std::unique_ptr<Stage> m_stage;
};

void ControllerTest::launchResetsNineSettings()
{
    Stage& s = *m_stage;
    KXPrefsDefault::setAutoThreshold(5);
    KXPrefsDefault::setExtractToFolder(1);
    KXPrefsDefault::setFileEncode(5);
    KXPrefsDefault::setDesktop("/elsewhere");
    KXPrefsDefault::setRemoveArchive(true);
    KXPrefsDefault::setCreateFolder(3);
    KXPrefsDefault::setChangeDate(true);
    KXPrefsDefault::setModifiedDate(2);
    KXPrefsDefault::setChangeViewMode(true);
    KXPrefsDefault::setOpenFolder(true);
    KXPrefsDefault::setLastDestination("/last");
    s.delegate.applicationDidFinishLaunching();
    QCOMPARE(KXPrefsDefault::autoThreshold(), 80);
    QCOMPARE(KXPrefsDefault::extractToFolder(), 3);
    QCOMPARE(KXPrefsDefault::fileEncode(), 0);
    QCOMPARE(KXPrefsDefault::desktop(), KXPrefsDefault::desktopDirectory());
    QCOMPARE(KXPrefsDefault::creatFolder(), 1);
    QCOMPARE(KXPrefsDefault::modifiedDate(), 1);
    QVERIFY(!KXPrefsDefault::removeArchive() && !KXPrefsDefault::changeDate() && !KXPrefsDefault::changeViewMode());
    QVERIFY(KXPrefsDefault::openFolder()); // not one of them
    QCOMPARE(KXPrefsDefault::lastDestination(), "/last");
}

void ControllerTest::launchShowsTheMainWindowOnlyForPreviews()
{
    Stage& s = *m_stage;
    s.delegate.applicationDidFinishLaunching();
    QVERIFY(!s.mainWindows.twoPage);
    KXPrefsDefault::setListArchive(true);
    s.delegate.applicationDidFinishLaunching();
    QVERIFY(s.mainWindows.twoPage);
}

void ControllerTest::leftoversOfACrashAreRemoved()
{
    Stage& s = *m_stage;
    QVERIFY(QDir(s.folder.path()).mkpath("out/.Vantoro7/.job")); // the mark of our own folders
    QVERIFY(QDir(s.folder.path()).mkpath("out/.Vantoro7/half"));
    QVERIFY(QDir(s.folder.path()).mkpath("out/Documents"));
    OrphanedFolders::remember(s.path("out/.Vantoro7"));
    OrphanedFolders::remember(s.path("out/.Vantoro8")); // gone already
    OrphanedFolders::remember(s.path("out/Documents")); // never ours
    s.delegate.awakeFromNib();
    QVERIFY(!s.exists("out/.Vantoro7") && s.exists("out/Documents"));
    QCOMPARE(OrphanedFolders::paths(), QStringList());
}

void ControllerTest::openedFileIsShownOrExtracted_data()
{
    QTest::addColumn<bool>("listArchive");
    QTest::addColumn<bool>("changeViewMode");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("plain") << false << false << false;
    QTest::newRow("preview") << true << false << true;
    QTest::newRow("preview, single page") << true << true << false;
    QTest::newRow("single page") << false << true << false;
}

void ControllerTest::openedFileIsShownOrExtracted()
{
    QFETCH(bool, listArchive);
    QFETCH(bool, changeViewMode);
    QFETCH(bool, isShown);
    Stage& s = *m_stage;
    KXPrefsDefault::setListArchive(listArchive);
    KXPrefsDefault::setChangeViewMode(changeViewMode);
    const QString archive = s.zip("a.zip");
    s.delegate.applicationOpenFile(archive);
    QCOMPARE(s.mainWindows.log, isShown ? QStringList{"browse " + archive} : QStringList());
    QCOMPARE(s.delegate.isRunning(), !isShown);
    QCOMPARE(s.mainWindows.twoPage, isShown);
    QCOMPARE(s.delegate.archivePath(), archive);
    QCOMPARE(s.delegate.archiveExtension(), "zip");
    s.waitUntilDone();
}

void ControllerTest::danglingLinkIsIgnored()
{
    Stage& s = *m_stage;
    QVERIFY(QFile::link(s.path("nowhere.zip"), s.path("link.zip")));
    s.delegate.applicationOpenFile(s.path("link.zip"));
    s.delegate.applicationOpenFile(QString());
    QVERIFY(!s.delegate.isRunning());
}

void ControllerTest::destinationFollowsItsType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("result");
    QTest::newRow("current") << 1 << "a.zip.txt";
    QTest::newRow("desktop") << 2 << "desk/a.zip.txt";
    QTest::newRow("ask") << 3 << "out/a.zip.txt";
    QTest::newRow("unknown") << 9 << "a.zip.txt";
}

void ControllerTest::destinationFollowsItsType()
{
    QFETCH(int, type);
    QFETCH(QString, result);
    Stage& s = *m_stage;
    QVERIFY(QDir(s.folder.path()).mkdir("desk"));
    KXPrefsDefault::setDesktop(s.path("desk"));
    s.panels.choose(s.path("out"));
    s.delegate.createArchiveForPath(s.zip("a.zip"), static_cast<DestinationType>(type));
    s.waitUntilDone();
    QVERIFY(s.exists(result));
    QCOMPARE(s.panels.shown.size(), type == 3 ? 1U : 0U);
}

void ControllerTest::servicesShareOneRuleAndTakeEveryFile()
{
    Stage& s = *m_stage;
    SharedSelection::set(std::make_shared<const EntryIndices>(EntryIndices{99}));
    KXPrefsDefault::setExtractToCurrent(true);
    const QStringList files{s.zip("a.zip"), s.zip("b.unknown")};
    s.delegate.extractToDesktopWithPasteboard(files);
    QVERIFY(s.delegate.opened() && SharedSelection::indices().empty());
    s.waitUntilDone();
    QVERIFY(s.exists("a.zip.txt") && s.exists("b.unknown.txt"));
    KXPrefsDefault::setExtractToCurrent(false);
    s.delegate.extractToCurrentFolderWithPasteboard({files.front()});
    s.waitUntilDone();
    QCOMPARE(s.panels.shown.size(), 1U);
}

void ControllerTest::liveArchiveIsNotTakenTwice()
{
    Stage& s = *m_stage;
    const QString archive = s.zip("a.zip");
    s.delegate.createArchiveForPath(archive, DestinationType::Current);
    s.delegate.createArchiveForPath(archive, DestinationType::Desktop);
    QCOMPARE(s.window.rows.size(), 1U);
    QCOMPARE(s.window.log.count("front"), 1);
    s.window.visible = false; // the user closed it
    s.delegate.createArchiveForPath(archive, DestinationType::Desktop);
    QCOMPARE(s.window.rows.size(), 1U);
    QCOMPARE(s.window.log.count("front"), 2);
    s.window.rows.front()->cancelAction(s.window.rows.front().get());
    s.delegate.createArchiveForPath(archive, DestinationType::Current); // a cancelled job does not count
    QCOMPARE(s.window.rows.size(), 2U);
    s.waitUntilDone();
}

void ControllerTest::volumesOfALiveArchiveAreNotTakenAgain()
{
    Stage& s = *m_stage;
    const QByteArray whole = ZipBuilder().add("a.txt", QByteArray(1000, 'a')).bytes();
    for (int i = 0; i < 2; ++i) {
        QFile part(s.path(QStringLiteral("a.zip.00%1").arg(i + 1)));
        QVERIFY(part.open(QIODevice::WriteOnly));
        part.write(whole.mid(i * 600, i == 0 ? 600 : -1));
    }
    std::atomic<int> added{0};
    s.window.prepareRow = [&](ScriptedTaskView& row) {
        row.onStep = [&](const QString& step) {
            if (step != "name")
                return;
            performOnMainThread(&s.delegate, [&] {
                s.delegate.createArchiveForPath(s.path("a.zip.002"), DestinationType::Current);
                ++added;
            });
            while (added == 0)
                std::this_thread::yield();
        };
    };
    s.delegate.createArchiveForPath(s.path("a.zip.001"), DestinationType::Current);
    s.waitUntilDone();
    QVERIFY(added > 0 && s.exists("a.txt"));
    QCOMPARE(s.window.rows.size(), 1U);
}

void ControllerTest::chosenFolderServesTheBatch()
{
    Stage& s = *m_stage;
    s.panels.choose(s.path("out"));
    s.delegate.createArchiveForPaths({s.zip("a.zip"), s.zip("b.zip")}, DestinationType::Ask);
    s.waitUntilDone();
    QVERIFY(s.exists("out/a.zip.txt") && s.exists("out/b.zip.txt"));
    QCOMPARE(s.panels.shown.size(), 1U);
    QCOMPARE(KXPrefsDefault::lastDestination(), s.path("out"));
    s.delegate.createArchiveForPath(s.zip("c.zip"), DestinationType::Ask); // the next batch asks again
    s.waitUntilDone();
    QCOMPARE(s.panels.shown.size(), 2U);
}

void ControllerTest::cancelledPanelDropsTheJobAndGoesOn()
{
    Stage& s = *m_stage;
    s.panels.answers.push_back(std::nullopt);
    s.panels.choose(s.path("out"));
    s.delegate.createArchiveForPaths({s.zip("a.zip"), s.zip("b.zip")}, DestinationType::Ask);
    s.waitUntilDone();
    QVERIFY(!s.exists("out/a.zip.txt") && s.exists("out/b.zip.txt"));
    QVERIFY(s.window.listed.empty());
}

void ControllerTest::panelOpensWhereTheSettingsSay()
{
    Stage& s = *m_stage;
    KXPrefsDefault::setLastDestination("/last/one");
    s.delegate.createArchiveForPath(s.zip("a.zip"), DestinationType::Ask);
    s.waitUntilDone();
    KXPrefsDefault::setExtractToCurrent(true);
    s.workspace.readOnly = {s.path("").chopped(1)};
    s.delegate.createArchiveForPath(s.zip("b.zip"), DestinationType::Current);
    s.waitUntilDone();
    QCOMPARE(s.panels.shown.at(0).directory, "/last/one");
    QCOMPARE(s.panels.shown.at(1).directory, s.path("").chopped(1));
    for (const OpenPanel& panel : s.panels.shown)
        QVERIFY(!panel.chooseFiles && panel.chooseDirectories && panel.createDirectories && !panel.multipleSelection);
}

void ControllerTest::readOnlyDestinationAsksAndTakesEachAnswer_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<QString>("result"); // empty: nothing comes out
    QTest::newRow("stop") << 0 << "";
    QTest::newRow("desktop") << 1 << "Desktop/a.zip.txt";
    QTest::newRow("elsewhere") << 2 << "out/a.zip.txt";
}

void ControllerTest::readOnlyDestinationAsksAndTakesEachAnswer()
{
    QFETCH(int, answer);
    QFETCH(QString, result);
    Stage& s = *m_stage;
    qputenv("HOME", s.path("").chopped(1).toUtf8());
    qputenv("XDG_CONFIG_HOME", s.path("config").toUtf8()); // no user-dirs file: the Desktop is in the home folder
    s.workspace.readOnly = {s.path("closed")};
    QVERIFY(QDir(s.folder.path()).mkdir("closed"));
    s.panels.choose(s.path("closed"));
    s.panels.choose(s.path("out"));
    s.delegate.createArchiveForPath(s.zip("a.zip"), DestinationType::Ask);
    ScriptedTaskView& row = *s.window.rows.front();
    QTRY_VERIFY(row.notWritableAction);
    QVERIFY(!row.cancelAction); // its setup cannot be cancelled from the row
    row.notWritableAction(&row, 7); // no answer at all
    QVERIFY(s.delegate.isRunning());
    row.notWritableAction(&row, answer);
    s.waitUntilDone();
    for (const QString item : {"Desktop/a.zip.txt", "out/a.zip.txt"})
        QCOMPARE(s.exists(item), item == result);
}

void ControllerTest::cancelledRowIsSkippedWhereverItWaits()
{
    Stage& s = *m_stage;
    QStringList archives;
    for (const char* name : {"a.zip", "b.zip", "c.zip"})
        archives += s.zip(name);
    s.delegate.createArchiveForPaths(archives, DestinationType::Current);
    const auto cancel = [&](std::size_t row) { s.window.rows.at(row)->cancelAction(s.window.rows.at(row).get()); };
    cancel(1); // waits for its setup
    QCOMPARE(s.window.listed.size(), 2U);
    std::atomic<bool> goesOn{false};
    s.window.rows.at(0)->onStep = [&](const QString&) {
        while (!goesOn)
            std::this_thread::yield();
    };
    QTRY_VERIFY(s.window.rows.at(2)->log.contains("update")); // waits for its extraction
    cancel(2);
    goesOn = true;
    s.waitUntilDone();
    QVERIFY(s.exists("a.zip.txt") && !s.exists("b.zip.txt") && !s.exists("c.zip.txt"));
    QVERIFY(s.window.listed.empty());
}

void ControllerTest::archivesComeOutOneAfterTheOther()
{
    Stage& s = *m_stage;
    std::atomic<int> inside{0};
    std::atomic<int> most{0};
    QStringList order;
    s.window.prepareRow = [&](ScriptedTaskView& row) {
        row.onStep = [&](const QString& step) {
            if (step != "name")
                return;
            most = std::max(most.load(), ++inside);
            --inside;
            performOnMainThread(&s.delegate, [&order, name = row.names().constLast()] { order += name; });
        };
    };
    QStringList archives;
    QStringList expected;
    for (int i = 0; i < 5; ++i) {
        archives += s.zip(QStringLiteral("a%1.zip").arg(i));
        expected += QStringLiteral("a%1.zip.txt").arg(i);
    }
    s.delegate.createArchiveForPaths(archives, DestinationType::Current);
    QCOMPARE(s.window.rows.size(), 5U);
    s.waitUntilDone();
    QCOMPARE(order, expected);
    QCOMPARE(most.load(), 1);
}

void ControllerTest::windowGoesWhenBothQueuesAreEmpty()
{
    Stage& s = *m_stage;
    s.delegate.createArchiveForPaths({s.zip("a.zip"), s.zip("b.zip")}, DestinationType::Current);
    s.waitUntilDone();
    QTRY_COMPARE(s.window.log, (QStringList{"front", "front", "out"}));
    QVERIFY(s.window.rows.front()->log == (QStringList{"wait", "update", "prepare"}));
}

void ControllerTest::browserExtractsItsEntriesWhateverIsOpenedMeanwhile()
{
    Stage& s = *m_stage;
    QVERIFY(ZipBuilder().add("0.txt", "0").add("1.txt", "1").add("2.txt", "2").write(s.path("n.zip")));
    KXPrefsDefault::setExtractToCurrent(true);
    s.delegate.unarchiveZip(s.path("n.zip"), std::make_shared<const EntryIndices>(EntryIndices{1}));
    QCOMPARE(SharedSelection::indices(), EntryIndices{1});
    s.delegate.applicationOpenFile(s.zip("o.zip")); // empties the selection for itself
    QVERIFY(SharedSelection::indices().empty());
    s.waitUntilDone();
    QVERIFY(!s.exists("n") || !s.exists("n/0.txt"));
    QVERIFY(s.exists("1.txt") || s.exists("n/1.txt"));
    QVERIFY(s.exists("o.zip.txt"));
}

void ControllerTest::menuCommandsChooseArchives_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<QString>("result");
    QTest::newRow("named current folder, goes to the Desktop") << 0 << "desk/a.zip.txt";
    QTest::newRow("named Desktop, goes beside the archive") << 1 << "a.zip.txt";
    QTest::newRow("others, by the settings") << 2 << "out/a.zip.txt";
}

void ControllerTest::menuCommandsChooseArchives()
{
    QFETCH(int, command);
    QFETCH(QString, result);
    Stage& s = *m_stage;
    QVERIFY(QDir(s.folder.path()).mkdir("desk"));
    KXPrefsDefault::setDesktop(s.path("desk"));
    SharedSelection::set(std::make_shared<const EntryIndices>(EntryIndices{99}));
    s.panels.choose(s.zip("a.zip"));
    s.panels.choose(s.path("out"));
    constexpr std::array kCommands{&AppDelegate::extractToCurrentFolder, &AppDelegate::extractToDesktop,
                                   &AppDelegate::extractToOthers};
    (s.delegate.*kCommands.at(static_cast<std::size_t>(command)))();
    QVERIFY(s.mainWindows.twoPage);
    QTRY_VERIFY(s.delegate.isRunning());
    s.waitUntilDone();
    QVERIFY(s.exists(result));
    const OpenPanel& panel = s.panels.shown.front();
    QVERIFY(panel.chooseFiles && panel.multipleSelection && !panel.chooseDirectories && !panel.createDirectories);
    QVERIFY(panel.directory.isNull() && panel.allowedFileTypes.isEmpty());
}

void ControllerTest::viewModeToggleSwitchesWindows()
{
    Stage& s = *m_stage;
    s.delegate.showMianWindow();
    QVERIFY(s.mainWindows.twoPage);
    s.delegate.setMainTableViewEnable(true); // no single-page window yet
    s.delegate.toggleChangeViewMode(true);
    QVERIFY(!s.mainWindows.twoPage && s.mainWindows.singlePage && KXPrefsDefault::changeViewMode());
    s.delegate.setMainTableViewEnable(false);
    s.delegate.toggleChangeViewMode(false);
    QVERIFY(s.mainWindows.twoPage && !s.mainWindows.singlePage && !KXPrefsDefault::changeViewMode());
    s.delegate.tooggleQuickLook(true);
    QVERIFY(KXPrefsDefault::listArchive());
    QCOMPARE(s.mainWindows.log, QStringList{"disable"});
}

void ControllerTest::missingVolumeInASandboxAsksForTheFolder()
{
    qputenv("APP_SANDBOX_CONTAINER_ID", "test");
    Stage& s = *m_stage;
    const QByteArray whole = ZipBuilder().add("a.txt", QByteArray(1000, 'a')).bytes();
    QVERIFY(QDir(s.folder.path()).mkdir("set"));
    for (const char* piece : {"001", "003"}) {
        QFile part(s.path(QStringLiteral("set/a.zip.%1").arg(piece)));
        QVERIFY(part.open(QIODevice::WriteOnly));
        part.write(whole.left(600));
    }
    s.panels.choose(s.path("set"));
    s.delegate.createArchiveForPath(s.path("set/a.zip.001"), DestinationType::Current);
    s.waitUntilDone();
    qunsetenv("APP_SANDBOX_CONTAINER_ID");
    QCOMPARE(s.panels.shown.size(), 1U);
    QCOMPARE(s.panels.shown.front().directory, s.path("set"));
    // The part is really missing, so that the row says which one.
    QCOMPARE(s.window.rows.front()->asked().front().what, "error");
    QVERIFY(s.window.rows.front()->asked().front().text.contains("a.zip.002"));
}

void ControllerTest::outcomesAreToldOnceAllIsDone()
{
    Stage& s = *m_stage;
    std::vector<ExtractionOutcome> told;
    int times = 0;
    connect(&s.delegate, &AppDelegate::extractionsFinished, this, [&](const auto& outcomes, bool) {
        told = outcomes;
        ++times;
    });
    QSignalSpy running(&s.delegate, &AppDelegate::runningChanged);
    s.delegate.createArchiveForPaths({s.zip("a.zip"), s.zip("b.zip")}, DestinationType::Current);
    s.waitUntilDone();
    QTRY_COMPARE(times, 1);
    QCOMPARE(told.size(), 2U);
    QCOMPARE(told.front().item, s.path("a.zip.txt"));
    QCOMPARE(running.count(), 2);
}

void ControllerTest::quittingInTheMiddleLeavesNothing()
{
    QTemporaryDir folder;
    MemoryDefaultsStore store;
    FakeWorkspace workspace;
    ScriptedPanels panels;
    FakeTaskWindow window;
    FakeMainWindows mainWindows;
    KXPrefsDefault::setCreateFolder(2);
    auto delegate = std::make_unique<AppDelegate>(window, mainWindows, panels);
    QVERIFY(ZipBuilder().add("a.txt", "a").write(folder.filePath("a.zip")));
    std::atomic<bool> started{false};
    window.prepareRow = [&](ScriptedTaskView& row) {
        row.onStep = [&](const QString&) {
            started = true;
            while (row.goesOn) // until the questions are closed
                std::this_thread::yield();
        };
    };
    delegate->createArchiveForPath(folder.filePath("a.zip"), DestinationType::Current);
    QTRY_VERIFY(started);
    delegate.reset();
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{"a.zip"});
    QCOMPARE(OrphanedFolders::paths(), QStringList());
}

}

QTEST_GUILESS_MAIN(vantoro::ControllerTest)
#include "controller_test.moc"
