#include "browse/ArchiveTexts.h"
#include "browse/EntryIcons.h"
#include "browse/KXArchiveItem.h"
#include "browse/KXUnarchiveWrapper.h"
#include "browse/PreviewContent.h"

#include <QBuffer>
#include <QTest>

namespace vantoro {

using Kind = PreviewContent::Kind;

class PreviewContentTest : public QObject {
    Q_OBJECT
private slots:
    void filesAreShownByNameAndContents_data();
    void filesAreShownByNameAndContents();
    void hugePicturesAreMadeSmaller();
    void hugeLinesAreBroken();
    void whatCannotBeReadSaysWhy();
    void rootRowsHaveTheirKindsImage_data();
    void rootRowsHaveTheirKindsImage();
    void theSummaryHoldsWhatIsKnown();
};

namespace {

PreviewContent shown(const QString& name, const std::optional<QByteArray>& data, const ReadProblem& problem = {})
{
    return previewContent(*KXArchiveItem::initWithPath("/skeleton/" + name, name, false), data, problem);
}

QByteArray picture(int width, int height, const char* format)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QByteArray data;
    QBuffer buffer(&data);
    return image.save(&buffer, format) ? data : QByteArray();
}

}

void PreviewContentTest::filesAreShownByNameAndContents_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("kind");
    const auto row = [](const char* what, const QString& name, const QByteArray& data, Kind kind) {
        QTest::newRow(what) << name << data << static_cast<int>(kind);
    };
    row("png", "a.png", picture(8, 8, "PNG"), Kind::Image);
    row("a jpeg that calls itself png", "a.png", picture(8, 8, "JPG"), Kind::Image);
    row("drawing", "a.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='4' height='4'/>", Kind::Image);
    row("damaged png", "a.png", picture(64, 64, "PNG").left(20), Kind::Icon);
    row("png without an ending", "picture", picture(8, 8, "PNG"), Kind::Icon);
    row("pdf, whatever the case", "a.PDF", "%PDF-1.4", Kind::Pdf);
    row("text", "a.c", "int main() { return 0; }\n", Kind::Text);
    row("text of another script", "a", "Grüße, мир, 日本", Kind::Text);
    row("Latin-1", "a.txt",
        QByteArray("Gr\xFC\xDF"
                   "e"),
        Kind::Icon);
    row("cut inside a letter", "a.txt", QByteArray("Gr\xC3"), Kind::Icon);
    row("nothing", "a.txt", "", Kind::Icon);
}

void PreviewContentTest::filesAreShownByNameAndContents()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, data);
    QFETCH(int, kind);
    const auto content = shown(name, data);
    QCOMPARE(static_cast<int>(content.kind), kind);
    QCOMPARE(content.title, name);
    QVERIFY(!content.detail.isEmpty());
    QCOMPARE(content.image.isNull(), content.kind != Kind::Image);
    QCOMPARE(content.text.isEmpty(), content.kind != Kind::Text);
}

void PreviewContentTest::hugePicturesAreMadeSmaller()
{
    const auto content = shown("a.png", picture(9000, 90, "PNG"));
    QCOMPARE(content.image.size(), QSize(4096, 40));
    QVERIFY2(content.detail.startsWith("9000 × 90 pixels"), qPrintable(content.detail));
}

void PreviewContentTest::hugeLinesAreBroken()
{
    const auto content = shown("a.js", QByteArray("first\n") + QByteArray(9000, 'x') + "\nlast");
    const auto lines = content.text.split('\n');
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines.front(), "first");
    QCOMPARE(lines.back(), "last");
    QCOMPARE(QString(content.text).remove('\n').size(), 9009);
    const auto large = shown("a.log", QByteArray(5 << 20, 'x'));
    QVERIFY(large.text.size() < 5 << 20);
    QVERIFY(large.detail.contains("5.00 MB"));
}

void PreviewContentTest::whatCannotBeReadSaysWhy()
{
    const auto content = shown("a.iso", std::nullopt, {ReadProblem::Kind::TooLarge, "“a.iso” is too large"});
    QCOMPARE(content.kind, Kind::Icon);
    QCOMPARE(content.detail, "“a.iso” is too large");
}

void PreviewContentTest::rootRowsHaveTheirKindsImage_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("image");
    const char* const rows[][2]
        = {{"x.tar.gz", "gz"},       {"x.tgz", "archive"},       {"X.ZIP", "zip"},   {"x.bz", "bz"},
           {"x.bz2", "archive"},     {"x.bzip", "bz2"},          {"x.gzip", "gz"},   {"x.7zip", "7z"},
           {"x.tbz", "tbz"},         {"noextension", "archive"}, {"zip", "archive"}, {"x.cbr", "archive"},
           {"/a.zip/x.lzma", "lzma"}};
    for (const auto& row : rows)
        QTest::newRow(row[0]) << row[0] << row[1];
}

void PreviewContentTest::rootRowsHaveTheirKindsImage()
{
    QFETCH(QString, path);
    QTEST(rootImageName(path), "image");
    QVERIFY(!rootIcon(path).pixmap(32).toImage().allGray());
}

void PreviewContentTest::theSummaryHoldsWhatIsKnown()
{
    XADArchiveSummary about{.format = "Zip archive", .entries = 3, .totalSize = 2048, .packedSize = 100};
    QCOMPARE(texts::summary(about), "Zip archive · 3 entries · 2.00 KB, 100 B packed");
    about.volumes = 2;
    about.isEncrypted = true;
    about.nameEncoding = "Shift_JIS";
    QCOMPARE(texts::summary(about),
             "Zip archive · 3 entries · 2.00 KB, 100 B packed · encrypted · names in Shift_JIS · 2 volumes");
}

}

QTEST_MAIN(vantoro::PreviewContentTest)
#include "preview_content_test.moc"
