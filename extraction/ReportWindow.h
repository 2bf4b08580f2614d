#pragma once

#include "extraction/KXArchiveManageController.h"

#include <QWidget>

class QLabel;
class QPlainTextEdit;

namespace vantoro {

/// What one finished job is summed up from.
struct FinishedExtraction {
    QString archive; ///< path
    QString destination; ///< folder
    bool wasCancelled = false;
    ExtractionOutcome outcome;
};

/// One sentence on the whole batch, for a notification: what was extracted where, and whether anything went wrong.
QString summaryOf(const QList<FinishedExtraction>& batch);
/// Every refused or damaged entry under its archive, as plain text to be copied. Empty when there is nothing to report.
QString reportOf(const QList<FinishedExtraction>& batch);

/// Shows a report, with a button that copies it.
class ReportWindow : public QWidget {
    Q_OBJECT

public:
    explicit ReportWindow(QWidget* parent = nullptr);
    void setReport(const QString& summary, const QString& report);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QLabel* m_summary;
    QPlainTextEdit* m_text;
};

}
