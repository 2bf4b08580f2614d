#include "extraction/ReportWindow.h"

#include "widgets/ColoredView.h"
#include "widgets/FlatButton.h"
#include "widgets/Theme.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>

namespace vantoro {
ReportWindow::ReportWindow(QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_summary(new QLabel(this))
    , m_text(new QPlainTextEdit(this))
{
    setWindowTitle(tr("Report"));
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    m_summary->setFont(theme::font(theme::Type::BodyStrong, font()));
    m_text->setReadOnly(true);
    m_text->setAccessibleName(tr("Files that were refused or damaged"));
    m_text->setFrameShape(QFrame::NoFrame);
    m_text->setTabChangesFocus(true);
    auto* card = ColoredView::card(this);
    auto* inside = new QVBoxLayout(card);
    inside->setContentsMargins(theme::kSpaceS, theme::kSpaceS, theme::kSpaceXs, theme::kSpaceS);
    inside->addWidget(m_text);
    auto* copy = new FlatButton(tr("&Copy Report"), FlatButton::Kind::Plain, this);
    copy->setGlyph(QStringLiteral("glyph-copy"));
    auto* close = new FlatButton(tr("Close"), FlatButton::Kind::Prominent, this);
    connect(copy, &FlatButton::clicked, this, [this] {
        QGuiApplication::clipboard()->setText(m_summary->text() + QStringLiteral("\n\n") + m_text->toPlainText());
    });
    connect(close, &FlatButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(copy);
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(theme::kSpaceL, theme::kSpaceL, theme::kSpaceL, theme::kSpaceL);
    column->setSpacing(theme::kSpaceM);
    column->addWidget(m_summary);
    column->addWidget(card, 1);
    column->addLayout(buttons);
    resize(560, 360);
    close->setFocus();
}

void ReportWindow::setReport(const QString& summary, const QString& report)
{
    m_summary->setText(summary);
    m_text->setPlainText(report);
}

void ReportWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

}
