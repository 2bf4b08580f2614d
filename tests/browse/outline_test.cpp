#include "tests/browse/browse_fixture.h"
#include "tests/support/MemoryDefaultsStore.h"
#include "tests/support/ScriptedBrowser.h"

#include "browse/ArchiveOutlineView.h"
#include "browse/ArchiveTreeModel.h"
#include "browse/KXArchiveContentsViewController.h"
#include "browse/KXArchiveItem.h"
#include "browse/KXDropArchiveView.h"
#include "browse/KXUnarchiveWrapper.h"
#include "browse/PreviewContent.h"
#include "browse/PreviewWindow.h"

#include "app/KXPrefsDefault.h"
#include "widgets/Appearance.h"
#include "widgets/ImageView.h"

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTextEdit>

namespace vantoro {

class OutlineTest : public QObject {
    Q_OBJECT
private slots:
    void theModelKeepsItsPromises();
    void cellsShowWhatTheArchiveTells();
    void rowsAreCountedFromTheRoot();
    void closingAFolderTakesTheSelectionOut();
    void keysAskForWhatTheyMean();
    void thePageShowsAnArchiveAndForgetsIt();
    void thePreviewFollowsTheSelection();
    void picturesMoveUnlessNothingMay_data();
    void picturesMoveUnlessNothingMay();
    void thePageGoesWhileAnArchiveIsOpened();
    void oneArchiveIsTakenAtATime_data();
    void oneArchiveIsTakenAtATime();

private:
    std::shared_ptr<const ArchiveTree> tree(const ZipBuilder& zip)
    {
        zip.write(m_home.path("t.zip"));
        m_wrapper = browsed(m_home.path("t.zip"));
        return ArchiveTree::generateTree(*m_wrapper);
    }

    OwnHome m_home;
    MemoryDefaultsStore m_defaults;
    std::unique_ptr<KXUnarchiveWrapper> m_wrapper;
};

void OutlineTest::theModelKeepsItsPromises()
{
    ArchiveTreeModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setTree(tree(ZipBuilder().add("a/b/c.txt", "1").add("d", "2")), "/x/t.zip");
    QCOMPARE(model.rowCount(), 1);
    const auto root = model.index(0, 0);
    QCOMPARE(model.rowCount(root), 2);
    for (ArchiveTree::Node node = 0; node < model.tree()->nodeCount(); ++node)
        QCOMPARE(model.nodeAt(model.indexOf(node)), node);
    model.setTree(nullptr, {});
    QCOMPARE(model.rowCount(), 0);
}

void OutlineTest::cellsShowWhatTheArchiveTells()
{
    ArchiveTreeModel model;
    model.setTree(tree(ZipBuilder().add("a/b.txt", QByteArray(2048, 'x')).add("d", "")), "/x/t.zip");
    const auto root = model.index(0, 0);
    QCOMPARE(root.data().toString(), "t.zip");
    const auto folder = model.index(0, 0, root);
    QCOMPARE(folder.data().toString(), "a");
    QVERIFY(folder.siblingAtColumn(ArchiveTreeModel::Size).data().toString().isEmpty());
    QVERIFY(!model.isPreviewable(folder) && folder.data(Qt::ToolTipRole).toString().contains("2.00 KB"));
    const auto file = model.index(0, 0, folder);
    QCOMPARE(file.siblingAtColumn(ArchiveTreeModel::Size).data().toString(), "2.00 KB");
    QCOMPARE(file.siblingAtColumn(ArchiveTreeModel::Modified).data().toString(), "2024/01/01 00:00");
    QVERIFY(model.isPreviewable(file));
    const std::unique_ptr<QMimeData> dragged(model.mimeData({file}));
    QVERIFY(dragged->text() == "b.txt" && !dragged->hasUrls());
}

void OutlineTest::rowsAreCountedFromTheRoot()
{
    ArchiveTreeModel model;
    ArchiveOutlineView view;
    view.setArchiveModel(&model);
    ZipBuilder zip;
    for (int i = 0; i < 200; ++i)
        zip.add("a/" + QByteArray::number(i), "1");
    model.setTree(tree(zip.add("b", "2")), "/x/t.zip");
    view.resize(400, 200);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    const auto root = model.index(0, 0);
    view.expand(root);
    view.expand(model.index(0, 0, root));
    const auto last = model.index(1, 0, root);
    QCOMPARE(view.rowForIndex(root), 0);
    QCOMPARE(view.rowForIndex(last), 202);
    view.scrollTo(last);
    QCOMPARE(view.rowForIndex(root), 0);
    QCOMPARE(view.rowForIndex(last), 202);
    QCOMPARE(view.rowForIndex({}), -1);
    QCOMPARE(view.columnWidth(0) + view.columnWidth(1) + view.columnWidth(2), view.viewport()->width());
}

void OutlineTest::closingAFolderTakesTheSelectionOut()
{
    ArchiveTreeModel model;
    ArchiveOutlineView view;
    view.setArchiveModel(&model);
    model.setTree(tree(ZipBuilder().add("a/b/c", "1").add("d", "2")), "/x/t.zip");
    view.expandAll();
    const auto folder = model.index(0, 0, model.index(0, 0));
    view.setCurrentIndex(model.index(0, 0, model.index(0, 0, folder)));
    QCOMPARE(view.selectedIndex().data().toString(), "c");
    view.collapse(folder);
    QCOMPARE(view.selectedIndex().data().toString(), "a");
}

void OutlineTest::keysAskForWhatTheyMean()
{
    ArchiveTreeModel model;
    ArchiveOutlineView view;
    view.setArchiveModel(&model);
    model.setTree(tree(ZipBuilder().add("a/b", "1").add("zebra", "2")), "/x/t.zip");
    view.expand(model.index(0, 0));
    QSignalSpy previews(&view, &ArchiveOutlineView::previewRequested);
    QSignalSpy dismissals(&view, &ArchiveOutlineView::previewDismissed);
    const auto folder = model.index(0, 0, model.index(0, 0));
    view.setCurrentIndex(folder);
    QTest::keyClick(&view, Qt::Key_Return);
    QVERIFY(view.isExpanded(folder) && previews.isEmpty());
    QTest::keyClick(&view, Qt::Key_Z);
    QCOMPARE(view.selectedIndex().data().toString(), "zebra");
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(previews.size(), 1);
    QSignalSpy toggles(&view, &ArchiveOutlineView::previewToggled);
    QTest::keyClick(&view, Qt::Key_Space);
    QCOMPARE(toggles.size(), 1);
    QTest::keyClick(&view, Qt::Key_Escape);
    QCOMPARE(dismissals.size(), 1);
}

void OutlineTest::thePageShowsAnArchiveAndForgetsIt()
{
    KXPrefsDefault::setListArchive(true);
    RecordingBrowserHost host;
    KXArchiveContentsViewController page(host);
    auto* outline = page.findChild<ArchiveOutlineView*>();
    auto* extract = page.findChild<QWidget*>("btnExtract");
    page.show();
    QVERIFY(!outline->isVisible() && !extract->isEnabled());
    ZipBuilder().add("a", "1").add("b", "2").write(m_home.path("t.zip"));
    page.obtainFilesPath(m_home.path("t.zip"));
    QTRY_VERIFY(outline->isVisible() && extract->isEnabled());
    QVERIFY(outline->isExpanded(outline->model()->index(0, 0)));
    page.toggleExtractSelectedItem(); // nothing is selected
    QCOMPARE(host.log, QStringList{"all of t.zip"});
    page.toggleClearAll();
    QVERIFY(!outline->isVisible() && !extract->isEnabled());
}

void OutlineTest::thePreviewFollowsTheSelection()
{
    KXPrefsDefault::setListArchive(true);
    RecordingBrowserHost host;
    KXArchiveContentsViewController page(host);
    auto* outline = page.findChild<ArchiveOutlineView*>();
    page.show();
    ZipBuilder().add("a.txt", "first").add("b.txt", "second").write(m_home.path("t.zip"));
    page.obtainFilesPath(m_home.path("t.zip"));
    QTRY_VERIFY(outline->isVisible());
    const auto root = outline->model()->index(0, 0);
    outline->setCurrentIndex(outline->model()->index(0, 0, root));
    QTest::keyClick(outline, Qt::Key_Space);
    const auto shownText = [&page] {
        const auto* text = page.findChild<QPlainTextEdit*>();
        return text ? text->toPlainText() : QString();
    };
    QTRY_COMPARE(shownText(), "first");
    QTest::keyClick(outline, Qt::Key_Down);
    QTRY_COMPARE(shownText(), "second");
    auto* preview = page.findChild<PreviewWindow*>();
    QTest::keyClick(preview, Qt::Key_Up); // the same keys in the preview
    QTRY_COMPARE(shownText(), "first");
    QTest::keyClick(outline, Qt::Key_Space);
    QVERIFY(!preview->isVisible());
    QTest::keyClick(outline, Qt::Key_Down);
    QVERIFY(!preview->isVisible());
}

/// One red pixel, then a green one.
QByteArray movingPicture()
{
    const auto frame = [](const char* color) {
        return QByteArray::fromHex("21F9040405000000" // for 50 ms
                                   "2C000000000100010000"
                                   "0202")
            + QByteArray::fromHex(color) + QByteArray::fromHex("0100");
    };
    return "GIF89a"
        + QByteArray::fromHex("01000100800000FF000000FF00"
                              "21FF0B4E45545343415045322E300301000000") // for ever
        + frame("44") + frame("4C") + ";";
}

void OutlineTest::picturesMoveUnlessNothingMay_data()
{
    QTest::addColumn<bool>("mayMove");
    QTest::newRow("moves") << true;
    QTest::newRow("reduced motion") << false;
}

void OutlineTest::picturesMoveUnlessNothingMay()
{
    QFETCH(bool, mayMove);
    Appearance::instance().setReducedMotion(!mayMove);
    QWidget page;
    page.show();
    PreviewWindow window(&page);
    const auto item = KXArchiveItem::initWithPath("/skeleton/a.gif", "a.gif", false);
    const auto content = previewContent(*item, movingPicture(), {});
    QVERIFY(!content.animation.isEmpty());
    window.showContent(content, {});
    auto* picture = window.findChild<ImageView*>();
    const auto color = [picture] { return picture->grab().toImage().pixelColor(picture->pictureRect().center()); };
    if (mayMove) {
        QTRY_COMPARE(color(), QColor(Qt::green));
    } else {
        QVERIFY(!QTest::qWaitFor([&] { return color() == QColor(Qt::green); }, 300)); // six frames' time
    }
    window.dismiss();
    Appearance::instance().setReducedMotion(false);
}

void OutlineTest::thePageGoesWhileAnArchiveIsOpened()
{
    KXPrefsDefault::setListArchive(true);
    RecordingBrowserHost host;
    ZipBuilder zip;
    for (int i = 0; i < 5000; ++i)
        zip.add("f" + QByteArray::number(i), "1");
    zip.write(m_home.path("t.zip"));
    for (int i = 0; i < 5; ++i) {
        KXArchiveContentsViewController page(host);
        page.show();
        page.obtainFilesPath(m_home.path("t.zip"));
        page.obtainFilesPath(m_home.path("t.zip")); // the second one stops the first
        QTest::qWait(i * 10);
    }
}

void OutlineTest::oneArchiveIsTakenAtATime_data()
{
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QString>("taken");
    QTest::addColumn<bool>("hasMessage");
    QTest::newRow("zip") << QStringList{"/x/a.zip"} << "/x/a.zip" << false;
    QTest::newRow("first volume") << QStringList{"/x/a.part1.rar"} << "/x/a.part1.rar" << false;
    QTest::newRow("upper case") << QStringList{"/x/a.ZIP"} << QString() << false;
    QTest::newRow("split 7z") << QStringList{"/x/a.7z.001"} << QString() << false;
    QTest::newRow("two") << QStringList{"/x/a.zip", "/x/b.zip"} << QString() << true;
}

void OutlineTest::oneArchiveIsTakenAtATime()
{
    struct Taker final : DropArchiveDelegate {
        void obtainFilesPath(const QString& path) override { taken = path; }
        QString taken;
    } taker;
    KXDropArchiveView view;
    view.setDelegate(&taker);
    QFETCH(QStringList, paths);
    QFETCH(QString, taken);
    QCOMPARE(view.takeFiles(paths), !taken.isEmpty());
    QCOMPARE(taker.taken, taken);
    QTEST(view.findChild<QMessageBox*>() != nullptr, "hasMessage");
}

}

QTEST_MAIN(vantoro::OutlineTest)
#include "outline_test.moc"
