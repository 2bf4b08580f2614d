#include "files/Exceptions.h"
#include "files/KXFileWrapper.h"

#include <QDataStream>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace vantoro {

using Files = KXFileWrapper;

/// Every folder of the library lies beneath one that belongs to the test.
class FileWrapperTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void pathsOutsideTheKnownFoldersLieInTheDocuments();
    void theTemporaryFolderIsTheUsersAlone();
    void badArgumentsAreNamed();
    void kindsAndAttributesAreTheItemsOwn();
    void listingsLeaveOutFinderFiles();
    void filesAreFoundByTheirNames();
    void existingFilesStayUnlessOverwritten();
    void copiesAndMovesWholeFolders();
    void removesAllItCan();
    void contentsComeBackAsWritten();
    void unreadableContentsAreRefused();
    void sizesOfFoldersCountEverythingInThem();
    void sizeTexts_data();
    void sizeTexts();
    void extendedAttributes();
    void picturesTellTheirSizeAndTags();

private:
    QString path(const QString& name) const { return Files::pathForDocumentsDirectoryWithPath("t/" + name); }
    void make(const QString& name, const QByteArray& content = "x") const
    {
        QVERIFY(Files::createFileAtPathWithContent(path(name), content, true));
    }
    QStringList relative(QStringList paths) const
    {
        for (QString& item : paths)
            item = QDir(path("")).relativeFilePath(item);
        paths.sort();
        return paths;
    }

    QTemporaryDir m_home;
};

template <class Call> QString nameOfException(Call call)
{
    try {
        call();
    } catch (const NamedException& exception) {
        return exception.name() + "|" + exception.reason();
    } catch (const AssertionFailure& failure) {
        return failure.source() + "|" + failure.reason();
    }
    return {};
}

void FileWrapperTest::initTestCase()
{
    qputenv("HOME", m_home.path().toUtf8());
    for (const char* name : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_CONFIG_HOME"})
        qunsetenv(name);
    QVERIFY(QDir(m_home.path()).mkpath("Documents"));
    QVERIFY(Files::pathForDocumentsDirectory().startsWith(m_home.path()));
}

void FileWrapperTest::init()
{
    QDir(path("")).removeRecursively();
    QVERIFY(Files::createDirectoriesForPath(path("")));
}

void FileWrapperTest::pathsOutsideTheKnownFoldersLieInTheDocuments()
{
    const QString documents = Files::pathForDocumentsDirectory();
    QCOMPARE(Files::absolutePath("docs/x"), documents + "/docs/x");
    QCOMPARE(Files::absolutePath("/etc/passwd"), documents + "/etc/passwd");
    QCOMPARE(Files::absolutePath("/"), documents);
    const QString temporary = Files::pathForTemporaryDirectoryWithPath("a/b");
    QCOMPARE(Files::absolutePath(temporary), temporary);
    // The temporary folder lies in the caches, and the longer path is the one that is found.
    QCOMPARE(Files::absoluteDirectoryForPath(temporary), Files::pathForTemporaryDirectory());
    QCOMPARE(Files::absoluteDirectoryForPath(Files::pathForCachesDirectoryWithPath("a")),
             Files::pathForCachesDirectory());
    QVERIFY(!Files::absoluteDirectoryForPath("/"));
    QVERIFY(Files::pathForPlistNamed("a").endsWith("/a.plist") && Files::pathForPlistNamed("a.b").endsWith("/a.b"));
}

void FileWrapperTest::theTemporaryFolderIsTheUsersAlone()
{
    struct stat status = {};
    QCOMPARE(::lstat(QFile::encodeName(Files::pathForTemporaryDirectory()).constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777, mode_t{0700});
    QCOMPARE(status.st_uid, ::geteuid());
    QVERIFY(Files::pathForTemporaryDirectory() != QDir::tempPath());
}

void FileWrapperTest::badArgumentsAreNamed()
{
    QCOMPARE(nameOfException([] { Files::assertPath({}); }), "KXFileWrapper|Invalid path. Path cannot be nil.");
    QCOMPARE(nameOfException([] { Files::existsItemAtPath(""); }),
             "KXFileWrapper|Invalid path. Path cannot be empty string.");
    QCOMPARE(nameOfException([] { Files::createDirectoriesForFileAtPath("a/b/"); }),
             "Invalid path|file path can't have a trailing '/'.");
    QCOMPARE(nameOfException([&] { Files::renameItemAtPath(path("a"), "b/c"); }),
             "Invalid name|file name can't contain a '/'.");
    QCOMPARE(nameOfException([&] { Files::writeFileAtPath(path("a"), {}); }), "Invalid content|content can't be nil.");
    QCOMPARE(nameOfException([&] { Files::writeFileAtPath(path("a"), QVariant::fromValue<QObject*>(this)); }),
             "Invalid content type|content of type QObject* is not handled.");
    QVERIFY(!Files::existsItemAtPath(path("a")));
}

void FileWrapperTest::kindsAndAttributesAreTheItemsOwn()
{
    make("folder/file", "12345");
    make("empty", "");
    QVERIFY(QFile::link(path("folder"), path("link")));
    QVERIFY(QFile::link(path("nowhere"), path("dangling")));
    QVERIFY(Files::isDirectoryItemAtPath(path("folder")) && !Files::isDirectoryItemAtPath(path("link")));
    QVERIFY(Files::isFileItemAtPath(path("empty")) && !Files::isFileItemAtPath(path("folder")));
    QVERIFY(Files::existsItemAtPath(path("link")) && !Files::existsItemAtPath(path("dangling")));
    QVERIFY(Files::isEmptyItemAtPath(path("empty")) && !Files::isEmptyItemAtPath(path("folder")));
    QString error;
    const auto attributes = Files::attributesOfItemAtPath(path("folder/file"), &error);
    QVERIFY(Files::isNotError(&error));
    QCOMPARE(attributes.value(FileAttribute::kSize), 5);
    QCOMPARE(attributes.value(FileAttribute::kType), FileAttribute::kTypeRegular);
    QVERIFY(qAbs(Files::modificationDateOfItemAtPath(path("empty")).secsTo(QDateTime::currentDateTime())) < 60);
    QVERIFY(Files::attributesOfItemAtPath(path("none"), &error).isEmpty());
    QVERIFY(!Files::isNotError(&error));
    QVERIFY(!Files::isFileItemAtPath(path("none")) && !Files::isEmptyItemAtPath(path("none")));
}

void FileWrapperTest::listingsLeaveOutFinderFiles()
{
    make("a/.DS_Store");
    make("a/.hidden");
    make("b/deep/c");
    make("only/.DS_Store");
    QCOMPARE(relative(Files::listItemsInDirectoryAtPath(path(""), false)), QStringList({"a", "b", "only"}));
    QCOMPARE(relative(Files::listItemsInDirectoryAtPath(path(""), true)),
             QStringList({"a", "a/.hidden", "b", "b/deep", "b/deep/c", "only"}));
    QCOMPARE(relative(Files::listDirectoriesInDirectoryAtPath(path("b"), true)), QStringList({"b/deep"}));
    QCOMPARE(relative(Files::listFilesInDirectoryAtPath(path("b"))), QStringList());
    QVERIFY(Files::isEmptyItemAtPath(path("only")));
    QVERIFY(Files::listItemsInDirectoryAtPath(path("none"), true).isEmpty());
    QCOMPARE(Files::itemsInDirectoryAtPath(path("only")), QStringList({".DS_Store"})); // names as they are
}

void FileWrapperTest::filesAreFoundByTheirNames()
{
    for (const char* name : {"pre.TXT", "pre", "x.txt", "x_end.png", "sub/pre.txt"})
        make(name);
    QCOMPARE(relative(Files::listFilesInDirectoryAtPathWithExtension(path(""), ".Txt")),
             QStringList({"pre.TXT", "x.txt"}));
    QCOMPARE(relative(Files::listFilesInDirectoryAtPathWithPrefix(path(""), "pre", true)),
             QStringList({"pre", "pre.TXT", "sub/pre.txt"}));
    QCOMPARE(relative(Files::listFilesInDirectoryAtPathWithSuffix(path(""), "_end")), QStringList({"x_end.png"}));
    QCOMPARE(relative(Files::listFilesInDirectoryAtPathWithSuffix(path(""), "end.png")), QStringList({"x_end.png"}));
    QVERIFY(Files::removeFilesInDirectoryAtPathWithExtension(path(""), "txt"));
    QCOMPARE(relative(Files::listFilesInDirectoryAtPath(path(""), true)),
             QStringList({"pre", "sub/pre.txt", "x_end.png"}));
}

void FileWrapperTest::existingFilesStayUnlessOverwritten()
{
    make("a", "kept");
    QString error;
    QVERIFY(!Files::createFileAtPath(path("a"), &error) && !error.isEmpty());
    QCOMPARE(Files::readFileAtPath(path("a")), "kept");
    QVERIFY(!Files::copyItemAtPath(path("a"), path("a")));
    QVERIFY(Files::createFileAtPath(path("a"), true, &error) && error.isEmpty());
    QCOMPARE(Files::readFileAtPath(path("a")), "");
    QVERIFY(Files::createFileAtPath(path("new/folders/b")) && Files::existsItemAtPath(path("new/folders/b")));
    QVERIFY(!Files::createFileAtPath(path("a/b"), &error) && !error.isEmpty()); // beneath a file
    QVERIFY(QFile::link(path("new"), path("link")));
    QVERIFY(Files::createFileAtPath(path("link"), true) && Files::isFileItemAtPath(path("link")));
    QVERIFY(Files::existsItemAtPath(path("new/folders/b"))); // the link went, not what it led to
}

void FileWrapperTest::copiesAndMovesWholeFolders()
{
    make("from/sub/a", "first");
    QVERIFY(QFile::link("sub/a", path("from/link")));
    QVERIFY(Files::copyItemAtPath(path("from"), path("copy/inside")));
    QCOMPARE(Files::readFileAtPath(path("copy/inside/sub/a")), "first");
    QCOMPARE(QFile::symLinkTarget(path("copy/inside/link")), path("copy/inside/sub/a"));
    make("taken", "old");
    QVERIFY(!Files::moveItemAtPath(path("from"), path("taken")));
    QCOMPARE(Files::readFileAtPath(path("taken")), "old");
    QVERIFY(Files::moveItemAtPath(path("from"), path("taken"), true));
    QCOMPARE(Files::readFileAtPath(path("taken/sub/a")), "first");
    QVERIFY(!Files::existsItemAtPath(path("from")));
    QVERIFY(Files::renameItemAtPath(path("taken"), "named") && Files::existsItemAtPath(path("named/sub/a")));
    QString error;
    QVERIFY(!Files::moveItemAtPath(path("none"), path("there"), false, &error) && !error.isEmpty());
}

void FileWrapperTest::removesAllItCan()
{
    make("a");
    make("b/c");
    QString error;
    QVERIFY(!Files::removeItemsAtPaths({path("a"), path("none"), path("b")}, &error) && !error.isEmpty());
    QVERIFY(!Files::existsItemAtPath(path("a")) && !Files::existsItemAtPath(path("b")));
    QVERIFY(Files::removeItemsAtPaths({}));
    make("d/e/f/g");
    make("d/h");
    QVERIFY(Files::removeItemsInDirectoryAtPath(path("d")));
    QVERIFY(Files::isEmptyItemAtPath(path("d")) && Files::existsItemAtPath(path("d")));
    QVERIFY(Files::createFileAtPath(Files::pathForTemporaryDirectoryWithPath("folder/stays")));
    QVERIFY(Files::createFileAtPath(Files::pathForTemporaryDirectoryWithPath("goes")));
    QVERIFY(Files::emptyTemporaryDirectory());
    QCOMPARE(Files::itemsInDirectoryAtPath(Files::pathForTemporaryDirectory()), QStringList("folder"));
}

void FileWrapperTest::contentsComeBackAsWritten()
{
    const QString file = path("content");
    const QVariantMap map{{"text", "a < b & \"c\""},
                          {"number", qlonglong{-5}},
                          {"real", 0.1},
                          {"truth", true},
                          {"bytes", QByteArray("\0\xFF", 2)},
                          {"date", QDateTime(QDate(2024, 2, 29), QTime(1, 2, 3), Qt::UTC)},
                          {"list", QVariantList{"a", QVariantMap{{"k", "v"}}}}};
    QVERIFY(Files::writeFileAtPath(file, map));
    QCOMPARE(Files::readFileAtPathAsDictionary(file), map);
    QVERIFY(!Files::readFileAtPathAsArray(file));
    QVERIFY(Files::writeFileAtPath(file, QStringList{"x", "y"}));
    QCOMPARE(Files::readFileAtPathAsMutableArray(file), QVariantList({"x", "y"}));
    QVERIFY(Files::writeFileAtPath(file, QString("Grüße")));
    QCOMPARE(Files::readFileAtPathAsData(file),
             QByteArray("Gr\xC3\xBC\xC3\x9F"
                        "e"));
    QCOMPARE(Files::readFileAtPathAsString(file), "Grüße");
    QVERIFY(Files::writeFileAtPath(file, QByteArray("{\"a\": [1, 2]}")));
    QCOMPARE(Files::readFileAtPathAsJSON(file)->toMap().value("a").toList().size(), 2);
    QVERIFY(Files::writeFileAtPath(file, QSize(3, 4))); // anything else that can be stored
    QVariant back;
    QDataStream stream(*Files::readFileAtPathAsData(file));
    stream >> back;
    QCOMPARE(back, QSize(3, 4));
}

void FileWrapperTest::unreadableContentsAreRefused()
{
    const QString file = path("content");
    QString error;
    make("content", "\xFF\xFE not text");
    QVERIFY(!Files::readFileAtPathAsString(file, &error) && !error.isEmpty());
    QVERIFY(!Files::readFileAtPathAsJSON(file, &error) && !error.isEmpty());
    make("content", "<plist><dict><string>no key</string></dict></plist>");
    QVERIFY(!Files::readFileAtPathAsDictionary(file));
    make("content", "<plist><array><array>");
    QVERIFY(!Files::readFileAtPathAsArray(file));
    make("content", "<plist>" + QByteArray("<array>").repeated(100'000)); // no stack is that deep
    QVERIFY(!Files::readFileAtPathAsArray(file));
    QVERIFY(!Files::readFileAtPathAsData(path("none"), &error) && !error.isEmpty());
    QVERIFY(!Files::readFileAtPathAsData(path(""), &error) && !error.isEmpty());
}

void FileWrapperTest::sizesOfFoldersCountEverythingInThem()
{
    make("f/a", QByteArray(1000, 'x'));
    make("f/g/b", QByteArray(24, 'x'));
    make("f/.DS_Store", QByteArray(5000, 'x'));
    const auto folders = *Files::sizeOfItemAtPath(path("f")) + *Files::sizeOfItemAtPath(path("f/g"));
    QCOMPARE(Files::sizeOfDirectoryAtPath(path("f")), folders + 1024);
    QVERIFY(!Files::sizeOfFileAtPath(path("f")) && !Files::sizeOfDirectoryAtPath(path("f/a")));
    QCOMPARE(Files::sizeFormattedOfFileAtPath(path("f/a")), "1000 bytes");
    QVERIFY(!Files::sizeFormattedOfItemAtPath(path("none")));
}

void FileWrapperTest::sizeTexts_data()
{
    QTest::addColumn<double>("size");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << 0.0 << "   0 bytes";
    QTest::newRow("full kilobyte") << 1024.0 << "1024 bytes";
    QTest::newRow("kilobytes") << 1536.0 << "   2 KB";
    QTest::newRow("megabytes") << 1572864.0 << "1.50 MB";
    QTest::newRow("gigabytes") << 1610612736.0 << "1.50 GB";
    QTest::newRow("most") << 1024.0 * 1024 * 1024 * 1024 * 1024 << "1024.00 TB";
}

void FileWrapperTest::sizeTexts()
{
    QFETCH(double, size);
    QTEST(Files::sizeFormatted(size), "text");
    QCOMPARE(nameOfException([] { Files::sizeFormatted(2e15); }), "Invalid size|there is no unit past TB.");
}

void FileWrapperTest::extendedAttributes()
{
    make("f");
    const QString file = path("f");
    if (!Files::xattrOfItemAtPathSetValueForKey(file, "value", "key"))
        QSKIP("the file system keeps no extended attributes");
    QVERIFY(QFile::link(file, path("link")));
    QVERIFY(Files::xattrOfItemAtPathSetValueForKey(path("link"), "", "user.empty")); // follows the link
    QCOMPARE(Files::xattrOfItemAtPath(file), QVariantMap({{"user.key", "value"}, {"user.empty", ""}}));
    QVERIFY(Files::xattrOfItemAtPathHasValueForKey(file, "empty"));
    QVERIFY(Files::xattrOfItemAtPathSetValueForKey(file, "aéz", "cut")); // three characters, so three bytes
    QCOMPARE(Files::xattrOfItemAtPathGetValueForKey(file, "cut"), "aé");
    QVERIFY(Files::xattrOfItemAtPathSetValueForKey(file, "éé", "torn"));
    QCOMPARE(Files::xattrOfItemAtPathGetValueForKey(file, "torn"), "é");
    QVERIFY(Files::xattrOfItemAtPathSetValueForKey(file, "€", "torn")); // one byte of three: no text
    QVERIFY(!Files::xattrOfItemAtPathGetValueForKey(file, "torn"));
    QVERIFY(!Files::xattrOfItemAtPathSetValueForKey(file, {}, "key"));
    QCOMPARE(Files::xattrOfItemAtPathGetValueForKey(file, "key"), "value");
    QVERIFY(Files::xattrOfItemAtPathRemoveValueForKey(file, "key"));
    QVERIFY(!Files::xattrOfItemAtPathHasValueForKey(file, "key"));
    QVERIFY(!Files::xattrOfItemAtPathRemoveValueForKey(file, "key"));
    QVERIFY(Files::xattrOfItemAtPath(path("none")).isEmpty());
}

/// A JPEG's header with the camera's maker in its Exif block, written by hand before the picture's own.
QByteArray withExif(const QByteArray& jpeg)
{
    const QByteArray tiff("II*\0\x08\0\0\0"
                          "\x02\0" // two tags
                          "\x0F\x01\x02\0\x04\0\0\0abc\0" // maker, four characters
                          "\x69\x87\x04\0\x01\0\0\0\x26\0\0\0" // where the Exif tags are
                          "\0\0\0\0"
                          "\x01\0" // one tag
                          "\x27\x88\x03\0\x01\0\0\0\xC8\0\0\0" // speed rating 200
                          "\0\0\0\0",
                          56);
    const QByteArray block = QByteArray("Exif\0\0", 6) + tiff;
    QByteArray marker("\xFF\xE1");
    marker += static_cast<char>((block.size() + 2) >> 8);
    marker += static_cast<char>((block.size() + 2) & 0xFF);
    return jpeg.left(2) + marker + block + jpeg.mid(2);
}

void FileWrapperTest::picturesTellTheirSizeAndTags()
{
    QImage image(7, 5, QImage::Format_RGB32);
    image.fill(Qt::red);
    QVERIFY(image.save(path("a.jpg")));
    make("b.jpg", withExif(*Files::readFileAtPathAsData(path("a.jpg"))));
    const auto tags = Files::metadataOfImageAtPath(path("b.jpg"));
    QVERIFY(tags);
    QCOMPARE(tags->value("PixelWidth"), 7);
    QCOMPARE(tags->value("PixelHeight"), 5);
    QCOMPARE(Files::tiffDataOfImageAtPath(path("b.jpg"))->value("Make"), "abc");
    QCOMPARE(Files::exifDataOfImageAtPath(path("b.jpg"))->value("ISOSpeedRatings"), "200");
    QVERIFY(Files::metadataOfImageAtPath(path("a.jpg")) && !Files::exifDataOfImageAtPath(path("a.jpg")));
    make("no.jpg", "no picture");
    QVERIFY(!Files::metadataOfImageAtPath(path("no.jpg")) && !Files::metadataOfImageAtPath(path("")));
}

}

QTEST_GUILESS_MAIN(vantoro::FileWrapperTest)
#include "file_wrapper_test.moc"
