#include "app/TwoPageWindow.h"

#include "app/AppWindow.h"
#include "app/PageFade.h"

#include "widgets/FlatButton.h"

#include <QMenu>
#include <QStackedWidget>

namespace vantoro {
namespace {

constexpr QSize kUsualSize(760, 560);

}

TwoPageWindow::TwoPageWindow(PageFactory makePage, const std::function<QMenu*(QWidget*)>& makeMenu)
    : m_makePage(std::move(makePage))
    , m_controller(
          MASPreferencesWindowController::initWithViewControllers({&m_browserTab, &m_compressTab}, tr("Vantoro")))
{
    window()->setObjectName(QStringLiteral("twoPageWindow"));
    auto* menu = new FlatButton(FlatButton::Kind::Quiet, window());
    menu->setGlyph(QStringLiteral("glyph-menu"));
    menu->setAccessibleName(tr("Menu"));
    menu->setToolTip(tr("Menu"));
    menu->setShortcut(Qt::Key_F10);
    attachMenu(menu, makeMenu(menu));
    m_controller->setAccessoryView(menu);
    connect(m_controller.get(), &MASPreferencesWindowController::selectionWillChange, this,
            [this] { PageFade::begin(m_controller->stack()); });
    window()->resize(sizeWithinScreen(*window(), kUsualSize));
}

TwoPageWindow::~TwoPageWindow() = default;

void TwoPageWindow::showWindow(int index)
{
    m_controller->selectControllerAtIndex(index);
    bringWindowToFront(*window());
}

KXBaseViewCter* TwoPageWindow::page(int index)
{
    auto& page = m_pages[static_cast<std::size_t>(index)];
    if (!page)
        page = m_makePage(index, nullptr);
    return page;
}

QString TwoPageWindow::Tab::identifier() const
{
    return m_index == kCompressPage ? QStringLiteral("Compress") : QStringLiteral("Extract");
}

}
