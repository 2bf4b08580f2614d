#pragma once

#include <QIcon>
#include <QObject>

#include <memory>
#include <vector>

class QButtonGroup;
class QStackedWidget;
class QHBoxLayout;

namespace vantoro {

/// One page of a tabbed window.
class MASPreferencesViewController {
public:
    virtual ~MASPreferencesViewController() = default;
    virtual QString identifier() const = 0; ///< stable, not shown
    virtual QIcon toolbarItemImage() const = 0;
    virtual QString toolbarItemLabel() const = 0;
    /// Asked for when the page is first shown; the window takes it into its widget tree.
    virtual QWidget* view() = 0;
    virtual void viewWillAppear() {}
    virtual void viewWillDisappear() {}
};

/// A window with a row of tabs on top that shows one view controller at a time. Ctrl+1 … 9 and Ctrl+Tab change pages.
class MASPreferencesWindowController : public QObject {
    Q_OBJECT

public:
    /// The controllers are not owned and must outlive this.
    static std::unique_ptr<MASPreferencesWindowController>
    initWithViewControllers(std::vector<MASPreferencesViewController*> viewControllers, const QString& title);
    ~MASPreferencesWindowController() override;

    QWidget* window() const { return m_window.get(); }
    QStackedWidget* stack() const { return m_stack; }
    /// A widget at the trailing end of the tabs, which the window takes over.
    void setAccessoryView(QWidget* accessory);
    /// Takes no change of page while it is false.
    void setTabsEnabled(bool enabled);
    /// An index past the last page changes nothing.
    void selectControllerAtIndex(int controllerIndex);
    int indexOfSelectedController() const { return m_selected; }
    MASPreferencesViewController* selectedViewController() const;

signals:
    /// The page that was shown still is; for a transition.
    void selectionWillChange(int index);
    void selectionChanged(int index);

private:
    class Window;
    explicit MASPreferencesWindowController(std::vector<MASPreferencesViewController*> viewControllers);
    void addTab(int index);

    std::vector<MASPreferencesViewController*> m_viewControllers;
    std::unique_ptr<QWidget> m_window;
    QStackedWidget* m_stack;
    QButtonGroup* m_tabs;
    QHBoxLayout* m_row;
    bool m_areTabsEnabled = true;
    int m_selected = -1;
};

}
