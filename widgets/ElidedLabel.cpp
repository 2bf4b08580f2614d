#include "widgets/ElidedLabel.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QStyleOption>
#include <QToolTip>

#include <algorithm>

namespace vantoro {
namespace {

/// Line breaks and other control characters in a hostile name would break the line out of its row.
QString singleLine(QString text)
{
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = QChar(0xFFFD);
    }
    return text;
}

}

ElidedLabel::ElidedLabel(QWidget* parent) : ElidedLabel(QString(), parent) {}

ElidedLabel::ElidedLabel(const QString& text, QWidget* parent) : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::setElideMode(Qt::TextElideMode mode)
{
    m_mode = mode;
    update();
}

QString ElidedLabel::shownText() const
{
    return fontMetrics().elidedText(singleLine(text()), m_mode, contentsRect().width());
}

QSize ElidedLabel::minimumSizeHint() const { return {fontMetrics().averageCharWidth() * 6, fontMetrics().height()}; }

QSize ElidedLabel::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(singleLine(text())) + 1, fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const auto alignment = QStyle::visualAlignment(layoutDirection(), this->alignment());
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment) | Qt::TextSingleLine, palette(),
                          isEnabled(), shownText(), foregroundRole());
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        if (shownText() != text())
            QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), singleLine(text()), this);
        else
            QToolTip::hideText();
        return true;
    }
    return QLabel::event(event);
}

QString isolated(const QString& name)
{
    const bool mayLeak = std::any_of(name.begin(), name.end(), [](QChar c) {
        return c.direction() == QChar::DirR || c.direction() == QChar::DirAL || c.isSurrogate();
    });
    return mayLeak ? QChar(0x2068) + name + QChar(0x2069) : name;
}

}
