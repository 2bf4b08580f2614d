#include "platform/XADArchive.h"
#include "tests/support/ZipBuilder.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

namespace vantoro {

class ArchiveTest : public QObject {
    Q_OBJECT
private slots:
    void listsAndReadsSingleEntries();
    void namesCannotLeaveAFolder();
    void topDirectoryIsOnlyThereWhenAllShareIt();
    void damagedAndLargeEntriesGiveNothing();
    void previewsOfAStreamEndBehindTheirEntry();
    void extractsOneEntryBesideWhatIsThere();
    void passwordOpensEntriesAndEncryptedListings_data();
    void passwordOpensEntriesAndEncryptedListings();
    void otherFilesAreNoArchives();

private:
    QTemporaryDir m_folder;
    QString path(const QString& name) const { return m_folder.filePath(name); }
    std::unique_ptr<XADArchive> open(const ZipBuilder& zip, const QString& name = "t.zip") const
    {
        return zip.write(path(name)) ? XADArchive::initWithFile(path(name)) : nullptr;
    }
};

void ArchiveTest::listsAndReadsSingleEntries()
{
    const auto archive = open(ZipBuilder().add("d/", {}).add("d/a.txt", "first").add("b.txt", "second"));
    QVERIFY(archive);
    QCOMPARE(archive->numberOfEntries(), 3);
    QCOMPARE(archive->nameOfEntry(0), "d");
    QVERIFY(archive->entryIsDirectory(0) && !archive->entryIsDirectory(1));
    QCOMPARE(archive->nameOfEntry(1), "d/a.txt");
    const auto about = archive->dataForkParserDictionaryForEntry(1);
    QCOMPARE(about.fileSize, 5);
    QCOMPARE(about.lastModificationDate, QDateTime(QDate(2024, 1, 1), QTime(0, 0)));
    QCOMPARE(archive->contentsOfEntry(2), QByteArray("second"));
    QCOMPARE(archive->contentsOfEntry(1), QByteArray("first")); // backwards too
    QVERIFY(!archive->contentsOfEntry(0) && !archive->contentsOfEntry(3) && !archive->contentsOfEntry(-1));
    QVERIFY(!archive->isEncrypted());
}

void ArchiveTest::namesCannotLeaveAFolder()
{
    const auto archive = open(ZipBuilder().add("../../etc/passwd", "x").add("/abs/a", "x").add("a//./b", "x"));
    for (qsizetype i = 0; i < archive->numberOfEntries(); ++i) {
        const QStringList parts = archive->nameOfEntry(i).split('/');
        QVERIFY2(!parts.contains("..") && !parts.contains("") && !parts.contains("."), qPrintable(parts.join('/')));
    }
}

void ArchiveTest::topDirectoryIsOnlyThereWhenAllShareIt()
{
    QCOMPARE(open(ZipBuilder().add("docs/a", "a").add("docs/b/c", "c"))->commonTopDirectory(), "docs");
    QCOMPARE(open(ZipBuilder().add("docs/a", "a").add("docs2/b", "b"))->commonTopDirectory(), "");
    QCOMPARE(open(ZipBuilder().add("docs/a", "a").add("loose", "b"))->commonTopDirectory(), "");
    QCOMPARE(open(ZipBuilder().add("only.txt", "a"))->commonTopDirectory(), "");
}

void ArchiveTest::damagedAndLargeEntriesGiveNothing()
{
    const auto archive = open(ZipBuilder()
                                  .add("bad", "bad", ZipBuilder::Damage::Checksum)
                                  .add("large", QByteArray(5000, 'l'))
                                  .add("good", "good"));
    QVERIFY(!archive->contentsOfEntry(0));
    QVERIFY(!archive->contentsOfEntry(1, 4999));
    QCOMPARE(archive->contentsOfEntry(1, 5000)->size(), 5000);
    QCOMPARE(archive->contentsOfEntry(2), QByteArray("good"));
}

/// The stream is damaged behind the first entry: who reads no further never meets that.
void ArchiveTest::previewsOfAStreamEndBehindTheirEntry()
{
    QRandomGenerator random(1);
    QByteArray noise(4 << 20, Qt::Uninitialized);
    std::generate(noise.begin(), noise.end(), [&] { return static_cast<char>(random.generate()); });
    for (const auto& [name, data] : {std::pair<QString, QByteArray>("a.txt", "first"), {"b.bin", noise}}) {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(data) == data.size());
    }
    QProcess program;
    program.setWorkingDirectory(m_folder.path());
    program.start("tar", {"-czf", "s.tar.gz", "a.txt", "b.bin"});
    QVERIFY(program.waitForFinished() && program.exitCode() == 0);
    const auto archive = XADArchive::initWithFile(path("s.tar.gz"));
    QVERIFY(archive && archive->numberOfEntries() == 2);
    QCOMPARE(archive->contentsOfEntry(1), noise);
    QCOMPARE(archive->contentsOfEntry(0), QByteArray("first")); // backwards, after the reading was ended early
    QVERIFY(archive->canReadEntry(1, 1000));
    QFile packed(path("s.tar.gz"));
    QVERIFY(packed.open(QIODevice::ReadWrite) && packed.resize(packed.size() - 1000));
    packed.close();
    const auto damaged = XADArchive::initWithFile(path("s.tar.gz"));
    QVERIFY(damaged && !damaged->summary().damage.isEmpty());
    QCOMPARE(damaged->contentsOfEntry(0), QByteArray("first"));
    int error = 0;
    QVERIFY(!damaged->contentsOfEntry(1, noise.size(), &error) && error != 0);
}

void ArchiveTest::extractsOneEntryBesideWhatIsThere()
{
    QVERIFY(QDir(m_folder.path()).mkdir("out"));
    const auto archive
        = open(ZipBuilder().add("d/a.txt", "a").add("b.txt", "b").add("bad.txt", "x", ZipBuilder::Damage::Checksum));
    QCOMPARE(archive->extractEntry(1, path("out")), 0);
    QCOMPARE(archive->extractEntry(0, path("out")), 0);
    QVERIFY(archive->extractEntry(2, path("out")) != 0);
    QVERIFY(archive->extractEntry(9, path("out")) != 0);
    QVERIFY(QFile::exists(path("out/b.txt")) && QFile::exists(path("out/d/a.txt")));
    QVERIFY(!QFile::exists(path("out/bad.txt")));
}

void ArchiveTest::passwordOpensEntriesAndEncryptedListings_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("hidesNames");
    QTest::newRow("zip") << QStringList{} << "s.zip" << false;
    QTest::newRow("7z") << QStringList{} << "s.7z" << false;
    QTest::newRow("7z with encrypted names") << QStringList{"-mhe=on"} << "h.7z" << true;
}

void ArchiveTest::passwordOpensEntriesAndEncryptedListings()
{
    QFETCH(QStringList, options);
    QFETCH(QString, name);
    QFETCH(bool, hidesNames);
    QFile plain(path("plain.txt"));
    QVERIFY(plain.open(QIODevice::WriteOnly) && plain.write("plain text") > 0);
    plain.close();
    QProcess program;
    program.setWorkingDirectory(m_folder.path());
    program.start("7z", QStringList{"a", "-psecret"} + options + QStringList{name, "plain.txt"});
    if (!program.waitForFinished() || program.exitCode() != 0)
        QSKIP("needs the tool 7z");
    const auto archive = XADArchive::initWithFile(path(name));
    QVERIFY(archive && archive->isEncrypted());
    QCOMPARE(archive->needsPasswordToList(), hidesNames);
    QVERIFY(!archive->contentsOfEntry(0));
    archive->setPassword(Secret("wrong"));
    QVERIFY(!archive->contentsOfEntry(0));
    archive->setPassword(Secret("secret"));
    QCOMPARE(archive->numberOfEntries(), 1);
    QCOMPARE(archive->contentsOfEntry(0), QByteArray("plain text"));
}

void ArchiveTest::otherFilesAreNoArchives()
{
    QFile letter(path("letter.txt"));
    QVERIFY(letter.open(QIODevice::WriteOnly) && letter.write("Dear Madam") > 0);
    letter.close();
    int error = 0;
    QVERIFY(!XADArchive::initWithFile(path("letter.txt"), &error));
    QVERIFY(error != 0);
    QVERIFY(!XADArchive::initWithFile(path("missing.zip"), &error));
}

}

QTEST_GUILESS_MAIN(vantoro::ArchiveTest)
#include "archive_test.moc"
