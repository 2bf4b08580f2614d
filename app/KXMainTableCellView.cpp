#include "app/KXMainTableCellView.h"

#include "app/MainPages.h"

#include "widgets/ImageView.h"
#include "widgets/Theme.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>

namespace vantoro {

KXMainTableCellView::KXMainTableCellView(int selectedIndex, QWidget* parent)
    : QWidget(parent)
    , m_imageIcon(new ImageView(this))
    , m_groupNameField(new QLabel(pageTitle(selectedIndex), this))
    , m_selectedIndex(selectedIndex)
{
    setAttribute(Qt::WA_TransparentForMouseEvents); // the table takes the clicks
    m_imageIcon->setIcon(pageRowImage(selectedIndex));
    m_imageIcon->setFixedSize(theme::kIconMedium, theme::kIconMedium);
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(theme::kSpaceM, 0, theme::kSpaceM, 0);
    line->setSpacing(theme::kSpaceM);
    line->addWidget(m_imageIcon);
    line->addWidget(m_groupNameField, 1);
    applyColors();
}

QString KXMainTableCellView::groupName() const { return m_groupNameField->text(); }

void KXMainTableCellView::setSelected(bool selected)
{
    m_isSelected = selected;
    applyColors();
}

void KXMainTableCellView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        applyColors();
}

void KXMainTableCellView::applyColors()
{
    QPalette own = m_groupNameField->palette();
    const QColor color
        = m_isSelected ? theme::textOn(theme::accent(theme::Accent::Selection)) : theme::colors(palette()).text;
    if (own.color(QPalette::WindowText) != color) {
        own.setColor(QPalette::WindowText, color);
        m_groupNameField->setPalette(own);
    }
    m_groupNameField->setFont(theme::font(m_isSelected ? theme::Type::BodyStrong : theme::Type::Body, font()));
}

}
