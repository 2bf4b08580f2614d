#include "browse/EncodingItemDelegate.h"

#include "widgets/Theme.h"

#include <QApplication>
#include <QPainter>

namespace vantoro {

bool EncodingItemDelegate::isSeparator(const QModelIndex& index)
{
    return index.data(Qt::AccessibleDescriptionRole).toString() == QLatin1String("separator"); // set by QComboBox
}

void EncodingItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto colors = theme::colors(option.palette);
    if (isSeparator(index)) {
        painter->fillRect(QRect(option.rect.left(), option.rect.center().y(), option.rect.width(), 1), colors.border);
        return;
    }
    QStyleOptionViewItem frame(option);
    initStyleOption(&frame, index);
    frame.text.clear();
    const QStyle* style = frame.widget ? frame.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &frame, painter, frame.widget);

    const bool selected = option.state & QStyle::State_Selected;
    const QRect line = option.rect.adjusted(theme::kSpaceM, 0, -theme::kSpaceM, 0);
    const QString sample = index.data(SampleRole).toString();
    painter->save();
    painter->setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawText(QStyle::visualRect(option.direction, option.rect, line), Qt::AlignVCenter | Qt::AlignLeading,
                      index.data(NameRole).toString());
    if (!sample.isEmpty()) {
        const QFont small = theme::font(theme::Type::Caption, option.font);
        painter->setFont(small);
        if (!selected)
            painter->setPen(colors.textSecondary);
        const QRect rest = line.adjusted(m_sampleEdge, 0, 0, 0);
        painter->drawText(QStyle::visualRect(option.direction, option.rect, rest), Qt::AlignVCenter | Qt::AlignLeading,
                          QFontMetrics(small).elidedText(sample, Qt::ElideMiddle, rest.width()));
    }
    painter->restore();
}

QSize EncodingItemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QFontMetrics metrics(option.font);
    if (isSeparator(index))
        return {0, theme::kSpaceS};
    int width = metrics.horizontalAdvance(index.data(NameRole).toString());
    const QString sample = index.data(SampleRole).toString();
    if (!sample.isEmpty())
        width = m_sampleEdge + QFontMetrics(theme::font(theme::Type::Caption, option.font)).horizontalAdvance(sample);
    return {width + 2 * theme::kSpaceM, metrics.height() + theme::kSpaceS};
}

}
