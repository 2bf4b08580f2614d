// How the page is put together; what it does is in KXPackViewController.cpp.
#include "compress/KXPackViewController.h"

#include "compress/PackKinds.h"
#include "compress/PackTable.h"
#include "compress/StrengthBar.h"

#include "browse/EncodingItemDelegate.h"
#include "widgets/ColoredView.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/FlowLayout.h"
#include "widgets/PasswordField.h"
#include "widgets/Translation.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>

#include <QVBoxLayout>

namespace vantoro {
namespace {

constexpr int kPasswordWidth = 200;

QLabel* caption(const QString& text, QWidget* buddy, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setFont(theme::font(theme::Type::Caption, label->font()));
    label->setForegroundRole(QPalette::PlaceholderText);
    label->setBuddy(buddy);
    label->setAccessibleName(withoutMnemonic(text));
    return label;
}

}

void KXPackViewController::buildContentsView()
{
    m_count = new QLabel(m_contentsView);
    m_count->setFont(theme::font(theme::Type::BodyStrong, font()));
    m_target = new ElidedLabel(m_contentsView);
    m_target->setForegroundRole(QPalette::PlaceholderText);
    m_btnAdd = new FlatButton(tr("Add…"), FlatButton::Kind::Quiet, m_contentsView);
    m_btnAdd->setGlyph(QStringLiteral("glyph-plus"));
    m_btnClear = new FlatButton(tr("Clear"), FlatButton::Kind::Quiet, m_contentsView);
    m_btnClear->setGlyph(QStringLiteral("glyph-trash"));
    m_arcTableView = new PackTable(m_contentsView);
    buildToolBox();

    auto* header = new QHBoxLayout;
    header->setSpacing(theme::kSpaceXs);
    header->addWidget(m_count);
    header->addSpacing(theme::kSpaceXs);
    header->addWidget(m_target, 1);
    header->addWidget(m_btnAdd);
    header->addWidget(m_btnClear);
    auto* contents = new QVBoxLayout(m_contentsView);
    contents->setContentsMargins(0, 0, 0, 0);
    contents->setSpacing(theme::kSpaceS);
    contents->addLayout(header);
    contents->addWidget(m_arcTableView, 1);
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(theme::kSpaceL, theme::kSpaceL, theme::kSpaceL, theme::kSpaceL);
    page->setSpacing(theme::kSpaceM);
    page->addWidget(m_dropView, 1);
    page->addWidget(m_contentsView, 1);
    page->addWidget(m_toolBoxView);
}

void KXPackViewController::buildToolBox()
{
    m_toolBoxView = new ColoredView(this);
    m_toolBoxView->setShaded(true);
    m_toolBoxView->setRadius(theme::kRadiusCard);
    m_btnKindPopButton = new QComboBox(m_toolBoxView);
    m_btnKindPopButton->setAccessibleName(tr("Format"));
    m_btnKindPopButton->setMaxVisibleItems(24);
    fillKindMenu(m_btnKindPopButton);
    buildPasswordView();
    m_btnOptions = new FlatButton(tr("Options…"), FlatButton::Kind::Quiet, m_toolBoxView);
    m_btnExtract = new FlatButton(tr("Compress"), FlatButton::Kind::Prominent, m_toolBoxView);
    m_btnExtract->setAccent(theme::Accent::Compress);
    m_btnExtract->setGlyph(QStringLiteral("glyph-compress"));

    auto* kind = new QVBoxLayout;
    kind->setSpacing(theme::kSpaceXs);
    kind->addWidget(caption(tr("&Format"), m_btnKindPopButton, m_toolBoxView));
    kind->addWidget(m_btnKindPopButton);
    auto* line = new QHBoxLayout(m_toolBoxView);
    line->setContentsMargins(theme::kSpaceL, theme::kSpaceM, theme::kSpaceL, theme::kSpaceL);
    line->setSpacing(theme::kSpaceM);
    line->addLayout(kind);
    line->setAlignment(kind, Qt::AlignBottom);
    line->addWidget(m_encryptView, 0, Qt::AlignBottom);
    auto* buttons = new FlowLayout(theme::kSpaceM); // one above the other where they do not fit side by side
    buttons->addWidget(m_btnOptions);
    buttons->addWidget(m_btnExtract);
    auto* below = new QVBoxLayout;
    below->addStretch(1);
    below->addLayout(buttons);
    line->addLayout(below, 1);
}

void KXPackViewController::buildPasswordView()
{
    m_encryptView = new QWidget(m_toolBoxView);
    m_passwordTextField = new PasswordField(m_encryptView);
    m_passwordTextField->setFixedWidth(kPasswordWidth);
    m_passwordTextField->setPlaceholderText(tr("None"));
    m_strength = new StrengthBar(m_encryptView);
    auto* header = new QHBoxLayout;
    header->setSpacing(theme::kSpaceS);
    header->addWidget(caption(tr("&Password"), m_passwordTextField, m_encryptView));
    header->addStretch(1);
    header->addWidget(m_strength);
    auto* column = new QVBoxLayout(m_encryptView);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(theme::kSpaceXs);
    column->addLayout(header);
    column->addWidget(m_passwordTextField);
}

/// An item's title is the kind itself.
void KXPackViewController::fillKindMenu(QComboBox* menu) const
{
    auto* delegate = new EncodingItemDelegate(menu); // a name, and a remark from a common edge on
    int edge = 0;
    bool wasTar = false;
    bool wasSingle = false;
    for (const PackKind& kind : packKinds()) {
        const bool isTar = kind.title.startsWith(QLatin1String("tar"));
        const bool startsGroup = (wasTar && !isTar) || (!wasTar && isTar) || (kind.singleFile && !wasSingle);
        if (startsGroup && menu->count() > 0)
            menu->insertSeparator(menu->count());
        menu->addItem(kind.title);
        menu->setItemData(menu->count() - 1, kind.title, EncodingItemDelegate::NameRole);
        menu->setItemData(menu->count() - 1, kind.description, EncodingItemDelegate::SampleRole);
        edge = qMax(edge, menu->fontMetrics().horizontalAdvance(kind.title));
        wasTar = isTar;
        wasSingle = kind.singleFile;
    }
    delegate->setSampleEdge(edge + theme::kSpaceL);
    menu->setItemDelegate(delegate);
    menu->view()->setMinimumWidth(menu->view()->sizeHintForColumn(0) + 2 * menu->view()->frameWidth() + theme::kSpaceL);
}

}
