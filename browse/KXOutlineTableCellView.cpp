#include "browse/KXOutlineTableCellView.h"

#include "browse/ArchiveTreeModel.h"

#include "widgets/Icons.h"
#include "widgets/Theme.h"

#include <QAbstractItemView>
#include <QMouseEvent>
#include <QPainter>

namespace vantoro {
namespace {

constexpr int kIconEdge = 20;
constexpr int kGlyphEdge = 16;
constexpr int kButtonEdge = 24;
constexpr int kLeastRowHeight = 30;

bool isSelected(const QStyleOptionViewItem& option) { return option.state & QStyle::State_Selected; }

QColor textColor(const QStyleOptionViewItem& option, bool isQuiet)
{
    if (isSelected(option))
        return option.palette.color(QPalette::HighlightedText);
    const auto colors = theme::colors(option.palette);
    return isQuiet ? colors.textSecondary : colors.text;
}

/// A blue folder would be lost on the blue of the selection.
QPixmap lightened(const QIcon& icon, qreal ratio)
{
    QPixmap picture = icon.pixmap(QSize(kIconEdge, kIconEdge), ratio);
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.fillRect(QRect({}, picture.size()), QColor(255, 255, 255, 150));
    return picture;
}

/// Sizes and dates read from left to right in a mirrored window, too.
QString figures(const QString& text) { return QChar(0x2066) + text + QChar(0x2069); }

bool isPreviewable(const QModelIndex& index)
{
    const auto* model = qobject_cast<const ArchiveTreeModel*>(index.model());
    return model && model->isPreviewable(index);
}

}

int KXOutlineTableCellView::rowHeight(const QFontMetrics& metrics)
{
    return qMax(kLeastRowHeight, metrics.height() + theme::kSpaceM);
}

QSize KXOutlineTableCellView::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    return {QStyledItemDelegate::sizeHint(option, index).width(), rowHeight(option.fontMetrics)};
}

void KXOutlineTableCellView::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const
{
    if (index.column() == ArchiveTreeModel::Name)
        paintName(painter, option, index);
    else if (index.column() == ArchiveTreeModel::Size)
        paintSize(painter, option, index);
    else
        paintText(painter, option, option.rect.adjusted(theme::kSpaceS, 0, -theme::kSpaceS, 0),
                  figures(index.data().toString()), true);
}

void KXOutlineTableCellView::paintName(QPainter* painter, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const
{
    const QRect row = option.rect.adjusted(theme::kSpaceXs, 0, -theme::kSpaceS, 0);
    const QRect icon
        = QStyle::alignedRect(option.direction, Qt::AlignLeft | Qt::AlignVCenter, {kIconEdge, kIconEdge}, row);
    const auto picture = index.data(Qt::DecorationRole).value<QIcon>();
    if (isSelected(option))
        painter->drawPixmap(icon, lightened(picture, painter->device()->devicePixelRatioF()));
    else
        picture.paint(painter, icon);
    QStyleOptionViewItem name = option;
    if (!index.parent().isValid())
        name.font = theme::font(theme::Type::BodyStrong, option.font);
    const int taken = kIconEdge + theme::kSpaceS;
    const QRect text = QStyle::visualRect(option.direction, row, row.adjusted(taken, 0, 0, 0));
    paintText(painter, name, text, index.data().toString(), false);
}

void KXOutlineTableCellView::paintSize(QPainter* painter, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const
{
    if (!isPreviewable(index))
        return;
    QRect text = option.rect.adjusted(theme::kSpaceS, 0, -previewButtonSpace(), 0);
    QStyleOptionViewItem size = option;
    size.displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
    paintText(painter, size, text, figures(index.data().toString()), true);

    const QRect button = previewButtonRect(option.rect);
    const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
    const bool isHot = view && (option.state & QStyle::State_MouseOver)
        && button.contains(view->viewport()->mapFromGlobal(QCursor::pos()));
    if (isHot) {
        QColor ground = textColor(option, false);
        ground.setAlphaF(0.14F);
        painter->setPen(Qt::NoPen);
        painter->setBrush(ground);
        painter->drawRoundedRect(button, theme::kRadiusControl, theme::kRadiusControl);
    }
    QRect glyph({}, QSize(kGlyphEdge, kGlyphEdge));
    glyph.moveCenter(button.center());
    painter->drawPixmap(glyph,
                        icons::glyph(QStringLiteral("glyph-eye"), textColor(option, !isHot), kGlyphEdge,
                                     painter->device()->devicePixelRatioF()));
}

void KXOutlineTableCellView::paintText(QPainter* painter, const QStyleOptionViewItem& option, const QRect& rect,
                                       const QString& text, bool isQuiet) const
{
    painter->setFont(option.font);
    painter->setPen(textColor(option, isQuiet));
    const QString shown = QFontMetrics(option.font).elidedText(text, Qt::ElideMiddle, rect.width());
    painter->drawText(rect, static_cast<int>(option.displayAlignment | Qt::TextSingleLine), shown);
}

QRect KXOutlineTableCellView::previewButtonRect(const QRect& cell)
{
    QRect button(0, 0, kButtonEdge, kButtonEdge);
    button.moveCenter(cell.center());
    button.moveRight(cell.right() - theme::kSpaceS);
    return button;
}

int KXOutlineTableCellView::previewButtonSpace() { return kButtonEdge + 2 * theme::kSpaceS; }

bool KXOutlineTableCellView::editorEvent(QEvent* event, QAbstractItemModel*, const QStyleOptionViewItem& option,
                                         const QModelIndex& index)
{
    if (index.column() != ArchiveTreeModel::Size || !isPreviewable(index)
        || event->type() != QEvent::MouseButtonRelease)
        return false;
    const auto* mouse = static_cast<const QMouseEvent*>(event);
    if (mouse->button() != Qt::LeftButton || !previewButtonRect(option.rect).contains(mouse->position().toPoint()))
        return false;
    emit previewItem(index);
    return true;
}

}
