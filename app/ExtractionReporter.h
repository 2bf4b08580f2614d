#pragma once

#include "app/ExtractionSummary.h"

#include "platform/Notifications.h"

#include <QPointer>

namespace vantoro {

class ReportWindow;

/// Says once, on the desktop, what a queue of extractions came to, when nobody is looking at its window.
class ExtractionReporter final : public QObject {
    Q_OBJECT
public:
    explicit ExtractionReporter(const QString& applicationId);
    ~ExtractionReporter() override;

    void extractionsFinished(const std::vector<ExtractionOutcome>& outcomes, bool windowWasActive);

private:
    void actionInvoked(const QString& key);
    void showReport();

    Notifications m_notifications;
    ExtractionSummary m_last;
    std::unique_ptr<ReportWindow> m_reportWindow;
};

}
