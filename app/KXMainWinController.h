#pragma once

#include "app/MainPages.h"

#include <QObject>

#include <array>
#include <functional>
#include <memory>

class QMenu;
class QVBoxLayout;

namespace vantoro {

class AppWindow;
class FlatButton;
class KXLeftView;
class SideTable;

/// The single-page main window: a table at its side, and the page that it leads to. Hiding keeps the pages.
class KXMainWinController final : public QObject {
    Q_OBJECT
public:
    /// What the window asks of the program.
    struct Commands {
        std::function<QMenu*(QWidget* parent)> makeMenu;
        std::function<void()> toggleHowToUse;
        std::function<void()> toggleSettings;
    };
    KXMainWinController(PageFactory makePage, Commands commands);
    ~KXMainWinController() override;

    QWidget* window() const;
    void showWindow();
    void hideWindow();

    /// 0 the contents browser, 1 the compression page; others change nothing.
    void next(int index);
    void changeViewCter(int senderTag) { next(senderTag); }
    void kxAddSubView(KXBaseViewCter* viewCter);
    /// The page now shown; null before the first.
    KXBaseViewCter* tempViewCter() const { return m_tempViewCter; }
    KXBaseViewCter* page(int index);
    bool isShowing(int index) const { return m_tempViewCter && m_tempViewCter == m_pages[std::size_t(index)]; }

    void loadTableView();
    void tableViewDidClickedRow(int row);
    /// One flag for the whole program, as there is one such window: rows answer to clicks, or a mask covers them.
    void setTableViewEnable(bool enable);

    /// Page buttons, told apart by the property "tag"; none unless a layout brings some.
    std::vector<FlatButton*>& buttonArr() { return m_buttonArr; }
    void buttonCellColorWithIndex(int index);

    void menuQuit();
    void toggleHowToUse() { m_commands.toggleHowToUse(); }
    void toggleSettings() { m_commands.toggleSettings(); }

private:
    class Window;
    void buildSide();
    void mainThreadReloadDataWithRow(int row);
    void showRowOfPage(int index);

    PageFactory m_makePage;
    Commands m_commands;
    std::unique_ptr<Window> m_window;
    KXLeftView* m_leftView;
    QWidget* m_baseView;
    QVBoxLayout* m_baseLayout;
    SideTable* m_gTableView;
    QWidget* m_maskView;
    std::array<KXBaseViewCter*, 2> m_pages{}; // children of the window
    KXBaseViewCter* m_tempViewCter = nullptr;
    std::vector<FlatButton*> m_buttonArr;
    FlatButton* m_selectedButton = nullptr;
};

}
