#pragma once

#include <QWidget>

class QLabel;
class QPlainTextEdit;

namespace vantoro {

/// What went wrong in a batch of extractions, entry by entry, with a button that copies it.
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
