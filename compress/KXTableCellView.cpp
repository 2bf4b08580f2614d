#include "compress/KXTableCellView.h"

#include "platform/PathNames.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/ImageView.h"
#include "widgets/SpinningIndicator.h"
#include "widgets/Theme.h"

#include <QHBoxLayout>

namespace vantoro {
namespace {

constexpr int kButtonEdge = 24;
constexpr int kLeastHeight = 31;

FlatButton* rowButton(const QString& glyph, QWidget* parent)
{
    auto* button = new FlatButton(FlatButton::Kind::Quiet, parent);
    button->setGlyph(glyph);
    button->setFixedSize(kButtonEdge, kButtonEdge);
    return button;
}

}

KXTableCellView::KXTableCellView(QWidget* parent)
    : QWidget(parent)
    , m_itemIcon(new ImageView(this))
    , m_itemName(new ElidedLabel(this))
    , m_itemSize(new ElidedLabel(this))
    , m_indicator(new SpinningIndicator(this))
    , m_previewButton(rowButton(QStringLiteral("glyph-eye"), this))
    , m_closeBut(rowButton(QStringLiteral("glyph-cancel"), this))
{
    m_itemIcon->setFixedSize(theme::kIconSmall, theme::kIconSmall);
    m_indicator->setFixedSize(theme::kIconSmall, theme::kIconSmall);
    m_indicator->setAccent(theme::Accent::Compress);
    m_itemSize->setFont(theme::font(theme::Type::Caption, font()));
    m_itemSize->setForegroundRole(QPalette::PlaceholderText);
    m_itemSize->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_itemSize->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_itemSize->setFixedWidth(m_itemSize->fontMetrics().horizontalAdvance(QStringLiteral("8888.88 MB")));
    m_previewButton->setToolTip(tr("Preview"));
    m_closeBut->setToolTip(tr("Remove from the list"));
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(theme::kSpaceM, 0, theme::kSpaceS, 0);
    line->setSpacing(theme::kSpaceS);
    line->addWidget(m_itemIcon);
    line->addWidget(m_itemName, 1);
    line->addWidget(m_itemSize);
    line->addWidget(m_indicator);
    line->addWidget(m_previewButton);
    line->addWidget(m_closeBut);
    setSizeText({});
}

int KXTableCellView::rowHeight(const QFontMetrics& metrics)
{
    return qMax(kLeastHeight, metrics.height() + theme::kSpaceM);
}

void KXTableCellView::setPath(const QString& path)
{
    m_path = path;
    const QString name = lastPathComponent(path);
    m_itemName->setText(name);
    m_itemName->setToolTip(path);
    setAccessibleName(name);
    setAccessibleDescription(path);
    m_previewButton->setAccessibleName(tr("Preview %1").arg(name));
    m_closeBut->setAccessibleName(tr("Remove %1").arg(name));
}

void KXTableCellView::setSizeText(const QString& text)
{
    m_itemSize->setText(text);
    m_itemSize->setVisible(!text.isNull());
    m_indicator->setVisible(text.isNull());
    if (text.isNull())
        m_indicator->startAnimation();
    else
        m_indicator->stopAnimation();
}

}
