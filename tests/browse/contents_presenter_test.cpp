#include "tests/browse/browse_fixture.h"
#include "tests/support/FakeWorkspace.h"
#include "tests/support/MemoryDefaultsStore.h"
#include "tests/support/ScriptedBrowser.h"
#include "tests/support/ScriptedPanels.h"

#include "browse/ContentsPresenter.h"

#include "app/KXPrefsDefault.h"

#include <QProcess>

namespace vantoro {

class ContentsPresenterTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void anArchiveIsShownWithItsSummary();
    void switchedOffItIsExtractedInstead();
    void whatCannotBeOpenedIsNamed();
    void entriesThatNobodySeesAreToldAbout();
    void cancellingLeavesThePageEmpty();
    void noChoiceExtractsEverything();
    void aFolderIsHandedOverAsItsFiles();
    void zipsAreExtractedBesideThemselves();
    void zipsGoWhereTheUserSays();
    void damagedEntriesDoNotStopTheOthers();
    void anotherArchiveEndsTheQuestionForAPlace();
    void wrongAndRightPasswords();
    void aCancelledPasswordExtractsNothing();
    void encryptedNamesAreAskedForUntilTheyOpen();
    void whatWasPreviewedStaysInMemory();
    void theFilterDecidesWhatAFolderMeans();

private:
    static constexpr qsizetype kSomeRow = 1;

    QString write(const ZipBuilder& zip, const QString& name = "t.zip") const
    {
        return zip.write(m_home.path(name)) ? m_home.path(name) : QString();
    }
    QString packed(const QString& name, const QStringList& options) const;
    ArchiveTree::Node node(const QString& name) const;
    QString read(const QString& path) const
    {
        QFile file(m_home.path(path));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    OwnHome m_home;
    MemoryDefaultsStore m_defaults;
    FakeWorkspace m_workspace;
    ScriptedPanels m_panels;
    std::unique_ptr<RecordingBrowserHost> m_host;
    std::unique_ptr<ScriptedBrowserView> m_view;
    std::unique_ptr<ContentsPresenter> m_presenter;
};

void ContentsPresenterTest::init()
{
    m_presenter.reset();
    m_host = std::make_unique<RecordingBrowserHost>();
    m_view = std::make_unique<ScriptedBrowserView>();
    m_presenter = std::make_unique<ContentsPresenter>(*m_view, *m_host, m_panels);
    m_workspace.log.clear();
    KXPrefsDefault::setListArchive(true);
    KXPrefsDefault::setExtractToCurrent(true);
    KXPrefsDefault::setOpenFolder(false);
    QDir(m_home.path("docs")).removeRecursively();
    QDir().mkpath(m_home.path("chosen"));
}

QString ContentsPresenterTest::packed(const QString& name, const QStringList& options) const
{
    QDir().mkpath(m_home.path("in"));
    QFile file(m_home.path("in/letter.txt"));
    if (!file.open(QIODevice::WriteOnly) || file.write("Dear reader") < 0)
        return {};
    file.close();
    QFile::remove(m_home.path(name));
    QProcess packer;
    packer.setWorkingDirectory(m_home.path("in"));
    packer.start("7z", QStringList{"a", "-bd"} + options + QStringList{m_home.path(name), "letter.txt"});
    return packer.waitForFinished() && packer.exitCode() == 0 ? m_home.path(name) : QString();
}

ArchiveTree::Node ContentsPresenterTest::node(const QString& name) const
{
    for (ArchiveTree::Node at = 0; at < m_view->tree->nodeCount(); ++at) {
        if (m_view->tree->representedObject(at)->fileName() == name)
            return at;
    }
    return ArchiveTree::kNoNode;
}

void ContentsPresenterTest::anArchiveIsShownWithItsSummary()
{
    m_presenter->getArchiveContainerWithPath(write(ZipBuilder().add("a/b/c.txt", "hello").add("d.txt", "x")));
    QVERIFY(m_view->tree);
    QCOMPARE(lines(*m_view->tree), (QStringList{"a/", "  b/", "    c.txt", "d.txt"}));
    QVERIFY2(m_view->status.contains("Zip") && m_view->status.contains("6 B"), qPrintable(m_view->status));
    m_presenter->clearAllFiles();
    QVERIFY(!m_view->tree && !m_presenter->archive().isOpen());
}

void ContentsPresenterTest::switchedOffItIsExtractedInstead()
{
    KXPrefsDefault::setListArchive(false);
    m_presenter->getArchiveContainerWithPath(write(ZipBuilder().add("a", "1")));
    QCOMPARE(m_host->log, QStringList{"all of t.zip"});
    QVERIFY(!m_view->tree && m_view->log.isEmpty());
}

void ContentsPresenterTest::whatCannotBeOpenedIsNamed()
{
    QFile file(m_home.path("junk.zip"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no archive at all") > 0);
    file.close();
    m_presenter->getArchiveContainerWithPath(file.fileName());
    QVERIFY2(m_view->log.last().startsWith("information: junk.zip: "), qPrintable(m_view->log.last()));
    QVERIFY(!m_view->tree);
}

void ContentsPresenterTest::entriesThatNobodySeesAreToldAbout()
{
    m_presenter->getArchiveContainerWithPath(write(ZipBuilder().add(".DS_Store", "1")));
    QCOMPARE(m_view->log.last(), "information: ");
    QVERIFY(!m_view->tree && !m_presenter->archive().isOpen());
    m_presenter->getArchiveContainerWithPath(write(ZipBuilder()));
    QCOMPARE(m_view->log.last(), "notice: empty archive");
}

void ContentsPresenterTest::cancellingLeavesThePageEmpty()
{
    m_view->cancelsWork = true;
    m_presenter->getArchiveContainerWithPath(write(ZipBuilder().add("a", "1")));
    QVERIFY(!m_view->tree && !m_presenter->archive().isOpen());
    QCOMPARE(m_view->log.size(), 1); // the work, and no message
}

void ContentsPresenterTest::noChoiceExtractsEverything()
{
    m_presenter->getArchiveContainerWithPath(write(ZipBuilder().add("a/b/c/d/e.txt", "1")));
    const auto file = node("e.txt");
    m_presenter->toggleExtractSelectedItem(-1, ArchiveTree::kNoNode);
    m_presenter->toggleExtractSelectedItem(0, ArchiveTree::kRoot);
    m_presenter->toggleExtractSelectedItem(3, file); // beyond one entry and one more
    QCOMPARE(m_host->log, (QStringList{"all of t.zip", "all of t.zip", "all of t.zip"}));
    m_presenter->previewItem(3, file);
    QVERIFY(m_view->previews.empty());
}

void ContentsPresenterTest::aFolderIsHandedOverAsItsFiles()
{
    m_presenter->getArchiveContainerWithPath(
        write(ZipBuilder().add("a/", "").add("a/1", "x").add("b/", "").add("b/empty/", "").add("a/s/2", "y"), "t.cbz"));
    m_presenter->toggleExtractSelectedItem(kSomeRow, node("b"));
    QVERIFY(m_host->log.isEmpty()); // nothing but folders
    m_presenter->toggleExtractSelectedItem(kSomeRow, node("a"));
    QCOMPARE(m_host->log, QStringList{"4 1 of t.cbz"});
}

void ContentsPresenterTest::zipsAreExtractedBesideThemselves()
{
    KXPrefsDefault::setOpenFolder(true);
    m_presenter->getArchiveContainerWithPath(
        write(ZipBuilder().add("docs/a.txt", "one").add("docs/e/", "").add("docs/s/b.txt", "two").add("other", "3")));
    m_view->selected = node("docs");
    m_presenter->toggleExtractSelectedItem(kSomeRow, m_view->selected);
    QCOMPARE(read("docs/a.txt"), "one");
    QCOMPARE(read("docs/s/b.txt"), "two");
    QVERIFY(QDir(m_home.path("docs/e")).exists() && !QFile::exists(m_home.path("other")));
    QCOMPARE(m_workspace.log, QStringList{"open " + m_home.path("")});
    QVERIFY(m_host->log.isEmpty());
    QCOMPARE(m_presenter->passwordCheckState(), PasswordCheckState::NotAsked);
}

void ContentsPresenterTest::zipsGoWhereTheUserSays()
{
    KXPrefsDefault::setExtractToCurrent(false);
    m_presenter->getArchiveContainerWithPath(write(ZipBuilder().add("f", "1").add("g", "2")));
    m_view->selected = node("g");
    m_presenter->toggleExtractSelectedItem(kSomeRow, m_view->selected);
    m_panels.choose(m_home.path("chosen"));
    m_presenter->toggleExtractSelectedItem(kSomeRow, m_view->selected);
    QTRY_COMPARE(read("chosen/g"), "2");
    QVERIFY(!QFile::exists(m_home.path("chosen/f")));
    QCOMPARE(KXPrefsDefault::lastDestination(), m_home.path("chosen"));
    QCOMPARE(m_panels.shown.back().prompt, "Extract");
}

void ContentsPresenterTest::damagedEntriesDoNotStopTheOthers()
{
    m_presenter->getArchiveContainerWithPath(
        write(ZipBuilder().add("docs/bad", "1", ZipBuilder::Damage::Checksum).add("docs/good", "2")));
    m_view->selected = node("docs");
    if (m_view->selected == ArchiveTree::kNoNode)
        m_view->selected = ArchiveTree::kRoot; // the common folder is the root itself
    m_presenter->toggleExtractSelectedItem(kSomeRow, m_view->selected);
    QCOMPARE(read("docs/good"), "2");
    QVERIFY2(m_view->status.contains("docs/bad"), qPrintable(m_view->status));
}

void ContentsPresenterTest::anotherArchiveEndsTheQuestionForAPlace()
{
    KXPrefsDefault::setExtractToCurrent(false);
    m_presenter->getArchiveContainerWithPath(write(ZipBuilder().add("old1", "1").add("old2", "2")));
    m_view->selected = node("old1");
    m_panels.choose(m_home.path("chosen"));
    m_presenter->toggleExtractSelectedItem(kSomeRow, m_view->selected);
    m_presenter->getArchiveContainerWithPath(write(ZipBuilder().add("new1", "1").add("new2", "2"), "u.zip"));
    QCoreApplication::processEvents();
    QVERIFY(!QFile::exists(m_home.path("chosen/old1")) && !QFile::exists(m_home.path("chosen/new1")));
}

void ContentsPresenterTest::wrongAndRightPasswords()
{
    const QString path = packed("locked.zip", {"-psecret"});
    if (path.isEmpty())
        QSKIP("needs the tool 7z");
    m_presenter->getArchiveContainerWithPath(path);
    QVERIFY(m_view->tree && m_view->status.contains("encrypted"));
    m_presenter->previewItem(kSomeRow, node("letter.txt"));
    QCOMPARE(m_view->log.last(), "password of locked.zip");
    m_presenter->togglePasswordOK(Secret("wrong"));
    QCOMPARE(m_view->log.last(), "notice: wrong password");
    QCOMPARE(m_presenter->passwordCheckState(), PasswordCheckState::Rejected);
    QVERIFY(m_view->previews.empty());
    m_presenter->previewItem(kSomeRow, node("letter.txt"));
    m_presenter->togglePasswordOK(Secret("secret"));
    QCOMPARE(m_presenter->passwordCheckState(), PasswordCheckState::Accepted);
    QCOMPARE(m_view->previews.size(), 1U);
    QCOMPARE(m_view->previews.front().text, "Dear reader");
    m_view->selected = node("letter.txt");
    m_presenter->toggleExtractSelectedItem(kSomeRow, m_view->selected); // asks no more
    QCOMPARE(read("letter.txt"), "Dear reader");
}

void ContentsPresenterTest::aCancelledPasswordExtractsNothing()
{
    const QString path = packed("locked.zip", {"-psecret"});
    if (path.isEmpty())
        QSKIP("needs the tool 7z");
    QFile::remove(m_home.path("letter.txt"));
    m_presenter->getArchiveContainerWithPath(path);
    m_view->selected = node("letter.txt");
    m_presenter->toggleExtractSelectedItem(kSomeRow, m_view->selected);
    m_presenter->togglePasswordCancel();
    QCOMPARE(m_presenter->passwordCheckState(), PasswordCheckState::Rejected);
    QVERIFY(!QFile::exists(m_home.path("letter.txt")) && m_view->tree);
}

void ContentsPresenterTest::encryptedNamesAreAskedForUntilTheyOpen()
{
    const QString path = packed("hidden.7z", {"-psecret", "-mhe=on"});
    if (path.isEmpty())
        QSKIP("needs the tool 7z");
    m_presenter->getArchiveContainerWithPath(path);
    m_presenter->togglePasswordOK(Secret("wrong"));
    QCOMPARE(m_view->log.last(), "password of hidden.7z");
    m_presenter->togglePasswordOK(Secret("secret"));
    QVERIFY(m_view->tree);
    QCOMPARE(lines(*m_view->tree), QStringList{"letter.txt"});
    m_presenter->getArchiveContainerWithPath(path);
    m_presenter->togglePasswordCancel();
    QVERIFY(!m_view->tree && !m_presenter->archive().isOpen());
}

void ContentsPresenterTest::whatWasPreviewedStaysInMemory()
{
    m_presenter->getArchiveContainerWithPath(write(ZipBuilder().add("a.txt", "one").add("b.txt", "two")));
    const auto file = node("a.txt");
    m_presenter->previewItem(kSomeRow, file);
    QCOMPARE(m_view->previews.back().text, "one");
    QVERIFY(QFile::remove(m_home.path("t.zip")));
    m_presenter->previewItem(kSomeRow, file);
    QCOMPARE(m_view->previews.size(), 2U);
    QCOMPARE(m_view->previews.back().text, "one");
}

void ContentsPresenterTest::theFilterDecidesWhatAFolderMeans()
{
    m_presenter->getArchiveContainerWithPath(
        write(ZipBuilder().add("a/x.jpg", "1").add("a/y.txt", "2").add("b/z.jpg", "3"), "t.cbz"));
    m_presenter->setFilter("JPG");
    QTRY_COMPARE(lines(*m_view->tree), (QStringList{"a/", "  x.jpg", "b/", "  z.jpg"}));
    m_presenter->toggleExtractSelectedItem(kSomeRow, node("a"));
    QCOMPARE(m_host->log, QStringList{"0 of t.cbz"});
    m_presenter->setFilter({});
    QCOMPARE(m_view->tree->nodeCount(), 6U);
}

}

QTEST_GUILESS_MAIN(vantoro::ContentsPresenterTest)
#include "contents_presenter_test.moc"
