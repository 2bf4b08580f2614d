#include "extraction/StatusPanels.h"

#include "platform/XADSimpleUnarchiver.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/SmoothProgressBar.h"
#include "widgets/Theme.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

namespace vantoro {
namespace {

/// Puts a label into the quiet voice: smaller, in the secondary colour of whatever palette is in use.
void makeQuiet(QLabel* label)
{
    label->setFont(theme::font(theme::Type::Caption, label->font()));
    label->setForegroundRole(QPalette::PlaceholderText);
}

QString translated(const char* text, int n = -1)
{
    return QCoreApplication::translate("ProgressPanel", text, nullptr, n);
}

QString sizeText(quint64 bytes)
{
    return QLocale().formattedDataSize(static_cast<qint64>(bytes), 1, QLocale::DataSizeTraditionalFormat);
}

int roundedTo(int step, int value) { return qMax(step, (value + step / 2) / step * step); }

}

QString amountText(const XADProgress& progress)
{
    if (progress.writtenTotal > 0)
        return translated(QT_TRANSLATE_NOOP("ProgressPanel", "%1 of %2"))
            .arg(sizeText(progress.written), sizeText(progress.writtenTotal));
    if (progress.written > 0)
        return sizeText(progress.written);
    if (progress.entriesTotal > 0)
        return translated(QT_TRANSLATE_NOOP("ProgressPanel", "%1 of %2 files"))
            .arg(QLocale().toString(progress.entries), QLocale().toString(progress.entriesTotal));
    return {};
}

QString timeLeftText(int seconds)
{
    if (seconds < 8)
        return translated(QT_TRANSLATE_NOOP("ProgressPanel", "A few seconds left"));
    if (seconds < 55)
        return translated(QT_TRANSLATE_N_NOOP("ProgressPanel", "About %n seconds left"), roundedTo(5, seconds));
    if (seconds < 55 * 60)
        return translated(QT_TRANSLATE_N_NOOP("ProgressPanel", "About %n minute(s) left"), (seconds + 30) / 60);
    return translated(QT_TRANSLATE_N_NOOP("ProgressPanel", "About %n hour(s) left"), (seconds + 1800) / 3600);
}

WaitPanel::WaitPanel(QWidget* parent)
    : TaskPanel(Mark::None, parent)
    , m_waitfield(new ElidedLabel(this))
    , m_state(new ElidedLabel(tr("Waiting"), this))
{
    m_waitfield->setFont(theme::font(theme::Type::BodyStrong, font()));
    makeQuiet(m_state);
    column()->addStretch(1);
    column()->addWidget(m_waitfield);
    column()->addWidget(m_state);
    column()->addStretch(1);
    m_cancel = addRoundButton(QStringLiteral("glyph-cancel"), tr("Cancel"));
}

void WaitPanel::setText(const QString& text)
{
    m_waitfield->setText(text);
    m_cancel->setAccessibleName(tr("Cancel %1").arg(text));
}

QString WaitPanel::text() const { return m_waitfield->text(); }

ProgressPanel::ProgressPanel(QWidget* parent)
    : TaskPanel(Mark::None, parent)
    , m_actionfield(new ElidedLabel(this))
    , m_namefield(new ElidedLabel(this))
    , m_progressindicator(new SmoothProgressBar(this))
    , m_amount(new ElidedLabel(this))
    , m_timeLeft(new QLabel(this))
{
    m_actionfield->setFont(theme::font(theme::Type::BodyStrong, font()));
    for (QLabel* label : {static_cast<QLabel*>(m_namefield), static_cast<QLabel*>(m_amount), m_timeLeft})
        makeQuiet(label);
    m_amount->setElideMode(Qt::ElideRight);
    m_amount->setMinimumWidth(m_amount->fontMetrics().horizontalAdvance(QStringLiteral("888.8 MB")));
    auto* figures = new QHBoxLayout;
    figures->setSpacing(theme::kSpaceXs);
    figures->addWidget(m_amount, 1);
    figures->addWidget(m_timeLeft);
    column()->addWidget(m_actionfield);
    column()->addWidget(m_namefield);
    column()->addSpacing(theme::kSpaceXs);
    column()->addWidget(m_progressindicator);
    column()->addLayout(figures);
    m_cancel = addRoundButton(QStringLiteral("glyph-cancel"), tr("Cancel"));
    m_clock.start();
}

void ProgressPanel::setAction(const QString& text)
{
    m_actionfield->setText(text);
    m_progressindicator->setAccessibleName(text);
}

QString ProgressPanel::action() const { return m_actionfield->text(); }

void ProgressPanel::setName(const QString& name)
{
    if (!m_isStopping)
        m_namefield->setText(name);
}

QString ProgressPanel::name() const { return m_namefield->text(); }

bool ProgressPanel::isPreparing() const { return m_progressindicator->isIndeterminate(); }

void ProgressPanel::setPreparing(bool preparing)
{
    m_progressindicator->setIndeterminate(preparing);
    m_progressindicator->setFraction(0);
}

void ProgressPanel::setFraction(double fraction) { m_progressindicator->setFraction(fraction); }

double ProgressPanel::fraction() const { return m_progressindicator->fraction(); }

void ProgressPanel::setDetail(const XADProgress& progress)
{
    m_estimate.add(static_cast<double>(m_clock.elapsed()) / 1000, progress.written, progress.fraction);
    QString amount = amountText(progress);
    const auto left = m_estimate.secondsLeft();
    m_timeLeft->setText(left && !m_isStopping ? timeLeftText(*left) : QString());
    const auto fits
        = [this](const QString& text) { return m_amount->fontMetrics().horizontalAdvance(text) <= m_amount->width(); };
    if (const auto rate = m_estimate.rate(); rate && !amount.isEmpty()) {
        const QString withRate = tr("%1 — %2/s").arg(amount, sizeText(static_cast<quint64>(*rate)));
        if (fits(withRate))
            amount = withRate; // in a narrow window the rate is what can be missed
    }
    if (!fits(amount) && progress.written > 0)
        amount = sizeText(progress.written);
    m_amount->setText(amount);
}

void ProgressPanel::setStopping()
{
    m_isStopping = true;
    m_namefield->setText(tr("Stopping…"));
    m_timeLeft->clear();
}

void ProgressPanel::resumeClock() { m_estimate.pause(); }

}
