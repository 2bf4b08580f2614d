#include "widgets/MASPreferencesWindowController.h"

#include "widgets/TabButton.h"
#include "widgets/Theme.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>
#include <QShortcut>
#include <QShowEvent>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace vantoro {

/// Tells the chosen page when it comes on and off the screen together with its window.
class MASPreferencesWindowController::Window : public QWidget {
public:
    explicit Window(MASPreferencesWindowController& owner) : m_owner(owner) {}

protected:
    void showEvent(QShowEvent* event) override
    {
        if (auto* page = m_owner.selectedViewController(); page && !event->spontaneous())
            page->viewWillAppear();
        QWidget::showEvent(event);
    }
    void hideEvent(QHideEvent* event) override
    {
        if (auto* page = m_owner.selectedViewController(); page && !event->spontaneous())
            page->viewWillDisappear();
        QWidget::hideEvent(event);
    }

private:
    MASPreferencesWindowController& m_owner;
};

std::unique_ptr<MASPreferencesWindowController>
MASPreferencesWindowController::initWithViewControllers(std::vector<MASPreferencesViewController*> viewControllers,
                                                        const QString& title)
{
    std::unique_ptr<MASPreferencesWindowController> controller(
        new MASPreferencesWindowController(std::move(viewControllers)));
    controller->m_window->setWindowTitle(title);
    return controller;
}

MASPreferencesWindowController::MASPreferencesWindowController(
    std::vector<MASPreferencesViewController*> viewControllers)
    : m_viewControllers(std::move(viewControllers))
    , m_window(std::make_unique<Window>(*this))
    , m_stack(new QStackedWidget)
    , m_tabs(new QButtonGroup(this))
    , m_row(new QHBoxLayout)
{
    m_row->setContentsMargins(theme::kSpaceL, theme::kSpaceS, theme::kSpaceL, theme::kSpaceS);
    m_row->setSpacing(theme::kSpaceS);
    m_row->addStretch(1);
    for (int index = 0; index < static_cast<int>(m_viewControllers.size()); ++index)
        addTab(index);
    m_row->addStretch(1);
    auto* column = new QVBoxLayout(m_window.get());
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(m_row);
    column->addWidget(m_stack, 1);
    // Not the click: assistive technology only toggles.
    connect(m_tabs, &QButtonGroup::idToggled, this, [this](int index, bool isOn) {
        if (isOn)
            selectControllerAtIndex(index);
    });
    const auto step = [this](int by) {
        const int count = static_cast<int>(m_viewControllers.size());
        if (count > 0)
            selectControllerAtIndex((m_selected + by + count) % count);
    };
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Tab), m_window.get()), &QShortcut::activated, this,
            [step] { step(1); });
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab), m_window.get()), &QShortcut::activated,
            this, [step] { step(-1); });
    selectControllerAtIndex(0);
}

MASPreferencesWindowController::~MASPreferencesWindowController()
{
    m_window->hide(); // while the pages can still hear of it
}

void MASPreferencesWindowController::addTab(int index)
{
    auto* page = m_viewControllers[static_cast<std::size_t>(index)];
    auto* tab = new TabButton(page->toolbarItemImage(), page->toolbarItemLabel(), m_window.get());
    tab->setObjectName(page->identifier());
    m_tabs->addButton(tab, index);
    m_row->addWidget(tab);
    if (index < 9) {
        auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + index)), m_window.get());
        connect(shortcut, &QShortcut::activated, this, [this, index] { selectControllerAtIndex(index); });
    }
}

/// The tabs stay in the middle: an empty space as wide stands before them.
void MASPreferencesWindowController::setAccessoryView(QWidget* accessory)
{
    m_row->insertSpacing(0, accessory->sizeHint().width() + theme::kSpaceS);
    m_row->addWidget(accessory);
}

void MASPreferencesWindowController::setTabsEnabled(bool enabled)
{
    m_areTabsEnabled = enabled;
    for (auto* tab : m_tabs->buttons())
        tab->setEnabled(enabled);
}

MASPreferencesViewController* MASPreferencesWindowController::selectedViewController() const
{
    return m_selected < 0 ? nullptr : m_viewControllers[static_cast<std::size_t>(m_selected)];
}

void MASPreferencesWindowController::selectControllerAtIndex(int controllerIndex)
{
    if (controllerIndex < 0 || controllerIndex >= static_cast<int>(m_viewControllers.size()))
        return;
    if (controllerIndex == m_selected || !m_areTabsEnabled)
        return;
    if (m_selected >= 0)
        emit selectionWillChange(controllerIndex);
    const bool onScreen = m_window->isVisible();
    if (auto* before = selectedViewController(); before && onScreen)
        before->viewWillDisappear();
    m_selected = controllerIndex;
    QWidget* view = selectedViewController()->view();
    if (m_stack->indexOf(view) < 0)
        m_stack->addWidget(view);
    if (onScreen)
        selectedViewController()->viewWillAppear();
    m_stack->setCurrentWidget(view);
    auto* tab = m_tabs->button(controllerIndex);
    tab->setChecked(true);
    if (const auto* focused = qobject_cast<QAbstractButton*>(m_window->focusWidget());
        focused && focused != tab && m_tabs->buttons().contains(focused))
        tab->setFocus(); // not left on the tab of a page that is gone
    emit selectionChanged(controllerIndex);
}

}
