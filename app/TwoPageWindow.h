#pragma once

#include "app/MainPages.h"

#include "widgets/MASPreferencesWindowController.h"

#include <array>

class QMenu;

namespace vantoro {

/// The main window with a tab for each page. A page is made when its tab is first chosen.
class TwoPageWindow final : public QObject {
    Q_OBJECT
public:
    TwoPageWindow(PageFactory makePage, const std::function<QMenu*(QWidget* parent)>& makeMenu);
    ~TwoPageWindow() override;

    QWidget* window() const { return m_controller->window(); }
    /// In front, with this page.
    void showWindow(int index);
    int shownPage() const { return m_controller->indexOfSelectedController(); }
    KXBaseViewCter* page(int index);
    void setTabsEnabled(bool enabled) { m_controller->setTabsEnabled(enabled); }

private:
    /// Stands for a page until it is needed.
    class Tab final : public MASPreferencesViewController {
    public:
        Tab(TwoPageWindow& owner, int index) : m_owner(owner), m_index(index) {}
        QString identifier() const override;
        QIcon toolbarItemImage() const override { return pageImage(m_index); }
        QString toolbarItemLabel() const override { return pageTitle(m_index); }
        QWidget* view() override { return m_owner.page(m_index); }
        void viewWillAppear() override { m_owner.page(m_index)->viewWillAppear(); }
        void viewWillDisappear() override { m_owner.page(m_index)->viewWillDisappear(); }

    private:
        TwoPageWindow& m_owner;
        int m_index;
    };

    PageFactory m_makePage;
    std::array<KXBaseViewCter*, 2> m_pages{}; // the window's, once it shows them
    Tab m_browserTab{*this, kBrowserPage};
    Tab m_compressTab{*this, kCompressPage};
    std::unique_ptr<MASPreferencesWindowController> m_controller;
};

}
