#include "compress/PreviewPanel.h"

#include "compress/FileIcon.h"
#include "compress/FilePreview.h"

#include "platform/Workspace.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/ImageView.h"
#include "widgets/Theme.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace vantoro {
namespace {

constexpr QSize kUsualSize(480, 420);
constexpr int kFactsIconEdge = 96;

QPointer<PreviewPanel> g_panel; // main thread

}

PreviewPanel& PreviewPanel::shared()
{
    if (!g_panel)
        g_panel = new PreviewPanel;
    return *g_panel;
}

bool PreviewPanel::exists() { return !g_panel.isNull(); }

PreviewPanel::PreviewPanel()
    : QWidget(nullptr, Qt::Dialog)
    , m_pages(new QStackedWidget(this))
    , m_picture(new ImageView(m_pages))
    , m_text(new QPlainTextEdit(m_pages))
    , m_facts(new QWidget(m_pages))
    , m_icon(new ImageView(m_facts))
    , m_factsText(new QLabel(m_facts))
    , m_name(new ElidedLabel(this))
    , m_open(new FlatButton(tr("Open"), FlatButton::Kind::Plain, this))
{
    setWindowTitle(tr("Preview"));
    setAttribute(Qt::WA_QuitOnClose, false);
    m_text->setReadOnly(true);
    m_text->setFrameShape(QFrame::NoFrame);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_text->document()->setDocumentMargin(theme::kSpaceM);
    m_text->setAccessibleName(tr("Contents"));
    m_icon->setFixedSize(kFactsIconEdge, kFactsIconEdge);
    m_factsText->setAlignment(Qt::AlignCenter);
    m_factsText->setForegroundRole(QPalette::PlaceholderText);
    m_name->setFont(theme::font(theme::Type::BodyStrong, font()));

    auto* facts = new QVBoxLayout(m_facts);
    facts->setSpacing(theme::kSpaceL);
    facts->addStretch(1);
    facts->addWidget(m_icon, 0, Qt::AlignHCenter);
    facts->addWidget(m_factsText);
    facts->addStretch(1);
    for (QWidget* page :
         {static_cast<QWidget*>(m_facts), static_cast<QWidget*>(m_picture), static_cast<QWidget*>(m_text)})
        m_pages->addWidget(page);
    auto* line = new QHBoxLayout;
    line->setSpacing(theme::kSpaceM);
    line->addWidget(m_name, 1);
    line->addWidget(m_open);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(theme::kSpaceL, theme::kSpaceL, theme::kSpaceL, theme::kSpaceL);
    column->setSpacing(theme::kSpaceM);
    column->addLayout(line);
    column->addWidget(m_pages, 1);
    resize(kUsualSize);
    connect(m_open, &FlatButton::clicked, this, [this] { Workspace::shared().openFile(m_shown); });
}

void PreviewPanel::setDataSource(QObject* owner, std::function<QString()> path)
{
    if (m_owner)
        disconnect(m_owner, &QObject::destroyed, this, nullptr);
    m_owner = owner;
    m_path = std::move(path);
    connect(owner, &QObject::destroyed, this, [this] {
        m_owner = nullptr;
        m_path = {};
        hide();
    });
}

void PreviewPanel::toggle(QWidget* beside)
{
    if (isVisible()) {
        hide();
        return;
    }
    reloadData();
    if (beside)
        move(beside->window()->frameGeometry().center() - rect().center());
    QWidget::show();
    raise();
    activateWindow();
}

void PreviewPanel::reloadData() { show(m_path ? m_path() : QString()); }

void PreviewPanel::show(const QString& path)
{
    m_shown = path;
    const FilePreview preview = FilePreview::of(path);
    const bool isThere = preview.kind != FilePreview::Kind::Nothing;
    m_open->setVisible(isThere);
    m_name->setText(isThere ? preview.name : tr("Nothing to show"));
    m_name->setToolTip(path);
    m_factsText->setText(preview.facts);
    m_icon->setIcon(isThere ? fileIcon(path) : QIcon());
    m_picture->setPixmap(QPixmap::fromImage(preview.image));
    m_picture->setAccessibleName(preview.name);
    m_text->setPlainText(preview.text);
    m_pages->setCurrentIndex(preview.kind == FilePreview::Kind::Image      ? 1
                                 : preview.kind == FilePreview::Kind::Text ? 2
                                                                           : 0);
}

void PreviewPanel::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Space || event->matches(QKeySequence::Close))
        hide();
    else
        QWidget::keyPressEvent(event);
}

}
