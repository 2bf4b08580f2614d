#include "app/ExtractionReporter.h"

#include "extraction/ReportWindow.h"
#include "platform/Workspace.h"

namespace vantoro {
namespace {
const QString kShow = QStringLiteral("default");
const QString kReport = QStringLiteral("report");
}

ExtractionReporter::ExtractionReporter(const QString& applicationId) : m_notifications(applicationId)
{
    connect(&m_notifications, &Notifications::actionInvoked, this, [this](const QString& key, const QString& token) {
        if (!token.isEmpty())
            qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
        actionInvoked(key);
        qunsetenv("XDG_ACTIVATION_TOKEN");
    });
}

ExtractionReporter::~ExtractionReporter() = default;

void ExtractionReporter::extractionsFinished(const std::vector<ExtractionOutcome>& outcomes, bool windowWasActive)
{
    const auto summary = summarize(outcomes);
    if (!summary || windowWasActive)
        return;
    m_last = *summary;
    std::vector<Notifications::Button> buttons;
    if (!m_last.item.isEmpty())
        buttons.push_back({kShow, tr("Show in Folder")});
    if (!m_last.report.isEmpty())
        buttons.push_back({kReport, tr("Show Report")});
    m_notifications.notify(m_last.title, m_last.body, buttons, m_last.item.isEmpty());
}

void ExtractionReporter::actionInvoked(const QString& key)
{
    if (key == kReport || m_last.item.isEmpty())
        showReport();
    else
        Workspace::shared().selectFile(m_last.item);
}

void ExtractionReporter::showReport()
{
    if (!m_reportWindow)
        m_reportWindow = std::make_unique<ReportWindow>();
    m_reportWindow->setReport(m_last.title, m_last.report);
    m_reportWindow->show();
    m_reportWindow->raise();
    m_reportWindow->activateWindow();
}

}
