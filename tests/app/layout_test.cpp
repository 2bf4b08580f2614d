// Whether every window fits a small screen and shows its words whole: in each language, with type of twice the size,
// and mirrored.
#include "app/AppCommands.h"
#include "app/AppDelegate.h"
#include "app/KXPrefsDefault.h"
#include "app/MainWindows.h"

#include "browse/ArchiveOutlineView.h"
#include "browse/KXEncodePopButton.h"
#include "compress/KXTableCellView.h"
#include "extraction/KXArchiveManageController.h"
#include "extraction/KXArchiveTaskView.h"
#include "extraction/KXTaskListsView.h"
#include "extraction/QuestionPanels.h"
#include "extraction/TaskWindow.h"
#include "tests/support/FakeHosts.h"
#include "tests/support/FakeWorkspace.h"
#include "tests/support/MemoryDefaultsStore.h"
#include "tests/support/ScriptedPanels.h"
#include "tests/support/ZipBuilder.h"
#include "widgets/Appearance.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Translation.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QTranslator>

namespace vantoro {
namespace {

constexpr QSize kSmallScreen(1024, 600);
constexpr int kTitleBar = 40; // and the desktop's panel hides what it covers by itself
constexpr int kLongestWait = 30'000; // milliseconds

QString shown(const QString& text) { return QString(text).remove(QLatin1Char('&')); }

/// What the label lacks to show its text whole; empty when nothing.
QString cutOf(const QLabel& label)
{
    if (label.text().isEmpty() || qobject_cast<const ElidedLabel*>(&label))
        return {};
    const QSize wanted = label.wordWrap() ? QSize(label.minimumSizeHint().width(), label.heightForWidth(label.width()))
                                          : label.sizeHint();
    const bool isCut = label.width() < wanted.width() || label.height() < wanted.height();
    return isCut ? QStringLiteral("label \"%1\"").arg(shown(label.text())) : QString();
}

QString cutOf(const QAbstractButton& button)
{
    if (button.text().isEmpty() || qobject_cast<const QToolButton*>(&button))
        return {}; // a sign inside a field
    const QSize wanted = button.minimumSizeHint();
    const bool isCut
        = button.width() < qMin(wanted.width(), button.sizeHint().width()) || button.height() < wanted.height();
    return isCut ? QStringLiteral("button \"%1\"").arg(shown(button.text())) : QString();
}

QString cutOf(const QWidget& field, const QString& text, int besideText)
{
    const QFontMetrics metrics = field.fontMetrics();
    const bool isCut
        = field.width() < metrics.horizontalAdvance(text) + besideText || field.height() < metrics.height();
    return isCut ? QStringLiteral("field \"%1\"").arg(text) : QString();
}

/// Everything in the window whose words do not show whole, however it is scrolled.
QStringList cutWords(const QWidget& window)
{
    QStringList found;
    for (const auto* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&window))
            continue;
        QString cut;
        if (const auto* label = qobject_cast<const QLabel*>(widget))
            cut = cutOf(*label);
        else if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            cut = cutOf(*button);
        else if (const auto* combo = qobject_cast<const QComboBox*>(widget))
            cut = cutOf(*combo, combo->currentText(), 36); // the arrow
        else if (const auto* field = qobject_cast<const QLineEdit*>(widget))
            cut = cutOf(*field, field->placeholderText(), 16);
        if (!cut.isEmpty())
            found << QStringLiteral("%1: %2x%3").arg(cut).arg(widget->width()).arg(widget->height());
    }
    return found;
}

struct Stage {
    MemoryDefaultsStore store;
    FakeWorkspace workspace;
    ScriptedPanels panels;
    FakeTaskWindow taskWindow;
    FakeMainWindows hosts;
    AppDelegate delegate{taskWindow, hosts, panels};
    MainWindows windows;
    AppCommands commands{delegate, windows};
    Stage() { windows.connectTo(delegate, commands); }
    ~Stage() { windows.closeAll(); }
};

QWidget* windowNamed(const char* name)
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->objectName() == QLatin1String(name))
            return window;
    }
    return nullptr;
}

}

class LayoutTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void everythingFitsASmallScreen_data();
    void everythingFitsASmallScreen();

private:
    void check(QWidget* window, const QString& state);
    void checkMainWindow(Stage& stage, bool hasSidePanel);
    void checkTaskWindow(double type);

    QTemporaryDir m_folder;
    QString m_archive;
    QStringList m_files;
    QFont m_font;
    std::unique_ptr<QTranslator> m_translator;
    QStringList m_complaints;
};

void LayoutTest::initTestCase()
{
    installTranslations(*qApp);
    Appearance::instance().install(*qApp);
    Appearance::instance().setReducedMotion(true);
    m_font = QApplication::font();
    m_archive = m_folder.filePath(QStringLiteral("Holiday photos 2019.zip"));
    QVERIFY(ZipBuilder().add("Holiday/Sardinia.txt", "harbour").add("Holiday/Corsica.txt", "ferry").write(m_archive));
    for (const char* name : {"Letters.odt", "Recording of the meeting on the second of November.flac"}) {
        QFile file(m_folder.filePath(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("words") == 5);
        m_files << file.fileName();
    }
}

void LayoutTest::init() { m_complaints.clear(); }

void LayoutTest::cleanup()
{
    QApplication::setFont(m_font);
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    if (m_translator)
        QCoreApplication::removeTranslator(m_translator.get());
    m_translator.reset();
}

void LayoutTest::everythingFitsASmallScreen_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<double>("type");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    for (const char* language : {"en", "de", "fr", "es", "ja", "zh_CN"}) {
        QTest::addRow("%s", language) << QString::fromLatin1(language) << 1.0 << Qt::LeftToRight;
        QTest::addRow("%s, large type", language) << QString::fromLatin1(language) << 2.0 << Qt::LeftToRight;
    }
    QTest::addRow("mirrored") << QStringLiteral("de") << 1.0 << Qt::RightToLeft;
}

void LayoutTest::everythingFitsASmallScreen()
{
    QFETCH(QString, language);
    QFETCH(double, type);
    QFETCH(Qt::LayoutDirection, direction);
    m_translator = std::make_unique<QTranslator>();
    QVERIFY(m_translator->load(QStringLiteral("vantoro_") + language, QStringLiteral(":/i18n")));
    QCoreApplication::installTranslator(m_translator.get());
    QFont font = m_font;
    font.setPointSizeF(m_font.pointSizeF() * type);
    QApplication::setFont(font);
    QGuiApplication::setLayoutDirection(direction);
    {
        Stage stage;
        stage.delegate.applicationDidFinishLaunching();
        KXPrefsDefault::setListArchive(true);
        checkMainWindow(stage, false);
        checkMainWindow(stage, true);
        stage.windows.showPrefsWindow();
        check(windowNamed("prefswindow"), "settings");
        stage.windows.showHowToUseWindow();
        check(windowNamed("howtousWindow"), "how to use");
        stage.windows.showShortcutsWindow();
        check(windowNamed("shortcutsWindow"), "shortcuts");
        stage.windows.showInfoWindow();
        check(windowNamed("infoWindow"), "information");
    }
    checkTaskWindow(type);
    QVERIFY2(m_complaints.isEmpty(), qPrintable("\n" + m_complaints.join('\n')));
}

void LayoutTest::check(QWidget* window, const QString& state)
{
    QVERIFY2(window, qPrintable(state));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    const QSize room = kSmallScreen - QSize(0, kTitleBar);
    const QSize least = window->minimumSizeHint().expandedTo(window->minimumSize());
    if (least.width() > room.width() || least.height() > room.height())
        m_complaints << QStringLiteral("%1: needs %2x%3").arg(state).arg(least.width()).arg(least.height());
    window->resize(window->size().boundedTo(room));
    QCoreApplication::processEvents();
    for (const QString& cut : cutWords(*window))
        m_complaints << state + ": " + cut;
}

void LayoutTest::checkMainWindow(Stage& stage, bool hasSidePanel)
{
    KXPrefsDefault::setChangeViewMode(hasSidePanel);
    const char* name = hasSidePanel ? "singlePageWindow" : "twoPageWindow";
    const QString mode = hasSidePanel ? QStringLiteral("side panel, ") : QString();
    if (hasSidePanel)
        stage.windows.showSinglePageWindow();
    else
        stage.windows.showTwoPageWindow();
    QWidget* window = windowNamed(name);
    check(window, mode + "extract page");
    if (!hasSidePanel) {
        stage.windows.browseArchive(m_archive);
        auto* outline = window->findChild<ArchiveOutlineView*>();
        QTRY_VERIFY_WITH_TIMEOUT(outline->isVisible() && outline->model()->rowCount() > 0, kLongestWait);
        check(window, "contents of an archive");
    }
    stage.windows.compressFiles(m_files);
    QTRY_VERIFY_WITH_TIMEOUT(window->findChildren<KXTableCellView*>().size() >= m_files.size(), kLongestWait);
    check(window, mode + "compress page");
    window->hide();
}

void LayoutTest::checkTaskWindow(double type)
{
    const auto job = KXArchiveManageController::initWithFilename(m_archive);
    job->setDestination(m_folder.path());
    TaskWindow window;
    auto* row = dynamic_cast<KXArchiveTaskView*>(window.taskListsView()->makeTaskView());
    row->setArchiveController(job.get());
    row->setupWaitView();
    window.taskListsView()->addTaskView(static_cast<DDTaskView*>(row));
    window.encodePopButton()->buildEncodingListWithAutoDetect();
    window.show();
    window.fitToList();
    if (type > 1)
        window.resize(kSmallScreen.width() - kTitleBar, window.height()); // wider than the screen of the test
    check(&window, "waiting row");
    row->displayNotWritableErrorWithResponseAction({});
    QTRY_VERIFY_WITH_TIMEOUT(qobject_cast<QuestionPanel*>(row->displayedView()), kLongestWait);
    window.fitToList();
    check(&window, "question");
    row->closeQuestions();
}

}

QTEST_MAIN(vantoro::LayoutTest)

#include "layout_test.moc"
