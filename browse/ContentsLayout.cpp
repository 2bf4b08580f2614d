// How the contents browser's page is laid out and connected.
#include "browse/ArchiveOutlineView.h"
#include "browse/ArchiveTreeModel.h"
#include "browse/ContentsPresenter.h"
#include "browse/ContentsView.h"
#include "browse/PasswordPrompt.h"
#include "browse/PreviewWindow.h"

#include "widgets/ColoredView.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/Icons.h"

#include <QLineEdit>
#include <QShortcut>
#include <QStackedLayout>
#include <QTimer>
#include <QVBoxLayout>

namespace vantoro {
namespace {

constexpr int kFilterDelayMs = 150;
constexpr int kPreviewDelayMs = 120; // rows that are passed over are not read
constexpr int kFilterWidth = 320;

}

KXArchiveContentsViewController::KXArchiveContentsViewController(BrowserHost& host, QWidget* parent)
    : KXBaseViewCter(parent)
    , m_host(host)
    , m_panels([this] { return window(); })
    , m_view(std::make_unique<View>(*this))
    , m_presenter(std::make_unique<ContentsPresenter>(*m_view, host, m_panels))
    , m_model(new ArchiveTreeModel(this))
    , m_baseView(new QStackedLayout)
    , m_dropView(new KXDropArchiveView(this))
    , m_outlineView(new ArchiveOutlineView(this))
    , m_filterField(new QLineEdit(this))
    , m_filterDelay(new QTimer(this))
    , m_statusLine(new ElidedLabel(this))
    , m_btnExtract(new FlatButton(tr("Extract"), FlatButton::Kind::Prominent, this))
    , m_btnPreview(new FlatButton(tr("Preview"), FlatButton::Kind::Plain, this))
    , m_btnClear(new FlatButton(tr("Clear"), FlatButton::Kind::Plain, this))
    , m_btnSet(new FlatButton(FlatButton::Kind::Round, this))
    , m_passWdPanel(new PasswordPrompt(this))
    , m_previewDelay(new QTimer(this))
{
    setAcceptDrops(true);
    setAccessibleName(tr("Extract"));
    m_outlineView->setArchiveModel(m_model);
    m_dropView->setDelegate(this);
    m_contentsView = makeContentsView();
    auto* frame = new QVBoxLayout(this);
    frame->setContentsMargins(theme::kSpaceL, theme::kSpaceL, theme::kSpaceL, theme::kSpaceL);
    frame->addLayout(m_baseView);
    m_baseView->addWidget(m_dropView);
    m_baseView->addWidget(m_contentsView);
    connectOutline();
    addShortcuts();
    applyType();
    setBtnEnable(false);
}

QWidget* KXArchiveContentsViewController::makeContentsView()
{
    auto* contents = new QWidget(this);
    auto* card = ColoredView::card(contents);
    auto* inside = new QVBoxLayout(card);
    inside->setContentsMargins(theme::kSpaceXs, theme::kSpaceXs, theme::kSpaceXs, theme::kSpaceXs);
    inside->addWidget(m_outlineView);
    auto* column = new QVBoxLayout(contents);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(theme::kSpaceM);
    column->addLayout(makeFilterRow());
    column->addWidget(card, 1);
    column->addWidget(m_statusLine);
    m_toolBoxView = makeToolBox();
    column->addWidget(m_toolBoxView);
    return contents;
}

QLayout* KXArchiveContentsViewController::makeFilterRow()
{
    m_filterField->setPlaceholderText(tr("Filter by name"));
    m_filterField->setAccessibleName(tr("Filter by name"));
    m_filterField->setClearButtonEnabled(true);
    m_filterField->setMaximumWidth(kFilterWidth);
    m_filterGlyph
        = m_filterField->addAction(icons::glyphIcon(QStringLiteral("glyph-search")), QLineEdit::LeadingPosition);
    m_filterGlyph->setText(tr("Filter by name"));
    m_filterDelay->setSingleShot(true);
    m_filterDelay->setInterval(kFilterDelayMs);
    auto* open = new FlatButton(tr("Open…"), FlatButton::Kind::Plain, this);
    open->setToolTip(tr("Choose another archive"));
    auto* row = new QHBoxLayout;
    row->addWidget(m_filterField, 1);
    row->addStretch(0);
    row->addWidget(open);
    connect(open, &FlatButton::clicked, this, &KXArchiveContentsViewController::toggleAddArchive);
    connect(m_filterField, &QLineEdit::textEdited, m_filterDelay, qOverload<>(&QTimer::start));
    connect(m_filterField, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text.isEmpty())
            m_presenter->setFilter({});
    });
    connect(m_filterDelay, &QTimer::timeout, this, [this] { m_presenter->setFilter(m_filterField->text()); });
    return row;
}

QWidget* KXArchiveContentsViewController::makeToolBox()
{
    auto* box = new QWidget(this);
    m_btnExtract->setAccent(theme::Accent::Extract);
    m_btnExtract->setObjectName(QStringLiteral("btnExtract"));
    m_btnExtract->setToolTip(tr("Extract what is selected, or everything (Ctrl+E)"));
    m_btnPreview->setToolTip(tr("Look at the selected file (Space)"));
    m_btnClear->setToolTip(tr("Close the archive"));
    m_btnSet->setGlyph(QStringLiteral("glyph-settings"));
    m_btnSet->setAccessibleName(tr("Settings"));
    m_btnSet->setToolTip(tr("Settings"));
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(theme::kSpaceS);
    row->addWidget(m_btnSet);
    row->addWidget(m_btnClear);
    row->addStretch(1);
    row->addWidget(m_btnPreview);
    row->addWidget(m_btnExtract);
    connect(m_btnSet, &FlatButton::clicked, this, &KXArchiveContentsViewController::toggleSettings);
    connect(m_btnClear, &FlatButton::clicked, this, &KXArchiveContentsViewController::toggleClearAll);
    connect(m_btnExtract, &FlatButton::clicked, this, &KXArchiveContentsViewController::toggleExtractSelectedItem);
    connect(m_btnPreview, &FlatButton::clicked, this, [this] { previewItem(m_outlineView->selectedIndex()); });
    return box;
}

void KXArchiveContentsViewController::connectOutline()
{
    using Outline = ArchiveOutlineView;
    using Page = KXArchiveContentsViewController;
    connect(m_dropView, &DropArea::buttonClicked, this, &Page::toggleAddArchive);
    connect(m_outlineView, &Outline::previewRequested, this, &Page::previewItem);
    connect(m_outlineView, &Outline::previewToggled, this, &Page::togglePreview);
    connect(m_outlineView, &Outline::previewDismissed, this, &Page::closePreview);
    connect(m_outlineView, &Outline::menuRequested, this, &Page::showMenu);
    connect(m_outlineView, &Outline::dragEnded, this, &Page::extractItem);
    connect(m_outlineView, &Outline::selectedRowChanged, this, [this] {
        setBtnEnable(true);
        m_previewDelay->start();
    });
    m_previewDelay->setSingleShot(true);
    m_previewDelay->setInterval(kPreviewDelayMs);
    connect(m_previewDelay, &QTimer::timeout, this, &Page::followWithPreview);
    connect(m_passWdPanel, &PasswordPrompt::answered, this,
            [this](const Secret& password) { m_presenter->togglePasswordOK(password); });
    connect(m_passWdPanel, &PasswordPrompt::cancelled, this, [this] { m_presenter->togglePasswordCancel(); });
}

PreviewWindow& KXArchiveContentsViewController::quicklookWindow()
{
    if (!m_quicklookWindow) {
        m_quicklookWindow = new PreviewWindow(this);
        connect(m_quicklookWindow, &PreviewWindow::extractRequested, this,
                &KXArchiveContentsViewController::toggleExtractSelectedItem);
        connect(m_quicklookWindow, &PreviewWindow::stepRequested, this,
                &KXArchiveContentsViewController::choosePreviewed);
        connect(m_quicklookWindow, &PreviewWindow::dismissed, m_outlineView, qOverload<>(&QWidget::setFocus));
    }
    return *m_quicklookWindow;
}

void KXArchiveContentsViewController::closePreview()
{
    if (m_quicklookWindow)
        m_quicklookWindow->dismiss();
}

void KXArchiveContentsViewController::addShortcuts()
{
    auto* find = new QShortcut(QKeySequence::Find, this);
    find->setContext(Qt::WidgetWithChildrenShortcut);
    connect(find, &QShortcut::activated, m_filterField, [this] { m_filterField->setFocus(Qt::ShortcutFocusReason); });
}

void KXArchiveContentsViewController::applyType()
{
    m_statusLine->setFont(theme::font(theme::Type::Caption, font()));
    QPalette quiet = palette();
    quiet.setColor(QPalette::WindowText, theme::colors(palette()).textSecondary);
    m_statusLine->setPalette(quiet);
}

}
