#include "extraction/TaskPanel.h"

#include "widgets/FlatButton.h"
#include "widgets/Icons.h"
#include "widgets/Theme.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

namespace vantoro {
namespace {

constexpr int kMarkEdge = 18;

QString glyphOf(TaskPanel::Mark mark)
{
    switch (mark) {
    case TaskPanel::Mark::Password:
        return QStringLiteral("glyph-lock");
    case TaskPanel::Mark::Encoding:
        return QStringLiteral("glyph-text");
    case TaskPanel::Mark::Warning:
        return QStringLiteral("glyph-warning");
    case TaskPanel::Mark::Error:
        return QStringLiteral("glyph-error");
    case TaskPanel::Mark::None:
        break;
    }
    return {};
}

}

/// The archive's icon with a small round mark at its lower corner.
class TaskPanel::IconWell : public QWidget {
public:
    IconWell(Mark mark, QWidget* parent) : QWidget(parent), m_mark(mark)
    {
        setFixedSize(theme::kIconRow + 4, theme::kIconRow + 4);
    }
    void setIcon(const QIcon& icon)
    {
        m_icon = icon;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        m_icon.paint(&painter, QRect(2, 0, theme::kIconRow, theme::kIconRow));
        if (m_mark == Mark::None)
            return;
        painter.setRenderHint(QPainter::Antialiasing);
        const auto colors = theme::colors(palette());
        const QColor fill = m_mark == Mark::Error ? colors.danger
            : m_mark == Mark::Warning             ? colors.warning
                                                  : theme::accentFill(theme::Accent::Selection);
        const QRect spot(width() - kMarkEdge - 2, height() - kMarkEdge - 2, kMarkEdge, kMarkEdge);
        painter.setPen(QPen(colors.surface, 2));
        painter.setBrush(fill);
        painter.drawEllipse(spot.adjusted(-1, -1, 1, 1));
        const int edge = kMarkEdge - 8;
        painter.drawPixmap(spot.left() + 4, spot.top() + 4,
                           icons::glyph(glyphOf(m_mark), theme::textOn(fill), edge, devicePixelRatioF()));
    }

private:
    Mark m_mark;
    QIcon m_icon;
};

TaskPanel::TaskPanel(Mark mark, QWidget* parent)
    : QWidget(parent)
    , m_icon(new IconWell(mark, this))
    , m_column(new QVBoxLayout)
{
    hide(); // until the row displays it
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(theme::kSpaceL, theme::kSpaceM, theme::kSpaceL, theme::kSpaceM);
    line->setSpacing(theme::kSpaceM);
    line->addWidget(m_icon, 0, mark == Mark::None ? Qt::AlignVCenter : Qt::AlignTop);
    m_column->setSpacing(theme::kSpaceXs);
    line->addLayout(m_column, 1);
}

void TaskPanel::setIcon(const QIcon& icon) { m_icon->setIcon(icon); }

void TaskPanel::setLeastHeight(int height) { m_leastHeight = height; }

int TaskPanel::heightAtWidth(int width) const
{
    const int wanted
        = layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width) : layout()->totalSizeHint().height();
    return qMax(m_leastHeight, wanted);
}

void TaskPanel::announce()
{
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QLabel* TaskPanel::addMessage()
{
    auto* label = new QLabel(this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    m_column->addWidget(label);
    return label;
}

FlatButton* TaskPanel::addRoundButton(const QString& glyph, const QString& name)
{
    auto* button = new FlatButton(FlatButton::Kind::Round, this);
    button->setGlyph(glyph);
    button->setAccessibleName(name);
    button->setToolTip(name);
    layout()->addWidget(button);
    layout()->setAlignment(button, Qt::AlignVCenter);
    return button;
}

}
