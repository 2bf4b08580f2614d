#pragma once

#include <QLabel>

namespace vantoro {

/// One line of plain text that gives way: what does not fit is left out of its middle, so that both the start of a file
/// name and its ending stay readable. The full text is the tool tip and the accessible name.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);
    explicit ElidedLabel(const QString& text, QWidget* parent = nullptr);

    void setElideMode(Qt::TextElideMode mode);
    /// What is drawn at the present width.
    QString shownText() const;

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    Qt::TextElideMode m_mode = Qt::ElideMiddle;
};

/// A name for use in a sentence: one with right-to-left letters goes between the marks that keep its direction from
/// leaking into the words around it.
QString isolated(const QString& name);

}
