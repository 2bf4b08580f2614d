#include "app/InformationWindow.h"

#include "app/SettingsCard.h"

#include "engine/open.h"
#include "widgets/ColoredView.h"
#include "widgets/FlatButton.h"
#include "widgets/Icons.h"
#include "widgets/Theme.h"

#include <QButtonGroup>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QTreeWidget>

#include <array>

namespace vantoro {
namespace {

constexpr QSize kUsualSize(560, 560);
constexpr int kIconEdge = 72;

struct LibraryRow {
    const char* name;
    const char* purpose;
    const char* licence;
};
constexpr std::array kLibraries{
    LibraryRow{"Qt", QT_TRANSLATE_NOOP("InformationWindow", "Windows and the desktop"), "LGPL-3.0"},
    LibraryRow{"libxcb", QT_TRANSLATE_NOOP("InformationWindow", "Windows and the desktop"), "MIT"},
    LibraryRow{"7-Zip", QT_TRANSLATE_NOOP("InformationWindow", "Reads many formats, writes 7z"),
               "LGPL-2.1-or-later, unRAR"},
    LibraryRow{"libarchive", QT_TRANSLATE_NOOP("InformationWindow", "Reads and writes further formats"),
               "BSD-2-Clause"},
    LibraryRow{"Lhasa", QT_TRANSLATE_NOOP("InformationWindow", "LHA methods"), "ISC"},
    LibraryRow{"libdeflate", QT_TRANSLATE_NOOP("InformationWindow", "Deflate, whole blocks"), "MIT"},
    LibraryRow{"ISA-L", QT_TRANSLATE_NOOP("InformationWindow", "Deflate, streams"), "BSD-3-Clause"},
    LibraryRow{"zlib", QT_TRANSLATE_NOOP("InformationWindow", "Deflate, writing"), "Zlib"},
    LibraryRow{"liblzma", QT_TRANSLATE_NOOP("InformationWindow", "xz and lzma"), "0BSD, public domain"},
    LibraryRow{"Zstandard", QT_TRANSLATE_NOOP("InformationWindow", "zst"), "BSD-3-Clause"},
    LibraryRow{"LZ4", QT_TRANSLATE_NOOP("InformationWindow", "lz4"), "BSD-2-Clause"},
    LibraryRow{"Brotli", QT_TRANSLATE_NOOP("InformationWindow", "br"), "MIT"},
    LibraryRow{"WavPack", QT_TRANSLATE_NOOP("InformationWindow", "Wave files within zip"), "BSD-3-Clause"},
    LibraryRow{"OpenSSL", QT_TRANSLATE_NOOP("InformationWindow", "Ciphers and checksums"), "Apache-2.0"},
    LibraryRow{"ICU", QT_TRANSLATE_NOOP("InformationWindow", "Text encodings"), "Unicode-3.0"},
    LibraryRow{"uchardet", QT_TRANSLATE_NOOP("InformationWindow", "Finding an encoding out"), "MPL-1.1"},
    LibraryRow{"libseccomp", QT_TRANSLATE_NOOP("InformationWindow", "Confines the decoders"), "LGPL-2.1"},
    LibraryRow{"zxcvbn", QT_TRANSLATE_NOOP("InformationWindow", "Strength of passwords"), "MIT"},
};

/// Rows with air between them.
class AiryRows final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(theme::kSpaceM, theme::kSpaceS);
    }
};

QTreeWidget* makeTable(const QStringList& headings, const QString& name)
{
    auto* table = new QTreeWidget;
    table->setHeaderLabels(headings);
    table->setItemDelegate(new AiryRows(table));
    table->header()->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    table->setAccessibleName(name);
    table->setRootIsDecorated(false);
    table->setUniformRowHeights(true);
    table->setAlternatingRowColors(true);
    table->setFrameShape(QFrame::NoFrame);
    table->setTextElideMode(Qt::ElideRight);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return table;
}

QWidget* cardWith(QWidget* table, QWidget* parent)
{
    auto* card = ColoredView::card(parent);
    auto* inside = new QVBoxLayout(card);
    inside->setContentsMargins(theme::kSpaceXs, theme::kSpaceXs, theme::kSpaceXs, theme::kSpaceXs);
    inside->addWidget(table);
    return card;
}

void addRow(QTreeWidget* table, const QStringList& texts)
{
    auto* row = new QTreeWidgetItem(table, texts);
    row->setToolTip(static_cast<int>(texts.size()) - 1, texts.last());
}

/// Shows the rows in which the words occur.
void filter(QTreeWidget* table, const QString& words)
{
    for (int i = 0; i < table->topLevelItemCount(); ++i) {
        auto* row = table->topLevelItem(i);
        row->setHidden(!row->text(0).contains(words, Qt::CaseInsensitive)
                       && !row->text(1).contains(words, Qt::CaseInsensitive));
    }
}

}

InformationWindow::InformationWindow()
    : AppWindow(Escape::Closes)
    , m_pages(new QStackedWidget(this))
    , m_tabs(new QButtonGroup(this))
{
    setObjectName(QStringLiteral("infoWindow"));
    setWindowTitle(tr("About Vantoro"));
    auto* tabs = new QHBoxLayout;
    tabs->setSpacing(theme::kSpaceXs);
    addPage(tr("&Formats"), makeFormats(), tabs);
    addPage(tr("&Libraries"), makeLibraries(), tabs);
    tabs->addStretch(1);
    m_tabs->button(0)->setChecked(true);
    connect(m_tabs, &QButtonGroup::idToggled, m_pages, [this](int index, bool isOn) {
        if (isOn)
            m_pages->setCurrentIndex(index);
    });
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(theme::kSpaceXl, theme::kSpaceXl, theme::kSpaceXl, theme::kSpaceXl);
    column->setSpacing(theme::kSpaceM);
    column->addLayout(makeHead());
    column->addLayout(tabs);
    column->addWidget(m_pages, 1);
    resizeWithinScreen(kUsualSize);
}

QHBoxLayout* InformationWindow::makeHead()
{
    auto* icon = new QLabel(this);
    icon->setPixmap(icons::application().pixmap(QSize(kIconEdge, kIconEdge), devicePixelRatioF()));
    auto* name = new QLabel(tr("Vantoro"), this);
    name->setFont(theme::font(theme::Type::Display, font()));
    auto* words = new QVBoxLayout;
    words->setSpacing(theme::kSpaceXs / 2);
    words->addStretch(1);
    words->addWidget(name);
    words->addWidget(makeCaption(
        tr("Version %1, with Qt %2").arg(QStringLiteral(VANTORO_VERSION), QString::fromLatin1(qVersion())), this));
    words->addWidget(makeCaption(tr("Free software under the GNU General Public License, version 3 or later."), this));
    words->addStretch(1);
    auto* head = new QHBoxLayout;
    head->setSpacing(theme::kSpaceL);
    head->addWidget(icon);
    head->addLayout(words, 1);
    return head;
}

void InformationWindow::addPage(const QString& title, QWidget* page, QHBoxLayout* tabs)
{
    auto* tab = new FlatButton(title, FlatButton::Kind::Quiet, this);
    tab->setCheckable(true);
    m_tabs->addButton(tab, m_pages->addWidget(page));
    tabs->addWidget(tab);
}

QWidget* InformationWindow::makeFormats()
{
    auto* page = new QWidget;
    auto* search = new QLineEdit(page);
    search->setPlaceholderText(tr("Find a format or an extension"));
    search->setAccessibleName(search->placeholderText());
    search->setClearButtonEnabled(true);
    auto* table = makeTable({tr("Format"), tr("Extensions")}, tr("Formats that can be read"));
    QMap<QString, QStringList> formats; // several readers of one kind are one line
    for (const FormatDescription& format : supportedFormats()) {
        QStringList& extensions = formats[QCoreApplication::translate("Formats", format.displayName.c_str())];
        for (const auto& extension : format.extensions)
            extensions += QString::fromStdString(extension);
        extensions.removeDuplicates();
    }
    for (auto format = formats.cbegin(); format != formats.cend(); ++format)
        addRow(table, {format.key(), format.value().join(QStringLiteral(", "))});
    table->sortItems(0, Qt::AscendingOrder);
    table->resizeColumnToContents(0);
    connect(search, &QLineEdit::textChanged, table, [table](const QString& words) { filter(table, words.trimmed()); });
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(search);
    column->addWidget(cardWith(table, page), 1);
    return page;
}

QWidget* InformationWindow::makeLibraries()
{
    auto* table = makeTable({tr("Library"), tr("Use"), tr("Licence")}, tr("Libraries in use"));
    for (const LibraryRow& row : kLibraries)
        addRow(table, {QString::fromLatin1(row.name), tr(row.purpose), QString::fromLatin1(row.licence)});
    table->resizeColumnToContents(0);
    table->resizeColumnToContents(1);
    return cardWith(table, this);
}

}
