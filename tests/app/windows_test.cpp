#include "app/AppCommands.h"
#include "app/AppDelegate.h"
#include "app/EventMonitor.h"
#include "app/KXMainTableCellView.h"
#include "app/KXMainWinController.h"
#include "app/KXPrefsDefault.h"
#include "app/MainWindows.h"
#include "app/PopViewController.h"
#include "app/Popover.h"
#include "app/SettingsWindow.h"
#include "app/SideTable.h"
#include "app/StatusMenu.h"
#include "app/TwoPageWindow.h"

#include "browse/KXDropArchiveView.h"
#include "browse/KXEncodePopButton.h"
#include "tests/support/FakeHosts.h"
#include "tests/support/FakeWorkspace.h"
#include "tests/support/MemoryDefaultsStore.h"
#include "tests/support/ScriptedPanels.h"
#include "widgets/Appearance.h"
#include "widgets/FlatButton.h"
#include "widgets/SwitchButton.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMessageBox>
#include <QSpinBox>
#include <QTest>

namespace vantoro {
namespace {

/// A page that notes when it comes and goes.
class PageDouble final : public KXBaseViewCter {
public:
    PageDouble(int index, QStringList& log, QWidget* parent) : KXBaseViewCter(parent), m_index(index), m_log(log) {}
    QString identifier() const override { return QString::number(m_index); }
    QIcon toolbarItemImage() const override { return {}; }
    QString toolbarItemLabel() const override { return identifier(); }
    void viewWillAppear() override { m_log << "+" + identifier(); }
    void viewWillDisappear() override { m_log << "-" + identifier(); }

private:
    int m_index;
    QStringList& m_log;
};

/// Monitors as a desktop would hold them, with clicks made by the test.
class ScriptedEvents final : public GlobalEvents {
public:
    Token addMonitor(quint64 mask, Handler handler) override
    {
        monitors[++m_last] = {mask, std::move(handler)};
        return m_last;
    }
    void removeMonitor(Token token) override { monitors.erase(token); }
    void click(quint64 type) const
    {
        for (const auto& [token, monitor] : monitors) {
            if (monitor.first & type)
                monitor.second({.type = type});
        }
    }
    std::map<Token, std::pair<quint64, Handler>> monitors;

private:
    Token m_last = 0;
};

struct Stage {
    MemoryDefaultsStore store;
    FakeWorkspace workspace;
    ScriptedPanels panels;
    FakeTaskWindow taskWindow;
    FakeMainWindows windows;
    AppDelegate delegate{taskWindow, windows, panels};
};

struct SinglePage {
    QStringList log;
    KXMainWinController window{[this](int index, QWidget* parent) {
                                   log << "made " + QString::number(index);
                                   return new PageDouble(index, log, parent);
                               },
                               {.makeMenu = [](QWidget* parent) { return new QMenu(parent); },
                                .toggleHowToUse = [this] { log << "how to"; },
                                .toggleSettings = [this] { log << "settings"; }}};
    SideTable* table() { return window.window()->findChild<SideTable*>(); }
    QString shown() const { return window.tempViewCter()->identifier(); }
};

}

class WindowsTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { Appearance::instance().setReducedMotion(true); }

    void rowsOfTheSideTableLeadToTheirPages();
    void pagesAreMadeWhenTheyAreNeededAndKept();
    void rowsAreDeadWhileTheTableIsDisabled();
    void pageButtonsTakeTheColourOfTheirPage();
    void everyWindowHasPagesOfItsOwn();
    void dropViewTakesOneArchive_data();
    void dropViewTakesOneArchive();
    void severalArchivesAreAnsweredWithAMessage();
    void monitorForgetsTheFirstOfTwoStarts();
    void popoverStaysOnTheScreen_data();
    void popoverStaysOnTheScreen();
    void panelAndItsMenuOfferTheSame();
    void commandsReachTheController_data();
    void commandsReachTheController();
    void shortcutsReachEveryWindow();
    void settingsActAtOnceAndFollowTheStore();
    void defaultEncodingSelectsTheSeparatorWithoutAChoice();
};

void WindowsTest::rowsOfTheSideTableLeadToTheirPages()
{
    SinglePage single;
    QCOMPARE(single.table()->count(), 4);
    QCOMPARE(single.shown(), "0"); // opens on the contents browser
    QStringList names;
    for (int row = 0; row < 4; ++row) {
        single.table()->setCurrentRow(row);
        const auto* cell = qobject_cast<KXMainTableCellView*>(single.table()->itemWidget(single.table()->item(row)));
        names << cell->groupName() + single.shown();
        QCOMPARE(single.table()->currentRow(), row);
    }
    QCOMPARE(names, QStringList({"Extract0", "Compress1", "Extract0", "Extract0"}));
    single.window.next(2);
    QCOMPARE(single.shown(), "0"); // there is no such page
    single.window.next(1);
    QCOMPARE(single.table()->currentRow(), 1);
}

void WindowsTest::pagesAreMadeWhenTheyAreNeededAndKept()
{
    SinglePage single;
    QCOMPARE(single.log, QStringList{"made 0"});
    single.window.showWindow();
    single.window.next(1);
    single.window.next(0);
    single.window.next(0);
    single.window.hideWindow();
    QCOMPARE(single.log, QStringList({"made 0", "+0", "made 1", "-0", "+1", "-1", "+0", "-0"}));
    QVERIFY(single.window.page(1)->isHidden());
}

void WindowsTest::rowsAreDeadWhileTheTableIsDisabled()
{
    SinglePage single;
    single.window.setTableViewEnable(false);
    single.window.tableViewDidClickedRow(1);
    QCOMPARE(single.shown(), "0");
    SinglePage second; // the flag is one for the whole program
    second.window.tableViewDidClickedRow(1);
    QCOMPARE(second.shown(), "0");
    single.window.setTableViewEnable(true);
    single.window.tableViewDidClickedRow(1);
    QCOMPARE(single.shown(), "1");
}

void WindowsTest::pageButtonsTakeTheColourOfTheirPage()
{
    SinglePage single;
    FlatButton extract("e", FlatButton::Kind::Plain);
    FlatButton compress("c", FlatButton::Kind::Plain);
    compress.setProperty("tag", 1);
    single.window.buttonArr() = {&extract, &compress};
    for (FlatButton* button : single.window.buttonArr()) {
        button->setDown(true); // the highlighted state
        button->resize(60, 30);
    }
    const auto ground = [](FlatButton& button) { return button.grab().toImage().pixelColor(30, 4); };
    single.window.next(1);
    QCOMPARE(ground(compress), QColor(224, 164, 44));
    QCOMPARE(ground(extract), QColor(Qt::white));
    single.window.next(0);
    QCOMPARE(ground(extract), QColor(27, 146, 37));
}

void WindowsTest::everyWindowHasPagesOfItsOwn()
{
    Stage stage;
    MainWindows windows;
    AppCommands commands(stage.delegate, windows);
    windows.connectTo(stage.delegate, commands);
    windows.showTwoPageWindow();
    windows.showSinglePageWindow();
    QVERIFY(windows.isTwoPageWindowVisible() && windows.isSinglePageWindowVisible());
    int browsers = 0;
    for (QWidget* window : QApplication::topLevelWidgets())
        browsers += static_cast<int>(window->findChildren<KXDropArchiveView*>().size());
    QCOMPARE(browsers, 2);
    windows.hideTwoPageWindow();
    QVERIFY(!windows.isTwoPageWindowVisible());
    windows.closeAll();
}

class ArchiveTaker final : public DropArchiveDelegate {
public:
    void obtainFilesPath(const QString& path) override { taken << path; }
    QStringList taken;
};

void WindowsTest::dropViewTakesOneArchive_data()
{
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("zip") << QStringList{"/a/archive.zip"} << true;
    QTest::newRow("upper case") << QStringList{"/a/archive.ZIP"} << false;
    QTest::newRow("volume") << QStringList{"/a/archive.part1.rar"} << true;
    QTest::newRow("numbered volume") << QStringList{"/a/archive.7z.001"} << false;
    QTest::newRow("folder") << QStringList{"/a/folder"} << false;
}

void WindowsTest::dropViewTakesOneArchive()
{
    QFETCH(QStringList, paths);
    QFETCH(bool, isTaken);
    KXDropArchiveView view;
    ArchiveTaker taker;
    view.setDelegate(&taker);
    QCOMPARE(view.takeFiles(paths), isTaken);
    QCOMPARE(taker.taken, isTaken ? paths : QStringList());
}

void WindowsTest::severalArchivesAreAnsweredWithAMessage()
{
    KXDropArchiveView view;
    ArchiveTaker taker;
    view.setDelegate(&taker);
    view.show();
    QVERIFY(!view.takeFiles({"/a.zip", "/b.zip"}));
    QVERIFY(taker.taken.isEmpty());
    QMessageBox* alert = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* box = qobject_cast<QMessageBox*>(window); box && box->isVisible())
            alert = box;
    }
    QVERIFY(alert);
    QVERIFY((alert->text() + alert->informativeText()).contains("ONLY preview one archive at a time"));
    QCOMPARE(alert->buttons().size(), 1);
    alert->buttons().front()->click();
}

void WindowsTest::monitorForgetsTheFirstOfTwoStarts()
{
    ScriptedEvents events;
    int clicks = 0;
    auto monitor = EventMonitor::eventMonitorWithEventMask(
        kLeftMouseDownMask | kRightMouseDownMask, [&](const GlobalEvent&) { ++clicks; }, events);
    monitor->stopMonitor(); // never started: nothing
    QVERIFY(events.monitors.empty());
    monitor->startMonitor();
    events.click(kRightMouseDownMask);
    events.click(1U << 5); // not in the mask
    QCOMPARE(clicks, 1);
    monitor->stopMonitor();
    QVERIFY(events.monitors.empty() && !monitor->isMonitoring());
    monitor->startMonitor();
    monitor->startMonitor();
    monitor->stopMonitor();
    QCOMPARE(events.monitors.size(), 1U);
}

void WindowsTest::popoverStaysOnTheScreen_data()
{
    QTest::addColumn<QRect>("frame");
    QTest::addColumn<QPoint>("topLeft");
    QTest::newRow("panel above") << QRect(700, 0, 24, 24) << QPoint(524, 28);
    QTest::newRow("panel below") << QRect(700, 576, 24, 24) << QPoint(524, 372);
    QTest::newRow("corner") << QRect(10, 0, 24, 24) << QPoint(0, 28);
}

void WindowsTest::popoverStaysOnTheScreen()
{
    QFETCH(QRect, frame);
    const QRect place = Popover::placeFor({200, 200}, frame, {0, 0, 800, 600}, Qt::LeftToRight);
    QTEST(place.topLeft(), "topLeft");
}

void WindowsTest::panelAndItsMenuOfferTheSame()
{
    Stage stage;
    PopViewController panel(stage.delegate, stage.windows);
    QWidget owner;
    const QMenu* menu = panel.makeMenu(&owner);
    const auto buttons = panel.findChildren<QAbstractButton*>();
    QCOMPARE(menu->actions().size(), 5);
    for (qsizetype i = 0; i < buttons.size(); ++i) {
        QCOMPARE(menu->actions().at(i)->text(), buttons.at(i)->text());
        buttons.at(i)->click();
        menu->actions().at(i)->trigger();
    }
    QCOMPARE(stage.windows.log, QStringList({"prefs", "prefs", "how to", "how to", "quit", "quit"}));
    QVERIFY(stage.windows.twoPage); // both "Extract" and "Open Main Window" bring it
}

void WindowsTest::commandsReachTheController_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<QStringList>("log");
    const auto row = [](const char* name, Command command, const QStringList& log) {
        QTest::newRow(name) << static_cast<int>(command) << log;
    };
    row("open", Command::OpenArchive, {"choose archive"});
    row("new", Command::NewArchive, {"choose files"});
    row("settings", Command::Settings, {"prefs"});
    row("help", Command::HowToUse, {"how to"});
    row("shortcuts", Command::Shortcuts, {"shortcuts"});
    row("about", Command::Information, {"info"});
    row("quit", Command::Quit, {"quit"});
}

void WindowsTest::commandsReachTheController()
{
    QFETCH(int, command);
    Stage stage;
    AppCommands commands(stage.delegate, stage.windows);
    commands.action(static_cast<Command>(command))->trigger();
    QTEST(stage.windows.log, "log");
}

void WindowsTest::shortcutsReachEveryWindow()
{
    Stage stage;
    AppCommands commands(stage.delegate, stage.windows);
    commands.followWindows();
    QWidget window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_Comma, Qt::ControlModifier);
    QTest::keyClick(&window, Qt::Key_F1);
    stage.windows.showsArchive = true;
    QTest::keyClick(&window, Qt::Key_E, Qt::ControlModifier); // the shown archive's, without a panel
    QCOMPARE(stage.windows.log, QStringList({"prefs", "how to", "extract shown"}));
    QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier);
    QVERIFY(!window.isVisible());
    QSet<QKeySequence> all;
    int count = 0;
    for (const auto& rows : {windowShortcuts(commands), pageShortcuts()}) {
        for (const ShortcutRow& row : rows) {
            all += QSet<QKeySequence>(row.keys.begin(), row.keys.end());
            count += static_cast<int>(row.keys.size());
        }
    }
    QCOMPARE(all.size(), count); // no key has two meanings
}

void WindowsTest::settingsActAtOnceAndFollowTheStore()
{
    Stage stage;
    stage.delegate.applicationDidFinishLaunching();
    KXPrefsDefault::setOpenFolder(true);
    SettingsWindow window(stage.delegate);
    window.show();
    const auto control = [&window](const QString& name) -> QWidget* {
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            if (widget->accessibleName() == name)
                return widget;
        }
        return nullptr;
    };
    auto* trash = qobject_cast<SwitchButton*>(control("Move the archive to the Trash"));
    QVERIFY(trash && !trash->isChecked());
    QVERIFY(qobject_cast<SwitchButton*>(control("Open what was extracted"))->isChecked());
    trash->click();
    QVERIFY(KXPrefsDefault::removeArchive());
    QVERIFY(trash->accessibleDescription().contains("Until Vantoro is started again."));
    qobject_cast<SwitchButton*>(control("Give the new folder the archive's date"))->click();
    QCOMPARE(KXPrefsDefault::modifiedDate(), 2);
    auto* sure = window.findChild<QSpinBox*>();
    QCOMPARE(sure->value(), 80);
    sure->setValue(95);
    QCOMPARE(KXPrefsDefault::autoThreshold(), 95);
    qobject_cast<SwitchButton*>(control("Main window with a side panel"))->click();
    QVERIFY(KXPrefsDefault::changeViewMode() && stage.windows.singlePage);
    window.hide();
    KXPrefsDefault::setRemoveArchive(false); // elsewhere
    window.show();
    QVERIFY(!trash->isChecked());
}

void WindowsTest::defaultEncodingSelectsTheSeparatorWithoutAChoice()
{
    Stage stage;
    KXEncodePopButton button;
    button.buildEncodingListWithAutoDetect();
    SettingsWindow::selectDefaultEncoding(button);
    QVERIFY(button.isSeparator(button.currentIndex()) && button.currentIndex() == button.count() - 1);
    const auto chosen = button.tagAtIndex(3);
    KXPrefsDefault::setFileEncode(static_cast<qint64>(chosen));
    SettingsWindow::selectDefaultEncoding(button);
    QCOMPARE(button.selectedTag(), chosen);
}

}

QTEST_MAIN(vantoro::WindowsTest)
#include "windows_test.moc"
