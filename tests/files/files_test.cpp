#include "files/AppSandboxFileAccess.h"
#include "files/AppSandboxFileAccessOpenSavePanelDelegate.h"
#include "files/CSURLCache.h"
#include "files/FileFormats.h"
#include "files/KXUtilities.h"

#include "tests/support/MemoryDefaultsStore.h"
#include "tests/support/ScriptedPanels.h"

#include <QDir>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

namespace vantoro {

class FilesTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void sizeTexts_data();
    void sizeTexts();
    void uniqueNamesCountFromZero();
    void foldersAreMeasuredWithoutFollowingLinks();
    void datesTakeTheYearOfTheWeek();
    void imagesAreToldByTheirExtension_data();
    void imagesAreToldByTheirExtension();
    void firstFourBytesAreBigEndian();
    void archiveExtensionsAreComparedWithTheirCase();
    void noCacheOutsideASandbox();
    void grantCoversWhatLiesInside();
    void outerGrantReplacesInnerOnes();
    void grantsSurviveARestart();
    void storedFolderGrantServesAFileInside();
    void missingPathAsksInItsNearestFolder();
    void panelEnablesOnlyTheWayToTheRequestedItem();
    void refusedPanelRunsNothing();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MemoryDefaultsStore> m_store;
    QString path(const QString& name) const { return QDir(m_folder->path()).canonicalPath() + "/" + name; }
    void makeFile(const QString& name, qsizetype size = 1) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(size, 'x'));
    }
};

void FilesTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_store.reset(); // before the next takes its place as the standard one
    m_store = std::make_unique<MemoryDefaultsStore>();
    qputenv("APP_SANDBOX_CONTAINER_ID", "test");
}

void FilesTest::cleanup() { qunsetenv("APP_SANDBOX_CONTAINER_ID"); }

void FilesTest::sizeTexts_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("negative") << qint64{-5} << "0 B";
    QTest::newRow("zero") << qint64{0} << "0 B";
    QTest::newRow("last byte") << qint64{1024} << "1024 B";
    QTest::newRow("first kilobyte") << qint64{1025} << "1.00 KB";
    QTest::newRow("last kilobyte") << qint64{1048576} << "1024.00 KB";
    QTest::newRow("first megabyte") << qint64{1048577} << "1.00 MB";
    QTest::newRow("last megabyte") << (qint64{1} << 30) << "1024.00 MB";
    QTest::newRow("one byte more is lost in single precision") << (qint64{1} << 30) + 1 << "1024.00 MB";
    QTest::newRow("gigabyte") << (qint64{1} << 30) + 128 << "1.00 GB";
    QTest::newRow("large") << qint64{5'000'000'000'000} << "4656.61 GB";
}

void FilesTest::sizeTexts()
{
    QFETCH(qint64, bytes);
    QTEST(KXUtilities::sizeFormatForNumber(bytes), "text");
}

void FilesTest::uniqueNamesCountFromZero()
{
    QCOMPARE(KXUtilities::createFolderDifWithPath(path("a.txt")), path("a.txt"));
    makeFile("a.txt");
    QCOMPARE(KXUtilities::createFolderDifWithPath(path("a.txt")), path("a(0).txt"));
    makeFile("a(0).txt");
    QCOMPARE(KXUtilities::createFolderDifWithPath(path("a.txt")), path("a(1).txt"));
    QCOMPARE(KXUtilities::createFolderDifWithPath(path("a(0).txt")), path("a(0)(1).txt"));
    QVERIFY(QFile::link(path("nowhere"), path("link"))); // a dangling link takes the name too
    QCOMPARE(KXUtilities::createFolderDifWithPath(path("link")), path("link(0)"));
}

void FilesTest::foldersAreMeasuredWithoutFollowingLinks()
{
    QVERIFY(QDir(m_folder->path()).mkpath("top/sub"));
    makeFile("top/sub/.hidden", 1000);
    makeFile("outside", 500000);
    QVERIFY(QFile::link(path("outside"), path("top/link")));
    QVERIFY(QFile::link(path("."), path("top/loop")));
    const qint64 links
        = KXUtilities::fileSizeForPath(path("top/link")) + KXUtilities::fileSizeForPath(path("top/loop"));
    QCOMPARE(KXUtilities::folderSizeForPath(path("top")), 1000 + links + KXUtilities::fileSizeForPath(path("top/sub")));
    QCOMPARE(KXUtilities::folderSizeForPath(path("missing")), 0);
    const auto files = KXUtilities::allFilesAtPath(path("top"));
    QCOMPARE(QSet<QString>(files.begin(), files.end()),
             (QSet<QString>{path("top/sub"), path("top/sub/.hidden"), path("top/link"), path("top/loop")}));
    QVERIFY(!KXUtilities::contentsOfFolder(path("missing")));
    QCOMPARE(KXUtilities::contentsOfFolder(path("top/sub")), QStringList{".hidden"});
}

void FilesTest::datesTakeTheYearOfTheWeek()
{
    const QDateTime newYear(QDate(2027, 1, 1), QTime(14, 5)); // a Friday in the last week of 2026
    QCOMPARE(KXUtilities::stringShortFromDate(newYear), "2026-01-01");
    QCOMPARE(KXUtilities::stringLongFromDate(newYear), "2026/01/01 14:05");
    QCOMPARE(KXUtilities::stringShortFromDate(QDateTime(QDate(2026, 6, 9), QTime())), "2026-06-09");
}

void FilesTest::imagesAreToldByTheirExtension_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isImage");
    QTest::newRow("png") << "a.png" << true;
    QTest::newRow("capital") << "a.JPG" << true;
    QTest::newRow("text") << "a.txt" << false;
    QTest::newRow("none") << "a" << false;
    QTest::newRow("archive") << "a.zip" << false;
}

void FilesTest::imagesAreToldByTheirExtension()
{
    QFETCH(QString, name);
    QTEST(KXUtilities::isImageForPath(path(name)), "isImage");
}

void FilesTest::firstFourBytesAreBigEndian()
{
    QCOMPARE(KXUtilities::NSDataToUInt(QByteArray::fromHex("fe010203ff")), 0xFE010203U);
    QCOMPARE(KXUtilities::NSDataToUInt("abc"), 0U);
}

void FilesTest::archiveExtensionsAreComparedWithTheirCase()
{
    QCOMPARE(fileFormatArray().size(), 95);
    QCOMPARE(QSet<QString>(fileFormatArray().begin(), fileFormatArray().end()).size(), 95);
    QVERIFY(hasArchiveExtension("/a/b.zip") && hasArchiveExtension("/a/b.tar-gz"));
    QVERIFY(!hasArchiveExtension("/a/b.ZIP") && !hasArchiveExtension("/a/zip"));
}

void FilesTest::noCacheOutsideASandbox()
{
    qunsetenv("APP_SANDBOX_CONTAINER_ID");
    QVERIFY(!CSURLCache::defaultCache());
}

void FilesTest::grantCoversWhatLiesInside()
{
    QVERIFY(QDir(m_folder->path()).mkpath("b/sub"));
    QVERIFY(QDir(m_folder->path()).mkpath("bc"));
    QVERIFY(QFile::link(path("b/sub"), path("link")));
    CSURLCache cache;
    cache.cacheSecurityScopedURL(SecurityScopedURL::fileURLWithPath(path("b")));
    QCOMPARE(cache.securityScopedURLAllowingAccessToPath(path("b"))->path(), path("b"));
    QCOMPARE(cache.securityScopedURLAllowingAccessToPath(path("b/sub/new"))->path(), path("b"));
    QCOMPARE(cache.securityScopedURLAllowingAccessToPath(path("link"))->path(), path("b"));
    QVERIFY(!cache.securityScopedURLAllowingAccessToPath(path("bc")));
    cache.cacheSecurityScopedURL(SecurityScopedURL::fileURLWithPath("/"));
    QVERIFY(cache.securityScopedURLAllowingAccessToPath("/usr/lib"));
}

void FilesTest::outerGrantReplacesInnerOnes()
{
    QVERIFY(QDir(m_folder->path()).mkpath("outer/inner"));
    CSURLCache cache;
    const auto grant
        = [&](const QString& name) { cache.cacheSecurityScopedURL(SecurityScopedURL::fileURLWithPath(path(name))); };
    grant("outer/inner");
    grant("outer");
    QCOMPARE(cache.availablePaths(), QStringList{path("outer")});
    grant("outer/inner");
    QCOMPARE(cache.availablePaths(), (QStringList{path("outer"), path("outer/inner")}));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Failed to create security-scoped bookmark"));
    grant("missing");
    QCOMPARE(cache.availablePaths().size(), 2);
}

void FilesTest::grantsSurviveARestart()
{
    QVERIFY(QDir(m_folder->path()).mkdir("kept"));
    CSURLCache().cacheSecurityScopedURL(SecurityScopedURL::fileURLWithPath(path("kept")));
    QVERIFY(m_store->keys().contains("cachedBookmarks"));
    CSURLCache later;
    QCOMPARE(later.securityScopedURLAllowingAccessToPath(path("kept/a"))->path(), path("kept"));
    QVERIFY(QDir(m_folder->path()).rmdir("kept"));
    QVERIFY(!CSURLCache().securityScopedURLAllowingAccessToPath(path("kept/a"))); // the folder is gone
}

void FilesTest::storedFolderGrantServesAFileInside()
{
    QVERIFY(QDir(m_folder->path()).mkdir("Downloads"));
    makeFile("Downloads/x.zip");
    ScriptedPanels panels;
    const auto access = AppSandboxFileAccess::fileAccess();
    QVERIFY(access->persistPermissionPath(path("Downloads")));
    QCOMPARE(m_store->keys(), QStringList{"bd_file://" + path("Downloads") + "/"});
    bool allowed = false;
    QString granted;
    access->requestAccessPermissionsForFilePath(
        path("Downloads/x.zip"), true, [&](const SecurityScopedURL& url, const auto&) { granted = url.path(); },
        [&](bool answer) { allowed = answer; });
    QVERIFY(allowed && panels.shown.empty());
    QCOMPARE(granted, path("Downloads"));
}

void FilesTest::missingPathAsksInItsNearestFolder()
{
    ScriptedPanels panels;
    panels.choose(path(""));
    const auto access = AppSandboxFileAccess::fileAccess();
    int runs = 0;
    access->accessFilePath(path("new/deep/x.zip"), true, [&] { ++runs; });
    QTRY_COMPARE(runs, 1);
    QCOMPARE(panels.shown.size(), 1U);
    QCOMPARE(panels.shown.front().directory + "/", path(""));
    access->accessFilePath(path("other.zip"), true, [&] { ++runs; }); // the grant was kept
    QCOMPARE(runs, 2);
    QCOMPARE(panels.shown.size(), 1U);
}

void FilesTest::panelEnablesOnlyTheWayToTheRequestedItem()
{
    const auto url = [](const char* text) { return QUrl::fromLocalFile(QString::fromLatin1(text)); };
    const auto limits = AppSandboxFileAccessOpenSavePanelDelegate::initWithFileURL(url("/Users/a/Downloads/x.zip"));
    for (const char* enabled : {"/", "/Users", "/Users/a", "/Users/a/Downloads/", "/Users/a/Downloads/x.zip"})
        QVERIFY2(limits.shouldEnableURL(url(enabled)), enabled);
    for (const char* disabled : {"/Users/b", "/Users/a/Downloads/x.zip/y", "/Users/a/Downloads/y.zip", "/tmp"})
        QVERIFY2(!limits.shouldEnableURL(url(disabled)), disabled);
}

void FilesTest::refusedPanelRunsNothing()
{
    ScriptedPanels panels;
    const auto access = AppSandboxFileAccess::fileAccess();
    std::optional<bool> allowed;
    access->accessFilePath(
        path("x.zip"), false, [] { QFAIL("ran without a grant"); }, [&](bool answer) { allowed = answer; });
    QTRY_VERIFY(allowed.has_value());
    QVERIFY(!*allowed);
    QVERIFY(m_store->keys().isEmpty());
}

}

QTEST_GUILESS_MAIN(vantoro::FilesTest)
#include "files_test.moc"
