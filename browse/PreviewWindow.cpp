#include "browse/PreviewWindow.h"

#include "browse/PdfView.h"
#include "browse/PreviewContent.h"

#include "widgets/Appearance.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/ImageView.h"
#include "widgets/Theme.h"

#include <QBuffer>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMovie>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScreen>
#include <QSizeGrip>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace vantoro {
namespace {

constexpr int kWidth = 290;
constexpr int kIconEdge = 260;
constexpr int kTitleHeight = 44;

QLabel* captionLabel(ElidedLabel* label)
{
    label->setFont(theme::font(theme::Type::Caption, label->font()));
    label->setAlignment(Qt::AlignCenter);
    return label;
}

/// Where the screen has no room to the right of the main window, that window gives way to the left as far as it can.
int makeRoom(QWidget& main, int width)
{
    const QScreen* screen = main.screen();
    const int over = screen ? main.frameGeometry().right() + width - screen->availableGeometry().right() : 0;
    if (over <= 0 || main.isMaximized() || main.isFullScreen())
        return qMax(0, over);
    const int way = qMin(over, qMax(0, main.frameGeometry().left() - screen->availableGeometry().left()));
    main.move(main.x() - way, main.y());
    return over - way;
}

}

PreviewWindow::PreviewWindow(QWidget* page)
    : QWidget(page, Qt::Tool | Qt::FramelessWindowHint)
    , m_page(page)
    , m_titleBarLabel(new ElidedLabel(this))
    , m_close(new FlatButton(FlatButton::Kind::Round, this))
    , m_btnSingleExtract(new FlatButton(tr("Extract"), FlatButton::Kind::Plain, this))
    , m_views(new QStackedWidget(this))
    , m_qtImageView(new ImageView(this))
    , m_qtTextView(new QPlainTextEdit(this))
    , m_detail(new ElidedLabel(this))
{
    setObjectName(QStringLiteral("quicklookWindow"));
    setWindowTitle(tr("Preview"));
    setMinimumWidth(kWidth);
    buildViews();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(1, 0, 1, 1);
    column->setSpacing(0);
    buildTitle();
    column->addWidget(m_views, 1);
    captionLabel(m_detail);
    auto* foot = new QHBoxLayout;
    foot->setContentsMargins(theme::kSpaceL, theme::kSpaceS, 0, 0);
    foot->addWidget(m_detail, 1);
    foot->addWidget(new QSizeGrip(this), 0, Qt::AlignBottom | Qt::AlignRight);
    column->addLayout(foot);
    connect(m_close, &FlatButton::clicked, this, &PreviewWindow::dismiss);
    connect(m_btnSingleExtract, &FlatButton::clicked, this, &PreviewWindow::extractRequested);
}

PreviewWindow::~PreviewWindow() = default;

void PreviewWindow::buildTitle()
{
    m_close->setGlyph(QStringLiteral("glyph-cancel"));
    m_close->setAccessibleName(tr("Close Preview"));
    m_close->setToolTip(tr("Close Preview"));
    m_titleBarLabel->setAlignment(Qt::AlignCenter);
    m_titleBarLabel->setFont(theme::font(theme::Type::BodyStrong, font()));
    m_btnSingleExtract->setAccessibleName(tr("Extract This File"));
    auto* title = new QHBoxLayout;
    title->setContentsMargins(theme::kSpaceS, 0, theme::kSpaceS, 0);
    title->setSpacing(theme::kSpaceS);
    title->addWidget(m_close);
    title->addWidget(m_titleBarLabel, 1);
    title->addWidget(m_btnSingleExtract);
    auto* bar = new QWidget(this);
    bar->setFixedHeight(kTitleHeight);
    bar->setLayout(title);
    static_cast<QVBoxLayout*>(layout())->addWidget(bar);
}

void PreviewWindow::buildViews()
{
    m_qtImageView->setAccessibleName(tr("Picture"));
    m_qtTextView->setReadOnly(true);
    m_qtTextView->setFrameShape(QFrame::NoFrame);
    m_qtTextView->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_qtTextView->document()->setDocumentMargin(theme::kSpaceM);
    m_qtTextView->setAccessibleName(tr("Text"));
    auto* imageQTView = new QWidget(this);
    auto* imageColumn = new QVBoxLayout(imageQTView);
    imageColumn->setContentsMargins(theme::kSpaceL, theme::kSpaceL, theme::kSpaceL, theme::kSpaceL);
    imageColumn->addWidget(m_qtImageView);
    m_views->addWidget(imageQTView);
    m_views->addWidget(m_qtTextView);
}

void PreviewWindow::showContent(const PreviewContent& content, const QIcon& icon)
{
    forgetContent();
    m_titleBarLabel->setText(content.title);
    m_detail->setText(content.detail);
    m_btnSingleExtract->setVisible(true);
    switch (content.kind) {
    case PreviewContent::Kind::Image:
        showImage(content);
        break;
    case PreviewContent::Kind::Text:
        m_qtTextView->setPlainText(content.text);
        m_views->setCurrentIndex(1);
        break;
    case PreviewContent::Kind::Pdf:
        showPdf(content, icon);
        break;
    case PreviewContent::Kind::Icon:
        showIcon(icon);
        break;
    }
    initQuicklookWindow();
    if (isVisible())
        return setFocus(); // of this window: the keys go on choosing entries
    show();
    raise();
    activateWindow();
    m_views->currentWidget()->setFocus();
}

void PreviewWindow::showImage(const PreviewContent& content)
{
    m_qtImageView->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    m_qtImageView->setPixmap(QPixmap::fromImage(content.image));
    m_views->setCurrentIndex(0);
    if (content.animation.isEmpty() || Appearance::instance().reducedMotion())
        return;
    m_movie = std::make_unique<QMovie>();
    auto* file = new QBuffer(m_movie.get());
    file->setData(content.animation);
    m_movie->setDevice(file);
    connect(m_movie.get(), &QMovie::frameChanged, m_qtImageView,
            [this] { m_qtImageView->setPixmap(m_movie->currentPixmap()); });
    m_movie->start();
}

void PreviewWindow::showIcon(const QIcon& icon)
{
    m_qtImageView->setMaximumSize(kIconEdge, kIconEdge);
    m_qtImageView->setIcon(icon);
    m_views->setCurrentIndex(0);
}

void PreviewWindow::showPdf(const PreviewContent& content, const QIcon& icon)
{
    if (!m_qtPdfView) {
        m_qtPdfView = makePdfView(this);
        if (!m_qtPdfView)
            return showIcon(icon);
        m_qtPdfView->widget()->setAccessibleName(tr("Pages"));
        m_views->addWidget(m_qtPdfView->widget());
    }
    QPalette ground = palette(); // the view paints around its pages with this role
    ground.setColor(QPalette::Dark, theme::colors(ground).window);
    m_qtPdfView->widget()->setPalette(ground);
    const auto state = m_qtPdfView->show(content.pdf);
    m_views->setCurrentWidget(m_qtPdfView->widget());
    if (state == PdfView::State::Protected)
        m_detail->setText(tr("This document is protected by a password of its own."));
    else if (state == PdfView::State::Damaged)
        m_detail->setText(tr("This document is damaged."));
    else
        m_detail->setText(tr("%Ln pages", nullptr, m_qtPdfView->pageCount()) + QStringLiteral(" · ") + content.detail);
}

void PreviewWindow::forgetContent()
{
    m_movie.reset();
    m_qtImageView->setPixmap({});
    m_qtTextView->clear();
    if (m_qtPdfView)
        m_qtPdfView->forget();
}

void PreviewWindow::dismiss()
{
    if (!isVisible())
        return;
    hide();
    forgetContent();
    if (m_docked)
        m_docked->activateWindow();
    emit dismissed();
}

/// Its left edge on the main window's right edge, as tall as the page and centred on the window; over it where the
/// screen is too narrow.
void PreviewWindow::initQuicklookWindow()
{
    QWidget* main = m_page->window();
    if (m_docked != main) {
        if (m_docked)
            m_docked->removeEventFilter(this);
        m_docked = main;
        main->installEventFilter(this);
    }
    const int width = isVisible() ? this->width() : kWidth;
    const int over = isVisible() ? 0 : makeRoom(*main, width);
    const QRect frame = main->frameGeometry();
    const int height = m_page->height();
    setGeometry(frame.right() + 1 - over, frame.center().y() - height / 2, width, height);
}

void PreviewWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Space)
        dismiss();
    else if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)
        emit stepRequested(event->key() == Qt::Key_Down);
    else
        QWidget::keyPressEvent(event);
}

void PreviewWindow::closeEvent(QCloseEvent* event)
{
    dismiss();
    QWidget::closeEvent(event);
}

bool PreviewWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_docked && isVisible()) {
        if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
            initQuicklookWindow();
        else if (event->type() == QEvent::Hide)
            dismiss();
    }
    return QWidget::eventFilter(watched, event);
}

void PreviewWindow::paintEvent(QPaintEvent*)
{
    const auto colors = theme::colors(palette());
    QPainter painter(this);
    painter.fillRect(rect(), colors.surface);
    painter.setPen(colors.border);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.drawLine(0, kTitleHeight - 1, width(), kTitleHeight - 1);
}

}
