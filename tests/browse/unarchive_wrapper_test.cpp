#include "tests/browse/browse_fixture.h"

#include "platform/XADException.h"

#include <QDirIterator>
#include <QProcess>

#include <sys/stat.h>

namespace vantoro {

class UnarchiveWrapperTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void itemsStandInTheArchivesOrder();
    void theCommonFolderIsWhereTheTreeBegins();
    void aLaterEntryTakesTheNamesPlaceOnDisk();
    void skeletonsAreNamedAfterTheArchive_data();
    void skeletonsAreNamedAfterTheArchive();
    void theSweepTakesFoldersAndNothingElse();
    void whatIsNoArchiveLeavesAnEmptySkeleton();
    void hostileNamesStayInTheSkeleton();
    void aLinkInTheSkeletonIsNotFollowed();
    void placeholdersAreEmptyAndPrivate();
    void namesAreReadInTheEncodingOfAllTogether();
    void encryptedArchivesStayEncrypted();
    void encryptedNamesAreListedAfterThePassword();
    void tooLargeEntriesAreRefusedByTheirSize();
    void damagedEntriesSayWhy();
    void sizesAndDatesAreTheEntrys();
    void listingIsCountedAndCanBeStopped();
    void readingCanBeStoppedAndGoesOn();

private:
    QString write(const ZipBuilder& zip, const QString& name = "t.zip") const
    {
        return zip.write(m_home.path(name)) ? m_home.path(name) : QString();
    }
    /// Of the home folder, but for the skeletons.
    QStringList everythingOutside() const;
    bool pack(const QStringList& options, const QString& archive, const QString& file) const;

    OwnHome m_home;
};

void UnarchiveWrapperTest::init()
{
    QDir(KXFileWrapper::pathForTemporaryDirectory()).removeRecursively();
    QVERIFY(KXFileWrapper::createDirectoriesForPath(KXFileWrapper::pathForTemporaryDirectory()));
}

QStringList UnarchiveWrapperTest::everythingOutside() const
{
    QStringList paths;
    QDirIterator every(m_home.path(""), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (every.hasNext()) {
        const QString path = every.next();
        if (!path.startsWith(temporaryPath("")))
            paths += path;
    }
    paths.sort();
    return paths;
}

bool UnarchiveWrapperTest::pack(const QStringList& options, const QString& archive, const QString& file) const
{
    QProcess program;
    program.setWorkingDirectory(m_home.path(""));
    program.start("7z", QStringList{"a"} + options + QStringList{archive, file});
    return program.waitForFinished() && program.exitCode() == 0;
}

void UnarchiveWrapperTest::itemsStandInTheArchivesOrder()
{
    const auto wrapper = browsed(write(ZipBuilder().add("b/", {}).add("b/z.txt", "z").add("a.txt", "a")));
    const auto& contents = *wrapper->archiveContents();
    QCOMPARE(contents.count(), 3);
    QCOMPARE(contents.itemAt(0)->itemName(), "b");
    QVERIFY(contents.itemAt(0)->isFolder() && !contents.itemAt(1)->isFolder());
    QCOMPARE(contents.itemAt(1)->itemName(), "b/z.txt");
    QCOMPARE(contents.itemAt(1)->itemPath(), temporaryPath("t/b/z.txt"));
    QCOMPARE(contents.itemAtPath(temporaryPath("t/a.txt")), contents.itemAt(2));
    QCOMPARE(wrapper->indexOfName("a.txt"), 2);
    QCOMPARE(wrapper->indexOfName("none"), -1);
    QVERIFY(!contents.itemAtPath(temporaryPath("t")) && !contents.itemAtPath("/t/a.txt") && !contents.itemAtPath({}));
    QCOMPARE(wrapper->itemDataForItem(contents.itemAt(1)), QByteArray("z"));
    QCOMPARE(wrapper->itemDataForName("a.txt"), QByteArray("a"));
    QVERIFY(!wrapper->itemDataForName("none"));
    const auto other = KXArchiveItem::initWithPath(temporaryPath("t/a.txt"), "a.txt", false);
    QVERIFY(!contents.contains(other.get())
            && !wrapper->itemDataForItem(other.get())); // the object counts, not its name
    QVERIFY(QFileInfo(temporaryPath("t/b")).isDir() && QFileInfo(temporaryPath("t/a.txt")).isFile());
}

void UnarchiveWrapperTest::theCommonFolderIsWhereTheTreeBegins()
{
    const auto inside = browsed(write(ZipBuilder().add("docs/a.txt", "a").add("docs/b/c", "c")));
    QCOMPARE(inside->tmpArchivePath(), temporaryPath("t/docs"));
    QCOMPARE(inside->archiveContents()->itemAt(0)->itemPath(), temporaryPath("t/docs/a.txt"));
    QCOMPARE(browsed(write(ZipBuilder().add("docs/a", "a").add("b", "b")))->tmpArchivePath(), temporaryPath("t"));
}

void UnarchiveWrapperTest::aLaterEntryTakesTheNamesPlaceOnDisk()
{
    const auto wrapper
        = browsed(write(ZipBuilder().add("a", "first").add("b", "").add("a", "second").add("a", "third")));
    const auto& contents = *wrapper->archiveContents();
    QCOMPARE(contents.count(), 4);
    QCOMPARE(contents.itemAtPath(temporaryPath("t/a")), contents.itemAt(3));
    QCOMPARE(wrapper->indexOfName("a"), 0);
    QCOMPARE(wrapper->itemDataForItem(contents.itemAt(2)), QByteArray("second"));
    QCOMPARE(wrapper->itemDataForName("a"), QByteArray("first"));
    QVERIFY(wrapper->entriesWithoutPlaceholder().empty());
}

void UnarchiveWrapperTest::skeletonsAreNamedAfterTheArchive_data()
{
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("skeleton");
    QTest::newRow("two extensions") << "photos.tar.gz"
                                    << "photos.tar";
    QTest::newRow("no extension") << "backup"
                                  << "backup";
    QTest::newRow("hidden") << ".zip"
                            << ".zip";
    QTest::newRow("the folder itself") << "..zip"
                                       << "..zip";
    QTest::newRow("the folder above") << "...zip"
                                      << "...zip";
}

void UnarchiveWrapperTest::skeletonsAreNamedAfterTheArchive()
{
    QFETCH(QString, archive);
    QFETCH(QString, skeleton);
    const auto wrapper = browsed(write(ZipBuilder().add("a", "a").add("b", "b"), archive));
    QCOMPARE(wrapper->archiveContents()->skeletonFolder(), temporaryPath("") + "/" + skeleton);
    QVERIFY(QFile::exists(temporaryPath("") + "/" + skeleton + "/a"));
}

void UnarchiveWrapperTest::theSweepTakesFoldersAndNothingElse()
{
    QVERIFY(KXFileWrapper::createFileAtPath(temporaryPath("winmail-attachments/a")));
    QVERIFY(KXFileWrapper::createFileAtPath(temporaryPath("other/deep/a")));
    QVERIFY(KXFileWrapper::createFileAtPath(temporaryPath(".swept-old/a"))); // of a run that was killed
    QVERIFY(KXFileWrapper::createFileAtPath(temporaryPath("plain")));
    QVERIFY(QDir(m_home.path("")).mkpath("linked/inside"));
    QVERIFY(QFile::link(m_home.path("linked"), temporaryPath("link")));
    const auto wrapper = browsed(write(ZipBuilder().add("a", "a")));
    const QStringList left
        = QDir(temporaryPath("")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    QCOMPARE(left, QStringList({"plain", "t", "winmail-attachments"}));
    QVERIFY(QFile::exists(m_home.path("linked/inside"))); // behind a link nothing is touched
    browsed(write(ZipBuilder().add("b", "b"))); // the same name again: the old skeleton is gone
    QVERIFY(QFile::exists(temporaryPath("t/b")) && !QFile::exists(temporaryPath("t/a")));
}

void UnarchiveWrapperTest::whatIsNoArchiveLeavesAnEmptySkeleton()
{
    QFile letter(m_home.path("letter.txt"));
    QVERIFY(letter.open(QIODevice::WriteOnly) && letter.write("Dear Madam") > 0);
    letter.close();
    const auto wrapper = browsed(m_home.path("letter.txt"));
    QVERIFY(!wrapper->archive() && wrapper->openingError() != 0);
    QVERIFY(wrapper->archiveContents()->isEmpty() && !wrapper->crypted());
    QVERIFY(QDir(temporaryPath("letter")).isEmpty() && QFile::exists(temporaryPath("letter")));
    QVERIFY(!ArchiveTree::generateTree(*wrapper)->hasChildren());
    QVERIFY(!wrapper->itemDataForName("a") && wrapper->indexOfName("a") < 0);
}

void UnarchiveWrapperTest::hostileNamesStayInTheSkeleton()
{
    QVERIFY(!write(ZipBuilder()).isEmpty());
    const QStringList before = everythingOutside();
    const QByteArray deep = QByteArray("d/").repeated(300) + "f";
    const auto wrapper = browsed(write(ZipBuilder()
                                           .add("../../../up", "x")
                                           .add("/absolute", "x")
                                           .add("a/../../b", "x")
                                           .add(QByteArray("nul\0name", 8), "x")
                                           .add(QByteArray(300, 'l'), "x")
                                           .add(deep, "x")
                                           .add("file", "x")
                                           .add("file/beneath", "x")
                                           .add("folder/", "")
                                           .add("folder", "x")
                                           .add("..", "x")
                                           .add("good", "x")));
    const QStringList after = everythingOutside();
    QCOMPARE(after, before);
    QCOMPARE(QDir(temporaryPath("")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 1);
    QVERIFY(QFile::exists(temporaryPath("t/good")) && QFileInfo(temporaryPath("t/file")).isFile());
    // Too long, too deep, beneath a file, and files where a folder is: shown although they have no placeholder.
    const std::vector<quint32> unplaced{4, 5, 7, 9, 10};
    QCOMPARE(wrapper->entriesWithoutPlaceholder(), unplaced);
    const auto tree = ArchiveTree::generateTree(*wrapper);
    for (qsizetype i : {0, 3, 4, 5, 7, 9, 10})
        QVERIFY2(tree->nodeForItem(wrapper->archiveContents()->itemAt(i)) != ArchiveTree::kNoNode,
                 qPrintable(QString::number(i)));
}

void UnarchiveWrapperTest::aLinkInTheSkeletonIsNotFollowed()
{
    QVERIFY(QDir(m_home.path("")).mkpath("target"));
    auto wrapper = KXUnarchiveWrapper::initWithPath(write(ZipBuilder().add("sub/a", "x").add("b", "x")));
    wrapper->listContents();
    QVERIFY(QFile::link(m_home.path("target"), temporaryPath("t/sub")));
    QVERIFY(QFile::link(m_home.path("target/b"), temporaryPath("t/b")));
    QVERIFY(wrapper->buildSkeleton());
    QVERIFY(QDir(m_home.path("target")).isEmpty());
    QCOMPARE(wrapper->entriesWithoutPlaceholder().size(), std::size_t{2});
}

void UnarchiveWrapperTest::placeholdersAreEmptyAndPrivate()
{
    browsed(write(ZipBuilder().add("d/f", "content").add("g", "")));
    struct stat status = {};
    QCOMPARE(::stat(QFile::encodeName(temporaryPath("t/d/f")).constData(), &status), 0);
    QCOMPARE(status.st_size, 0);
    QCOMPARE(status.st_mode & 077, mode_t{0});
}

void UnarchiveWrapperTest::namesAreReadInTheEncodingOfAllTogether()
{
    ZipBuilder zip;
    for (const char* name : {"\x93\xFA\x96\x7B\x8C\xEA/\x83\x74\x83\x40\x83\x43\x83\x8B.txt",
                             "\x93\xFA\x96\x7B\x8C\xEA/\x82\xB1\x82\xEA\x82\xCD\x83\x65\x83\x58\x83\x67.txt",
                             "\x93\xFA\x96\x7B\x8C\xEA/\x96\xBC\x91\x4F.txt"})
        zip.add(name, "x");
    const auto wrapper = browsed(write(zip));
    QCOMPARE(wrapper->archiveContents()->itemAt(0)->itemName(), "日本語/ファイル.txt");
    QCOMPARE(wrapper->tmpArchivePath(), temporaryPath("t/日本語"));
    QCOMPARE(wrapper->archive()->summary().nameEncoding, "Shift_JIS");
    QVERIFY(QFile::exists(temporaryPath("t/日本語/名前.txt")));
    QVERIFY(browsed(write(ZipBuilder().add("a", "a")))->archive()->summary().nameEncoding.isEmpty());
}

void UnarchiveWrapperTest::encryptedArchivesStayEncrypted()
{
    QFile plain(m_home.path("plain.txt"));
    QVERIFY(plain.open(QIODevice::WriteOnly) && plain.write("plain text") > 0);
    plain.close();
    if (!pack({"-psecret"}, "locked.zip", "plain.txt"))
        QSKIP("needs the tool 7z");
    const auto wrapper = browsed(m_home.path("locked.zip"));
    const auto* item = wrapper->archiveContents()->itemAt(0);
    QVERIFY(wrapper->crypted() && !wrapper->checkPassword(item));
    ReadProblem problem;
    wrapper->setPassword(Secret("wrong"));
    QVERIFY(!wrapper->checkPassword(item) && !wrapper->itemDataForItem(item, &problem));
    QCOMPARE(problem.kind, ReadProblem::Kind::WrongPassword);
    QVERIFY(problem.message.contains("plain.txt"));
    wrapper->setPassword(Secret("secret"));
    QVERIFY(wrapper->checkPassword(item) && !wrapper->checkPassword(nullptr));
    wrapper->setPassword(std::nullopt);
    QVERIFY(!wrapper->password() && wrapper->crypted());
    QVERIFY(wrapper->itemDataForItem(item, &problem)); // the archive keeps the last one
    QCOMPARE(problem.kind, ReadProblem::Kind::None);
}

void UnarchiveWrapperTest::encryptedNamesAreListedAfterThePassword()
{
    QFile plain(m_home.path("plain.txt"));
    QVERIFY(plain.open(QIODevice::WriteOnly) && plain.write("plain text") > 0);
    plain.close();
    if (!pack({"-psecret", "-mhe=on"}, "hidden.7z", "plain.txt"))
        QSKIP("needs the tool 7z");
    const auto wrapper = browsed(m_home.path("hidden.7z"));
    QVERIFY(wrapper->archive() && wrapper->needsPasswordToList() && wrapper->archiveContents()->isEmpty());
    wrapper->setPassword(Secret("secret"));
    QVERIFY(!wrapper->needsPasswordToList() && wrapper->obtainArchiveContents());
    QCOMPARE(wrapper->archiveContents()->count(), 1);
    QVERIFY(wrapper->checkPassword(wrapper->archiveContents()->itemAt(0)));
}

/// A tar that claims an entry of 40 GB and ends after its header.
void UnarchiveWrapperTest::tooLargeEntriesAreRefusedByTheirSize()
{
    QByteArray header(512, '\0');
    header.replace(0, 8, "huge.bin");
    header.replace(100, 8, QByteArray("0000644\0", 8));
    header[124] = '\x80'; // the size in binary
    const qint64 size = qint64{40} << 30;
    for (int i = 0; i < 8; ++i)
        header[135 - i] = static_cast<char>(size >> 8 * i);
    header.replace(136, 12, QByteArray("00000000000\0", 12));
    header[156] = '0';
    header.replace(257, 8,
                   QByteArray("ustar\0"
                              "00",
                              8));
    header.replace(148, 8, "        ");
    unsigned sum = 0;
    for (const char c : header)
        sum += static_cast<unsigned char>(c);
    header.replace(148, 8, QByteArray::number(sum, 8).rightJustified(6, '0') + QByteArray("\0 ", 2));
    QFile tar(m_home.path("huge.tar"));
    QVERIFY(tar.open(QIODevice::WriteOnly) && tar.write(header) == 512 && tar.resize(512 + size)); // a hole
    tar.close();
    const auto wrapper = browsed(m_home.path("huge.tar"));
    const auto* item = wrapper->archiveContents()->itemAt(0);
    QCOMPARE(wrapper->getSizeForItem(item), size);
    ReadProblem problem;
    QVERIFY(!wrapper->itemDataForItem(item, &problem));
    QCOMPARE(problem.kind, ReadProblem::Kind::TooLarge);
    QVERIFY(problem.message.contains("huge.bin") && problem.message.contains("40.00 GB"));
    QVERIFY(wrapper->checkPassword(item)); // its beginning is read, and no more
}

void UnarchiveWrapperTest::damagedEntriesSayWhy()
{
    const auto wrapper
        = browsed(write(ZipBuilder().add("d/bad", "bad", ZipBuilder::Damage::Checksum).add("d/good", "g")));
    ReadProblem problem;
    QVERIFY(!wrapper->itemDataForName("d/bad", &problem));
    QCOMPARE(problem.kind, ReadProblem::Kind::Failed);
    QVERIFY2(problem.message.contains("“bad”"), qPrintable(problem.message));
    QVERIFY(wrapper->itemDataForName("d/good", &problem) && problem.kind == ReadProblem::Kind::None);
}

void UnarchiveWrapperTest::sizesAndDatesAreTheEntrys()
{
    const auto wrapper = browsed(write(ZipBuilder().add("a", QByteArray(1500, 'x')).add("b/c", "c")));
    const auto* item = wrapper->archiveContents()->itemAt(0);
    QCOMPARE(wrapper->getModifiedDateForItem(item), "2024/01/01 00:00");
    QCOMPARE(sizeText(*wrapper, *item), "1.46 KB");
    const auto tree = ArchiveTree::generateTree(*wrapper);
    QVERIFY(sizeText(*wrapper, *tree->representedObject(1)).isEmpty()); // the folder
    const auto stranger = KXArchiveItem::initWithPath("/x", "x", false);
    QCOMPARE(wrapper->getSizeForItem(stranger.get()), 0);
    QVERIFY(wrapper->getModifiedDateForItem(stranger.get()).isEmpty());
}

void UnarchiveWrapperTest::listingIsCountedAndCanBeStopped()
{
    ZipBuilder zip;
    for (int i = 0; i < 20'000; ++i)
        zip.add("f" + QByteArray::number(i), {});
    const QString path = write(zip);
    qsizetype listed = 0;
    qsizetype placed = 0;
    const auto whole = browsed(path,
                               {.listed = [&](qsizetype entries) { listed = entries; },
                                .placed = [&](qsizetype made, qsizetype) { placed = made; }});
    QCOMPARE(listed, 20'000);
    QVERIFY(placed >= 16'000 && placed <= 20'000);

    ListingWatch watch;
    watch.listed = [cancel = watch.cancel](qsizetype) { cancel.cancel(); };
    const auto stopped = KXUnarchiveWrapper::initWithPath(path, watch);
    QVERIFY(!stopped->archive());
    QCOMPARE(stopped->openingError(), XADException::kBreak);

    ListingWatch later;
    later.placed = [cancel = later.cancel](qsizetype, qsizetype) { cancel.cancel(); };
    QVERIFY(!KXUnarchiveWrapper::initWithPath(path, later)->obtainArchiveContents());
    QVERIFY(QDir(temporaryPath("t")).count() < 10'000);
}

void UnarchiveWrapperTest::readingCanBeStoppedAndGoesOn()
{
    const auto wrapper = browsed(write(ZipBuilder().add("a", "content")));
    wrapper->stop();
    ReadProblem problem;
    QCOMPARE(wrapper->itemDataForName("a", &problem), QByteArray("content")); // a stop before it does not count
    QVERIFY(QDir(m_home.path("")).mkpath("out"));
    wrapper->stop();
    QCOMPARE(wrapper->archive()->extractEntry(0, m_home.path("out")), 0);
    QVERIFY(QFile::exists(m_home.path("out/a")));
}

}

QTEST_GUILESS_MAIN(vantoro::UnarchiveWrapperTest)
#include "unarchive_wrapper_test.moc"
