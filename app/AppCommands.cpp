#include "app/AppCommands.h"

#include "app/AppDelegate.h"
#include "app/KXPrefsDefault.h"

#include "widgets/Translation.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QWidget>

#include <array>

namespace vantoro {
namespace {

constexpr QKeyCombination kNoKey = Qt::Key_unknown;

struct CommandRow {
    Command command;
    const char* name; ///< in the accessibility tree and in tests
    const char* text;
    QKeyCombination key = kNoKey;
    bool isToggle = false;
};

// In the order of Command.
constexpr std::array kRows{
    CommandRow{Command::OpenArchive, "openArchive", QT_TRANSLATE_NOOP("AppCommands", "&Open Archive…"),
               Qt::CTRL | Qt::Key_O},
    CommandRow{Command::NewArchive, "newArchive", QT_TRANSLATE_NOOP("AppCommands", "&New Archive…"),
               Qt::CTRL | Qt::Key_N},
    CommandRow{Command::Extract, "extract", QT_TRANSLATE_NOOP("AppCommands", "&Extract…"), Qt::CTRL | Qt::Key_E},
    CommandRow{Command::ExtractToDesktop, "extractToDesktop",
               QT_TRANSLATE_NOOP("AppCommands", "Extract to the &Desktop…")},
    CommandRow{Command::ExtractBeside, "extractBeside",
               QT_TRANSLATE_NOOP("AppCommands", "Extract &Beside the Archives…")},
    CommandRow{Command::ShowFirst, "showFirst", QT_TRANSLATE_NOOP("AppCommands", "&Look Inside Before Extracting"),
               kNoKey, true},
    CommandRow{Command::SidePanelWindow, "sidePanelWindow", QT_TRANSLATE_NOOP("AppCommands", "Window with Side &Panel"),
               kNoKey, true},
    CommandRow{Command::ShowMainWindow, "showMainWindow", QT_TRANSLATE_NOOP("AppCommands", "Show &Main Window"),
               Qt::CTRL | Qt::Key_0},
    CommandRow{Command::Settings, "settings", QT_TRANSLATE_NOOP("AppCommands", "&Settings"), Qt::CTRL | Qt::Key_Comma},
    CommandRow{Command::HowToUse, "howToUse", QT_TRANSLATE_NOOP("AppCommands", "&How to Use"), Qt::Key_F1},
    CommandRow{Command::Shortcuts, "shortcuts", QT_TRANSLATE_NOOP("AppCommands", "&Keyboard Shortcuts"),
               Qt::CTRL | Qt::Key_F1},
    CommandRow{Command::Support, "support", QT_TRANSLATE_NOOP("AppCommands", "Get S&upport")},
    CommandRow{Command::HomePage, "homePage", QT_TRANSLATE_NOOP("AppCommands", "Home Pa&ge")},
    CommandRow{Command::Information, "information", QT_TRANSLATE_NOOP("AppCommands", "&About Vantoro")},
    CommandRow{Command::CloseWindow, "closeWindow", QT_TRANSLATE_NOOP("AppCommands", "&Close Window"),
               Qt::CTRL | Qt::Key_W},
    CommandRow{Command::Quit, "quit", QT_TRANSLATE_NOOP("AppCommands", "&Quit"), Qt::CTRL | Qt::Key_Q},
};

/// The toolkit knows the menu key only, which many keyboards lack.
bool openContextMenu(QWidget* widget, const QKeyEvent& key)
{
    if (key.key() != Qt::Key_F10 || key.modifiers() != Qt::ShiftModifier || widget != QApplication::focusWidget())
        return false;
    const QPoint place = widget->rect().center();
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, place, widget->mapToGlobal(place));
    return QApplication::sendEvent(widget, &menu);
}

QString text(const char* source) { return QCoreApplication::translate("AppCommands", source); }

}

AppCommands::AppCommands(AppDelegate& delegate, MainWindowsHost& windows) : m_delegate(delegate), m_windows(windows)
{
    m_actions.reserve(kRows.size());
    for (const CommandRow& row : kRows) {
        auto* action = new QAction(text(row.text), this);
        action->setObjectName(QLatin1String(row.name));
        action->setCheckable(row.isToggle);
        if (row.key != kNoKey)
            action->setShortcut(QKeySequence(row.key));
        if (row.command == Command::Shortcuts)
            action->setShortcuts({action->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Question)});
        connect(action, &QAction::triggered, this,
                [this, command = row.command](bool isOn) { perform(command, isOn); });
        m_actions.push_back(action);
    }
}

AppCommands::~AppCommands() = default;

QMenu* AppCommands::makeMenu(QWidget* parent)
{
    auto* menu = new QMenu(parent);
    const auto add = [this, menu](std::initializer_list<Command> commands) {
        for (const Command command : commands)
            menu->addAction(action(command));
        menu->addSeparator();
    };
    add({Command::OpenArchive, Command::NewArchive});
    add({Command::Extract, Command::ExtractToDesktop, Command::ExtractBeside});
    add({Command::ShowFirst, Command::SidePanelWindow});
    add({Command::Settings, Command::Shortcuts, Command::HowToUse});
    add({Command::Support, Command::HomePage, Command::Information});
    add({Command::CloseWindow, Command::Quit});
    connect(menu, &QMenu::aboutToShow, this, &AppCommands::setPrefsAttributes);
    return menu;
}

void AppCommands::setPrefsAttributes()
{
    action(Command::ShowFirst)->setChecked(KXPrefsDefault::listArchive());
    action(Command::SidePanelWindow)->setChecked(KXPrefsDefault::changeViewMode());
}

void AppCommands::followWindows() { qApp->installEventFilter(this); }

bool AppCommands::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        auto* window = static_cast<QWidget*>(watched);
        const bool takesCommands = window->windowType() == Qt::Window && !window->isModal();
        if (takesCommands && !window->actions().contains(m_actions.front()))
            window->addActions(QList<QAction*>(m_actions.begin(), m_actions.end()));
    }
    if (event->type() == QEvent::KeyPress && watched->isWidgetType())
        return openContextMenu(static_cast<QWidget*>(watched), *static_cast<QKeyEvent*>(event));
    return false;
}

void AppCommands::perform(Command command, bool isOn)
{
    switch (command) {
    case Command::OpenArchive:
        return m_windows.chooseArchive();
    case Command::NewArchive:
        return m_windows.chooseFilesToCompress();
    case Command::Extract:
        return m_windows.extractShownArchive() ? void() : m_delegate.extractToOthers();
    case Command::ExtractToDesktop:
        return m_delegate.extractToCurrentFolder(); // the operations' names and places differ on purpose
    case Command::ExtractBeside:
        return m_delegate.extractToDesktop();
    case Command::ShowFirst:
        return m_delegate.tooggleQuickLook(isOn);
    case Command::SidePanelWindow:
        return m_delegate.toggleChangeViewMode(isOn);
    case Command::ShowMainWindow:
        return m_delegate.toggleOpenWindow();
    case Command::Settings:
        return m_delegate.openPrefsWindow();
    case Command::HowToUse:
        return m_windows.showHowToUseWindow();
    case Command::Shortcuts:
        return m_windows.showShortcutsWindow();
    case Command::Support:
        return m_delegate.openSupportBoard();
    case Command::HomePage:
        return m_delegate.toggleHomePage();
    case Command::Information:
        return m_windows.showInfoWindow();
    case Command::CloseWindow:
        if (QWidget* window = QApplication::activeWindow())
            window->close();
        return;
    case Command::Quit:
        return m_windows.quit();
    }
}

std::vector<ShortcutRow> windowShortcuts(const AppCommands& commands)
{
    std::vector<ShortcutRow> rows;
    for (const CommandRow& row : kRows) {
        if (row.key == kNoKey)
            continue;
        QString words = commands.action(row.command)->text();
        words = withoutMnemonic(words).remove(QStringLiteral("…"));
        rows.push_back({words, commands.action(row.command)->shortcuts()});
    }
    return rows;
}

std::vector<ShortcutRow> pageShortcuts()
{
    return {
        {AppCommands::tr("Extract page"), {QKeySequence(Qt::CTRL | Qt::Key_1)}},
        {AppCommands::tr("Compress page"), {QKeySequence(Qt::CTRL | Qt::Key_2)}},
        {AppCommands::tr("Next page"), {QKeySequence(Qt::CTRL | Qt::Key_Tab)}},
        {AppCommands::tr("Preview the chosen entry"), {QKeySequence(Qt::Key_Space)}},
        {AppCommands::tr("Filter entries"), {QKeySequence(Qt::CTRL | Qt::Key_F)}},
        {AppCommands::tr("Choose everything"), {QKeySequence(Qt::CTRL | Qt::Key_A)}},
        {AppCommands::tr("Open or close a folder of the archive"),
         {QKeySequence(Qt::Key_Right), QKeySequence(Qt::Key_Left)}},
        {AppCommands::tr("Stop what runs, close a question or a preview"), {QKeySequence(Qt::Key_Escape)}},
    };
}

}
