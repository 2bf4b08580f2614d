#include "app/KXPrefsDefault.h"
#include "compress/CompressHost.h"
#include "compress/CompressWindow.h"
#include "compress/FilePreview.h"
#include "compress/KXPackViewController.h"
#include "compress/KXTableCellView.h"
#include "compress/PackKinds.h"
#include "compress/PackTable.h"
#include "compress/PasswordStrength.h"
#include "compress/PreviewPanel.h"
#include "tests/support/FakeWorkspace.h"
#include "tests/support/MemoryDefaultsStore.h"
#include "tests/support/ScriptedPanels.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/PasswordField.h"
#include "widgets/ProgressOverlay.h"

#include <QApplication>
#include <QComboBox>
#include <QDropEvent>
#include <QImage>
#include <QMessageBox>
#include <QMimeData>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace vantoro {

class Host final : public CompressHost {
public:
    void compressionBegan() override { log += "began"; }
    void compressionEnded() override { log += "ended"; }
    QStringList log;
};

/// The page from the user's side: what is to be seen and to be used, and what comes of it.
class PageTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void emptyPageOffersTheDropAreaOnly();
    void listShowsWhatWasAddedOnce();
    void passwordFieldFollowsKindAndList();
    void singleFileKindsAreForOnePlainFile();
    void rowsAndListCanBeCleared();
    void manyRowsNeedFewViews();
    void addPanelStartsWhereTheLastDestinationWas();
    void dropsAreTakenByTheWholePage();
    void compressesIntoTheChosenFolder_data();
    void compressesIntoTheChosenFolder();
    void cancelledPanelChangesNothing();
    void startingWithNothingSaysSoAfterThePanel();
    void optionsWantThePasswordTwice();
    void pathsThatComeMeanwhileAreAddedAfterwards();
    void destroyingThePageStopsTheWriting();
    void previewFollowsTheList();
    void previewShowsImagesTextAndFacts();
    void strengthSeesThroughWordsAndRuns();
    void menuOffersEachFormatOnce();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    QString write(const QString& name, const QByteArray& content = "content") const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write a test file");
        return path(name);
    }
    void add(const QStringList& paths)
    {
        const qsizetype expected = m_page->filesArray().size() + paths.size();
        m_page->obtainFilesPath(paths);
        QTRY_COMPARE(m_page->filesArray().size(), expected);
        waitUntilIdle();
    }
    void waitUntilIdle()
    {
        QTRY_VERIFY(!m_page->isBusy());
        QTest::qWait(1); // the refresh comes in the next turn
        QTRY_COMPARE(part<PackTable>()->isVisible(), !m_page->filesArray().isEmpty());
    }
    template <class Widget> Widget* part(const QString& accessibleName = {}) const
    {
        for (auto* widget : m_page->findChildren<Widget*>()) {
            if (accessibleName.isEmpty() || widget->accessibleName() == accessibleName)
                return widget;
        }
        return nullptr;
    }
    FlatButton* button(const QString& text) const
    {
        for (auto* button : m_page->findChildren<FlatButton*>()) {
            if (button->text() == text || button->accessibleName() == text)
                return button;
        }
        return nullptr;
    }
    QComboBox* kinds() const { return part<QComboBox>("Format"); }
    void choose(const QString& kind) const { kinds()->setCurrentIndex(kinds()->findText(kind)); }
    PasswordField* password() const { return part<PasswordField>("Password"); }
    bool opens(const QString& archive, const QString& password) const
    {
        return QProcess::execute("7z", {"t", "-bso0", "-bse0", "-bsp0", "-p" + password, path(archive)}) == 0;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MemoryDefaultsStore> m_store;
    std::unique_ptr<ScriptedPanels> m_panels;
    FakeWorkspace m_workspace;
    Host m_host;
    std::unique_ptr<KXPackViewController> m_page;
};

void PageTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QDir().mkpath(path("out"));
    m_store = std::make_unique<MemoryDefaultsStore>();
    m_panels = std::make_unique<ScriptedPanels>();
    m_host.log.clear();
    m_page = std::make_unique<KXPackViewController>(m_host);
    m_page->setPanels(m_panels.get());
    m_page->resize(720, 480);
    m_page->show();
    m_page->viewWillAppear();
    QTest::qWait(1);
}

void PageTest::cleanup()
{
    m_page.reset();
    m_panels.reset();
    m_store.reset(); // before the next one takes its place
}

void PageTest::emptyPageOffersTheDropAreaOnly()
{
    QVERIFY(part<KXDropFilesView>()->isVisible());
    QVERIFY(!part<PackTable>()->isVisible() && !password()->isVisible());
    for (QWidget* control : {static_cast<QWidget*>(button("Clear")), static_cast<QWidget*>(button("Compress")),
                             static_cast<QWidget*>(kinds())})
        QVERIFY(!control->isEnabled());
    QCOMPARE(m_page->archiveExtension(), "zip");
}

void PageTest::listShowsWhatWasAddedOnce()
{
    const QString a = write("one/a.txt", QByteArray(2000, 'a'));
    const QString folder = QFileInfo(write("two/folder/b", QByteArray(3000, 'b'))).path();
    add({a, folder});
    QVERIFY(!part<KXDropFilesView>()->isVisible() && kinds()->isVisible() && kinds()->isEnabled());
    m_page->obtainFilesPath({folder, a});
    waitUntilIdle();
    QCOMPARE(m_page->filesArray(), (QStringList{a, folder}));
    QCOMPARE(m_page->destArchivePath(), path("two")); // of the first path that came last
    const auto* row = part<PackTable>()->viewForPath(a);
    QVERIFY(row);
    QCOMPARE(row->itemName()->text(), "a.txt");
    QTRY_COMPARE(row->itemSize()->text(), "1.95 KB");
    QTRY_COMPARE(part<PackTable>()->viewForPath(folder)->itemSize()->text(), "2.93 KB");
    QVERIFY(row->itemSize()->isVisible());
}

void PageTest::passwordFieldFollowsKindAndList()
{
    choose("7z");
    QVERIFY(!password()->isVisible());
    add({write("a")});
    QVERIFY(password()->isVisible());
    choose("tar.gz");
    QVERIFY(!password()->isVisible());
    QCOMPARE(m_page->archiveExtension(), "tar.gz");
    choose("zip");
    QVERIFY(password()->isVisible());
    m_page->toggleClearAll();
    QVERIFY(!password()->isVisible());
}

void PageTest::singleFileKindsAreForOnePlainFile()
{
    const auto isEnabled = [this](const QString& kind) {
        return bool(kinds()->model()->flags(kinds()->model()->index(kinds()->findText(kind), 0)) & Qt::ItemIsEnabled);
    };
    add({write("a")});
    QVERIFY(isEnabled("gz") && isEnabled("tar.gz"));
    choose("gz");
    add({write("b")});
    QVERIFY(!isEnabled("gz") && isEnabled("tar.gz"));
    QCOMPARE(m_page->archiveExtension(), "zip");
}

void PageTest::rowsAndListCanBeCleared()
{
    const QStringList paths{write("a"), write("b"), write("c")};
    add(paths);
    QTest::mouseClick(button("Remove b"), Qt::LeftButton);
    QCOMPARE(m_page->filesArray(), (QStringList{paths[0], paths[2]}));
    QTRY_VERIFY(!part<PackTable>()->viewForPath(paths[1]));
    auto* table = part<PackTable>();
    table->setCurrentRow(1);
    QTest::keyClick(table, Qt::Key_Delete);
    QCOMPARE(m_page->filesArray(), QStringList{paths[0]});
    QTRY_COMPARE(table->currentRow(), 0);
    QTest::keyClick(table, Qt::Key_Delete);
    QVERIFY(!button("Compress")->isEnabled() && !button("Clear")->isEnabled() && !kinds()->isEnabled());
    QTRY_VERIFY(part<KXDropFilesView>()->isVisible());
    add(paths);
    QTest::mouseClick(button("Clear"), Qt::LeftButton);
    QVERIFY(m_page->filesArray().isEmpty());
    QTRY_VERIFY(part<KXDropFilesView>()->isVisible());
}

void PageTest::manyRowsNeedFewViews()
{
    QStringList paths;
    for (int i = 0; i < 20'000; ++i)
        paths += QStringLiteral("/no/such/file %1").arg(i);
    add(paths);
    auto* table = part<PackTable>();
    QTest::keyClick(table, Qt::Key_End);
    QVERIFY(table->viewForPath(paths.last()));
    QVERIFY(table->findChildren<KXTableCellView*>().size() < 40);
    QCOMPARE(table->rowForView(table->viewForPath(paths.last())->closeBut()), 19'999);
    QCOMPARE(table->viewForPath(paths.last())->height(), 31);
    QTRY_COMPARE(table->viewForPath(paths.last())->itemSize()->text(), "0 B");
}

void PageTest::addPanelStartsWhereTheLastDestinationWas()
{
    KXPrefsDefault::setLastDestination(path("out"));
    m_panels->answers.push_back(QList<QUrl>{QUrl::fromLocalFile(write("b")), QUrl::fromLocalFile(write("a"))});
    m_page->addFiles();
    QTRY_COMPARE(m_page->filesArray(), (QStringList{path("b"), path("a")}));
    const OpenPanel& panel = m_panels->shown.at(0);
    QCOMPARE(panel.message, "Please select the files");
    QCOMPARE(panel.prompt, "Select");
    QVERIFY(panel.chooseFiles && panel.chooseDirectories && panel.multipleSelection && !panel.createDirectories);
    QCOMPARE(panel.directory, path("out"));
}

void PageTest::dropsAreTakenByTheWholePage()
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(write("a")), QUrl::fromLocalFile(path("out"))});
    const auto drop = [&](QWidget* widget, const QMimeData* mime) {
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &enter);
        QDropEvent event(QPointF(5, 5), Qt::CopyAction, mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
        return event.isAccepted();
    };
    QVERIFY(drop(part<KXDropFilesView>(), &data));
    QTRY_COMPARE(m_page->filesArray(), (QStringList{path("a"), path("out")}));
    waitUntilIdle();
    data.setUrls({QUrl::fromLocalFile(write("b"))});
    QVERIFY(drop(m_page.get(), &data));
    QTRY_COMPARE(m_page->filesArray().size(), 3);
    waitUntilIdle();
    data.setUrls({QUrl("https://example.org/a")}); // nothing on this machine
    QVERIFY(!drop(m_page.get(), &data));
}

void PageTest::compressesIntoTheChosenFolder_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("isEncrypted");
    for (const QString kind : {"zip", "7z", "tar.gz", "tar.zst"})
        QTest::newRow(qPrintable(kind)) << kind << (kind == "zip" || kind == "7z");
}

void PageTest::compressesIntoTheChosenFolder()
{
    QFETCH(QString, kind);
    QFETCH(bool, isEncrypted);
    KXPrefsDefault::setOpenFolder(true);
    const QStringList paths{write("notes.txt"), write("more.txt")};
    add(paths);
    choose(kind);
    password()->setText("sesame");
    m_workspace.log.clear();
    m_panels->choose(path("out"));
    QTest::mouseClick(button("Compress"), Qt::LeftButton);
    QTRY_COMPARE(m_host.log, (QStringList{"began", "ended"}));
    const OpenPanel& panel = m_panels->shown.at(0);
    QCOMPARE(panel.message, "Please select the destination");
    QCOMPARE(panel.prompt, "Compress");
    QVERIFY(!panel.chooseFiles && panel.chooseDirectories && !panel.multipleSelection && panel.createDirectories);
    QCOMPARE(panel.directory, QDir::homePath());
    QCOMPARE(KXPrefsDefault::lastDestination(), path("out"));
    QCOMPARE(QDir(path("out")).entryList(QDir::Files | QDir::Hidden), QStringList{"notes." + kind});
    QCOMPARE(opens("out/notes." + kind, "sesame"), true);
    QCOMPARE(opens("out/notes." + kind, "wrong"), !isEncrypted);
    QTRY_COMPARE(m_workspace.log, QStringList{"open " + path("out")});
    QCOMPARE(m_page->filesArray(), paths); // for another kind
    QCOMPARE(m_page->destArchivePath(), path("out"));
}

void PageTest::cancelledPanelChangesNothing()
{
    add({write("a")});
    const QString before = m_page->destArchivePath();
    QTest::mouseClick(button("Compress"), Qt::LeftButton);
    QTest::qWait(20);
    QCOMPARE(m_panels->shown.size(), 1U);
    QVERIFY(m_host.log.isEmpty());
    QCOMPARE(m_page->destArchivePath(), before);
    QVERIFY(KXPrefsDefault::lastDestination().isNull());
}

void PageTest::startingWithNothingSaysSoAfterThePanel()
{
    m_page->openCompressWindow();
    auto* options = part<CompressWindow>();
    QVERIFY(options->isVisible() && options->isModal());
    m_panels->choose(path("out"));
    options->startButton()->click();
    QVERIFY(!options->isVisible());
    QMessageBox* alert = nullptr;
    QTRY_VERIFY(alert = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()));
    QCOMPARE(alert->text(), "Information");
    QCOMPARE(alert->informativeText(), "Please drag files and folers here!");
    QCOMPARE(KXPrefsDefault::lastDestination(), path("out"));
    QVERIFY(m_host.log.isEmpty());
    alert->buttons().constFirst()->click();
}

void PageTest::optionsWantThePasswordTwice()
{
    add({write("a.txt")});
    password()->setText("first");
    m_page->openCompressWindow();
    auto* options = part<CompressWindow>();
    QCOMPARE(options->passwordField()->text(), "first");
    options->kindPopButton()->setCurrentIndex(options->kindPopButton()->findText("7z"));
    options->passwordField()->setText("sesame");
    options->repeatField()->setText("sesane");
    m_panels->choose(path("out"));
    options->startButton()->click();
    QVERIFY(options->isVisible());
    QVERIFY(m_panels->shown.empty());
    options->cancelButton()->click();
    QVERIFY(!options->isVisible());
    QCOMPARE(password()->text(), "first"); // cancelling keeps what the page had
    m_page->openCompressWindow();
    QVERIFY(options->repeatField()->text().isEmpty());
    options->kindPopButton()->setCurrentIndex(options->kindPopButton()->findText("7z"));
    options->passwordField()->setText("sesame");
    options->repeatField()->setText("sesame");
    options->startButton()->click();
    QTRY_COMPARE(m_host.log.size(), 2);
    QVERIFY(opens("out/a.7z", "sesame") && !opens("out/a.7z", "first"));
    QCOMPARE(kinds()->currentText(), "7z");
    QVERIFY(options->passwordField()->text().isEmpty());
}

void PageTest::pathsThatComeMeanwhileAreAddedAfterwards()
{
    add({write("big", QByteArray(4 << 20, 'x')), write("c")});
    choose("tar.xz");
    m_panels->choose(path("out"));
    m_page->toggleAchive();
    QTRY_COMPARE(m_host.log, QStringList{"began"});
    m_page->obtainFilesPath({write("late")});
    QCOMPARE(m_page->filesArray().size(), 2);
    QTRY_COMPARE(m_page->filesArray().size(), 3);
    QCOMPARE(m_host.log, (QStringList{"began", "ended"}));
    QVERIFY(QFile::exists(path("out/big.tar.xz")));
}

void PageTest::destroyingThePageStopsTheWriting()
{
    write("out/big.7z", "the archive before");
    QByteArray noise(48 << 20, Qt::Uninitialized);
    quint32 state = 1;
    for (char& byte : noise)
        byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
    add({write("big", noise)});
    choose("7z");
    m_panels->choose(path("out"));
    m_page->toggleAchive();
    QTRY_COMPARE(m_host.log, QStringList{"began"});
    m_page.reset();
    QCOMPARE(m_host.log, (QStringList{"began", "ended"}));
    QCOMPARE(QDir(path("out")).entryList(QDir::Files | QDir::Hidden), QStringList{"big.7z"});
    QCOMPARE(QFileInfo(path("out/big.7z")).size(), qint64(qstrlen("the archive before")));
}

void PageTest::previewFollowsTheList()
{
    add({write("notes.txt", "some notes"), write("b")});
    QTest::mouseClick(button("Preview notes.txt"), Qt::LeftButton);
    auto& panel = PreviewPanel::shared();
    QVERIFY(panel.isVisible());
    const auto shows = [&](const QString& text) {
        const auto labels = panel.findChildren<ElidedLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&](const auto* label) { return label->text() == text; });
    };
    QVERIFY(shows("notes.txt"));
    QTest::mouseClick(button("Remove notes.txt"), Qt::LeftButton);
    QTRY_VERIFY(shows("Nothing to show"));
    QTest::mouseClick(button("Preview b"), Qt::LeftButton); // hides what is visible
    QVERIFY(!panel.isVisible());
    m_page->togglePreviewPanel();
    QVERIFY(panel.isVisible() && shows("b"));
    m_page.reset();
    QVERIFY(!panel.isVisible());
}

void PageTest::previewShowsImagesTextAndFacts()
{
    QImage picture(3000, 200, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(path("a.png")));
    const auto image = FilePreview::of(path("a.png"));
    QVERIFY(image.kind == FilePreview::Kind::Image && image.image.width() <= 1600);
    const auto text = FilePreview::of(write("a.txt", QByteArray(100'000, 'x')));
    QVERIFY(text.kind == FilePreview::Kind::Text && text.text.size() < 70'000 && text.text.endsWith(QChar(0x2026)));
    QVERIFY(FilePreview::of(write("broken.png", "no picture")).kind == FilePreview::Kind::Facts);
    QVERIFY(FilePreview::of(write("b.txt", QByteArray("a\0b", 3))).kind == FilePreview::Kind::Facts);
    QVERIFY(FilePreview::of(path("out")).facts.contains("item"));
    QVERIFY(FilePreview::of(path("gone")).kind == FilePreview::Kind::Nothing);
    QVERIFY(FilePreview::of(QString()).kind == FilePreview::Kind::Nothing);
}

void PageTest::strengthSeesThroughWordsAndRuns()
{
    QCOMPARE(passwordStrength(""), PasswordStrength::None);
    if (!knowsPasswordStrength())
        QSKIP("built without zxcvbn");
    for (const QString weak : {"a", "password", "P4ssw0rd", "qwertyuiop", "19841984", "aaaaaaaaaaaaaaaa"})
        QVERIFY2(passwordStrength(weak) == PasswordStrength::Weak, qPrintable(weak));
    QCOMPARE(passwordStrength("k7#Vq9!xL2@mZ4$w"), PasswordStrength::Strong);
    QVERIFY(passwordStrength("blue rope at dawn") >= PasswordStrength::Good);
    QVERIFY(passwordStrength(QString(5000, 'x')) <= PasswordStrength::Fair); // and without delay
}

void PageTest::menuOffersEachFormatOnce()
{
    QStringList titles;
    QSet<QString> descriptions;
    for (const PackKind& kind : packKinds()) {
        titles += kind.title;
        descriptions.insert(kind.description);
    }
    QCOMPARE(titles.mid(0, 7), (QStringList{"zip", "7z", "tar.gz", "tar.xz", "tar.zst", "tar.bz2", "tar"}));
    QCOMPARE(descriptions.size(), titles.size());
    QVERIFY(!titles.contains("tgz"));
}

}

QTEST_MAIN(vantoro::PageTest)
#include "page_test.moc"
