#include "extraction/ReportWindow.h"

#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/Icons.h"
#include "widgets/Theme.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>

#include <algorithm>

namespace vantoro {
namespace {

QString translated(const char* text, int n = -1)
{
    return QCoreApplication::translate("ReportWindow", text, nullptr, n);
}

QString nameOf(const QString& path) { return isolated(QFileInfo(path).fileName()); }

/// Where the results went: one folder's name, or how many folders.
QString placeOf(const QList<FinishedExtraction>& batch)
{
    QStringList folders;
    for (const auto& job : batch)
        folders << job.destination;
    folders.removeDuplicates();
    return folders.size() == 1 ? nameOf(folders.first()) : QString();
}

}

QString summaryOf(const QList<FinishedExtraction>& batch)
{
    QList<FinishedExtraction> done;
    std::copy_if(batch.begin(), batch.end(), std::back_inserter(done),
                 [](const FinishedExtraction& job) { return job.outcome.succeeded; });
    QStringList sentences;
    const QString place = placeOf(done);
    if (done.size() == 1)
        sentences << translated(QT_TRANSLATE_NOOP("ReportWindow", "\"%1\" was extracted to \"%2\"."))
                         .arg(nameOf(done.first().archive), place);
    else if (!done.isEmpty() && !place.isEmpty())
        sentences << translated(QT_TRANSLATE_N_NOOP("ReportWindow", "%n archives were extracted to \"%1\"."),
                                static_cast<int>(done.size()))
                         .arg(place);
    else if (!done.isEmpty())
        sentences << translated(QT_TRANSLATE_N_NOOP("ReportWindow", "%n archives were extracted."),
                                static_cast<int>(done.size()));
    int failed = 0;
    int problems = 0;
    for (const auto& job : batch) {
        failed += !job.outcome.succeeded && !job.wasCancelled ? 1 : 0;
        problems += static_cast<int>(job.outcome.problems.size());
    }
    if (failed > 0)
        sentences << translated(QT_TRANSLATE_N_NOOP("ReportWindow", "%n archive(s) could not be extracted."), failed);
    if (problems > 0)
        sentences << translated(QT_TRANSLATE_N_NOOP("ReportWindow", "%n file(s) were refused or damaged."), problems);
    return sentences.join(QLatin1Char(' '));
}

QString reportOf(const QList<FinishedExtraction>& batch)
{
    QStringList lines;
    for (const auto& job : batch) {
        const QStringList entries = job.outcome.problems + job.outcome.notes;
        if (entries.isEmpty())
            continue;
        if (!lines.isEmpty())
            lines << QString();
        lines << job.archive;
        for (const QString& entry : entries)
            lines << QStringLiteral("  • ") + entry;
    }
    return lines.join(QLatin1Char('\n'));
}

ReportWindow::ReportWindow(QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_summary(new QLabel(this))
    , m_text(new QPlainTextEdit(this))
{
    setWindowTitle(tr("Report"));
    setWindowIcon(icons::application());
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    m_summary->setFont(theme::font(theme::Type::BodyStrong, font()));
    m_text->setReadOnly(true);
    m_text->setAccessibleName(tr("Files that were refused or damaged"));
    m_text->setFrameShape(QFrame::NoFrame);
    m_text->setTabChangesFocus(true);
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
    column->addWidget(m_text, 1);
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
