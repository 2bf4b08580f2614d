#include "app/KXMainWinController.h"

#include "app/AppWindow.h"
#include "app/KXLeftView.h"
#include "app/PageFade.h"
#include "app/SideTable.h"

#include "widgets/ColoredView.h"
#include "widgets/FlatButton.h"
#include "widgets/Theme.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QMenu>
#include <QShortcut>
#include <QShowEvent>

namespace vantoro {
namespace {

constexpr QSize kUsualSize(900, 600);
constexpr int kSideWidth = 200;
constexpr QColor kGrey(80, 80, 80);

bool g_isTableEnabled = true;

}

/// Tells the page when it comes on and off the screen with its window.
class KXMainWinController::Window final : public AppWindow {
public:
    explicit Window(KXMainWinController& owner) : m_owner(owner) {}

protected:
    void showEvent(QShowEvent* event) override
    {
        if (m_owner.m_tempViewCter && !event->spontaneous())
            m_owner.m_tempViewCter->viewWillAppear();
        AppWindow::showEvent(event);
    }
    void hideEvent(QHideEvent* event) override
    {
        if (m_owner.m_tempViewCter && !event->spontaneous())
            m_owner.m_tempViewCter->viewWillDisappear();
        AppWindow::hideEvent(event);
    }

private:
    KXMainWinController& m_owner;
};

KXMainWinController::KXMainWinController(PageFactory makePage, Commands commands)
    : m_makePage(std::move(makePage))
    , m_commands(std::move(commands))
    , m_window(std::make_unique<Window>(*this))
    , m_leftView(new KXLeftView(m_window.get()))
    , m_baseView(new QWidget(m_window.get()))
    , m_baseLayout(new QVBoxLayout(m_baseView))
    , m_gTableView(new SideTable(m_leftView))
    , m_maskView(new ColoredView(m_gTableView))
{
    m_window->setObjectName(QStringLiteral("singlePageWindow"));
    m_window->setWindowTitle(tr("Vantoro"));
    m_baseLayout->setContentsMargins(0, 0, 0, 0);
    auto* line = new QHBoxLayout(m_window.get());
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(0);
    line->addWidget(m_leftView);
    line->addWidget(m_baseView, 1);
    buildSide();
    for (int index : {kBrowserPage, kCompressPage}) {
        auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + index)), m_window.get());
        connect(shortcut, &QShortcut::activated, this, [this, index] { tableViewDidClickedRow(index); });
    }
    for (const auto key : {Qt::CTRL | Qt::Key_Tab, Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab}) {
        auto* shortcut = new QShortcut(QKeySequence(key), m_window.get());
        connect(shortcut, &QShortcut::activated, this,
                [this] { tableViewDidClickedRow(isShowing(kBrowserPage) ? kCompressPage : kBrowserPage); });
    }
    m_window->resizeWithinScreen(kUsualSize);
    setTableViewEnable(g_isTableEnabled);
    loadTableView();
}

KXMainWinController::~KXMainWinController()
{
    m_window->hide(); // while the page can still hear of it
}

void KXMainWinController::buildSide()
{
    auto* menu = new FlatButton(tr("&Menu"), FlatButton::Kind::Quiet, m_leftView);
    menu->setGlyph(QStringLiteral("glyph-menu"));
    menu->setShortcut(Qt::Key_F10);
    attachMenu(menu, m_commands.makeMenu(menu));
    auto* help = new FlatButton(FlatButton::Kind::Quiet, m_leftView);
    help->setGlyph(QStringLiteral("glyph-help"));
    help->setAccessibleName(tr("How to use"));
    help->setToolTip(tr("How to use"));
    connect(help, &FlatButton::clicked, this, &KXMainWinController::toggleHowToUse);
    auto* settings = new FlatButton(FlatButton::Kind::Quiet, m_leftView);
    settings->setGlyph(QStringLiteral("glyph-settings"));
    settings->setAccessibleName(tr("Settings"));
    settings->setToolTip(tr("Settings"));
    connect(settings, &FlatButton::clicked, this, &KXMainWinController::toggleSettings);
    auto* tools = new QHBoxLayout;
    tools->setSpacing(theme::kSpaceXs);
    tools->addWidget(menu);
    tools->addStretch(1);
    tools->addWidget(help);
    tools->addWidget(settings);
    auto* column = new QVBoxLayout(m_leftView);
    column->setContentsMargins(theme::kSpaceM, theme::kSpaceM, theme::kSpaceM, theme::kSpaceM);
    column->setSpacing(theme::kSpaceS);
    column->addWidget(m_gTableView, 1);
    column->addLayout(tools);
    const int inside = qMax(tools->minimumSize().width(), SideTable::widthOfRows(m_window->font()));
    m_leftView->setFixedWidth(qMax(kSideWidth, inside + 2 * theme::kSpaceM)); // long words, large type
    connect(m_gTableView, &SideTable::didClickedRow, this, &KXMainWinController::tableViewDidClickedRow);
    QColor veil = theme::colors(m_window->palette()).window;
    veil.setAlphaF(0.6F);
    static_cast<ColoredView*>(m_maskView)->setColor(veil);
    m_maskView->hide();
}

QWidget* KXMainWinController::window() const { return m_window.get(); }

void KXMainWinController::showWindow() { m_window->bringToFront(); }

void KXMainWinController::hideWindow() { m_window->hide(); }

KXBaseViewCter* KXMainWinController::page(int index)
{
    auto& page = m_pages[static_cast<std::size_t>(index)];
    if (!page) {
        page = m_makePage(index, m_window.get());
        page->hide();
    }
    return page;
}

void KXMainWinController::next(int index)
{
    if (index != kBrowserPage && index != kCompressPage)
        return;
    if (!isShowing(index)) {
        PageFade::begin(m_baseView);
        kxAddSubView(page(index));
    }
    showRowOfPage(index);
    buttonCellColorWithIndex(index);
}

/// Rows two to four lead to the same page as the first: whichever of them is selected stays so.
void KXMainWinController::showRowOfPage(int index)
{
    const int row = m_gTableView->currentRow();
    if (m_gTableView->count() > 0 && SideTable::obtainMainIndexWithRow(row) != index)
        m_gTableView->selectRow(index);
}

void KXMainWinController::kxAddSubView(KXBaseViewCter* viewCter)
{
    const bool onScreen = m_window->isVisible();
    if (m_tempViewCter) {
        if (onScreen)
            m_tempViewCter->viewWillDisappear();
        m_baseLayout->removeWidget(m_tempViewCter);
        m_tempViewCter->hide();
        m_tempViewCter->setParent(m_window.get());
    }
    m_tempViewCter = viewCter;
    if (onScreen)
        viewCter->viewWillAppear();
    m_baseLayout->addWidget(viewCter);
    viewCter->show();
}

void KXMainWinController::loadTableView() { mainThreadReloadDataWithRow(0); }

void KXMainWinController::mainThreadReloadDataWithRow(int row)
{
    m_gTableView->reloadDataWithRow(row);
    next(row);
}

void KXMainWinController::tableViewDidClickedRow(int row)
{
    if (g_isTableEnabled)
        next(SideTable::obtainMainIndexWithRow(row));
}

void KXMainWinController::setTableViewEnable(bool enable)
{
    g_isTableEnabled = enable;
    m_maskView->setGeometry(m_gTableView->rect());
    m_maskView->raise();
    m_maskView->setVisible(!enable);
    m_gTableView->setFocusPolicy(enable ? Qt::StrongFocus : Qt::NoFocus);
}

void KXMainWinController::buttonCellColorWithIndex(int index)
{
    for (FlatButton* button : m_buttonArr) {
        if (button->property("tag").toInt() != index) {
            button->setLooks({{}, kGrey}, {Qt::white, kGrey});
            continue;
        }
        m_selectedButton = button;
        const auto accent = index == kCompressPage ? theme::Accent::Compress : theme::Accent::Extract;
        button->setLooks({{}, kGrey}, {theme::accent(accent), Qt::white});
    }
}

void KXMainWinController::menuQuit() { QCoreApplication::quit(); }

}
