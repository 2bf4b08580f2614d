#include "app/SideTable.h"

#include "app/KXMainTableCellView.h"
#include "app/MainPages.h"

#include "widgets/Style.h"
#include "widgets/Theme.h"

#include <QPainter>
#include <QStyledItemDelegate>

namespace vantoro {
namespace {

/// A row's ground: a rounded rectangle in the selection's colour. What stands on it is the cell's.
class RowGround final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex&) const override
    {
        const auto colors = theme::colors(option.palette);
        QColor ground = Qt::transparent;
        if (option.state & QStyle::State_Selected)
            ground = theme::accent(theme::Accent::Selection);
        else if (option.state & QStyle::State_MouseOver)
            ground = colors.hover;
        const QRect box = option.rect.adjusted(0, 1, 0, -1);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(ground);
        painter->drawRoundedRect(box, theme::kRadiusControl, theme::kRadiusControl);
        painter->restore();
        if ((option.state & QStyle::State_HasFocus) && (option.state & QStyle::State_KeyboardFocusChange)) {
            painter->save();
            painter->setRenderHint(QPainter::Antialiasing);
            painter->setPen(QPen(colors.text, 2));
            painter->drawRoundedRect(QRectF(box).adjusted(1, 1, -1, -1), theme::kRadiusControl - 1,
                                     theme::kRadiusControl - 1);
            painter->restore();
        }
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override
    {
        return {0, qMax(option.fontMetrics.height(), theme::kIconMedium) + 2 * theme::kSpaceS};
    }
};

}

SideTable::SideTable(QWidget* parent) : QListWidget(parent)
{
    setAlternatingRowColors(false);
    setItemDelegate(new RowGround(this));
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMouseTracking(true);
    setAccessibleName(tr("Pages"));
    QPalette clear = palette();
    clear.setColor(QPalette::Base, Qt::transparent);
    setPalette(clear);
    viewport()->setAutoFillBackground(false);
    connect(this, &QListWidget::currentRowChanged, this, &SideTable::showSelection);
    connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
        if (!m_isReloading && row >= 0)
            emit didClickedRow(row);
    });
    connect(this, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* clicked) { emit didClickedRow(row(clicked)); });
}

int SideTable::widthOfRows(const QFont& font)
{
    const QFontMetrics strong(theme::font(theme::Type::BodyStrong, font)); // of the selected row
    const int words
        = qMax(strong.horizontalAdvance(pageTitle(kBrowserPage)), strong.horizontalAdvance(pageTitle(kCompressPage)));
    return words + theme::kIconMedium + 4 * theme::kSpaceM;
}

void SideTable::reloadDataWithRow(int row)
{
    m_isReloading = true;
    clear();
    for (int i = 0; i < kRows; ++i) {
        const int index = obtainMainIndexWithRow(i);
        auto* item = new QListWidgetItem(this);
        item->setData(Qt::AccessibleTextRole, pageTitle(index));
        setItemWidget(item, new KXMainTableCellView(index));
    }
    setCurrentRow(row);
    m_isReloading = false;
}

void SideTable::selectRow(int row)
{
    m_isReloading = true;
    setCurrentRow(row);
    m_isReloading = false;
}

KXMainTableCellView* SideTable::cell(int row) const
{
    return qobject_cast<KXMainTableCellView*>(itemWidget(item(row)));
}

void SideTable::showSelection(int row)
{
    for (int i = 0; i < count(); ++i) {
        if (auto* view = cell(i))
            view->setSelected(i == row);
    }
}

}
