#include "browse/KXEncodePopButton.h"

#include "browse/EncodingItemDelegate.h"
#include "browse/EncodingList.h"
#include "widgets/ElidedLabel.h"

#include <QAbstractItemView>
#include <QScreen>
#include <QStylePainter>

namespace vantoro {
namespace {

constexpr int kTagRole = Qt::UserRole;
constexpr int kGapBeforeSample = 10;
constexpr QChar kArrow(0x27A4);

}

KXEncodePopButton::KXEncodePopButton(QWidget* parent) : QComboBox(parent)
{
    setAccessibleName(tr("Text encoding"));
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(18);
    setMaxVisibleItems(16);
    setItemDelegate(new EncodingItemDelegate(this));
}

QList<EncodingRecord> KXEncodePopButton::encodings() { return encodingRecords(); }

int KXEncodePopButton::maximumEncodingNameWidthWithAttributes(const QFont& attributes)
{
    return widestEncodingName(encodingRecords(), attributes);
}

void KXEncodePopButton::appendItem(const QString& name, CharsetId tag)
{
    addItem(name, tag);
    setItemData(count() - 1, name, EncodingItemDelegate::NameRole);
}

void KXEncodePopButton::buildEncodingList()
{
    clear();
    for (const EncodingRecord& record : encodingRecords())
        appendItem(record.name, record.encoding);
}

void KXEncodePopButton::buildEncodingListMatchingXADString(const XADString& string)
{
    clear();
    static_cast<EncodingItemDelegate*>(itemDelegate())
        ->setSampleEdge(maximumEncodingNameWidthWithAttributes(view()->font()) + kGapBeforeSample);
    for (const EncodingMatch& match : encodingsMatching(string)) {
        appendItem(match.record.name, match.record.encoding);
        const int index = count() - 1;
        const QString annotated = QStringLiteral("%1\t%2 ").arg(match.record.name, kArrow) + match.sample;
        setItemData(index, annotated, Qt::DisplayRole);
        setItemData(index, QString(kArrow + QStringLiteral(" ") + isolated(match.sample)),
                    EncodingItemDelegate::SampleRole);
    }
}

void KXEncodePopButton::buildEncodingListWithAutoDetect()
{
    buildEncodingList();
    insertSeparator(count());
    const QString name = tr("AUTO Dectect");
    insertItem(0, name, CharsetId{kCharsetUnknown});
    setItemData(0, name, EncodingItemDelegate::NameRole);
    setCurrentIndex(0);
}

void KXEncodePopButton::buildEncodingListWithDefaultEncoding()
{
    buildEncodingList();
    insertSeparator(0);
    const QString name = tr("Default encoding");
    insertItem(0, name, CharsetId{kCharsetUnknown});
    setItemData(0, name, EncodingItemDelegate::NameRole);
    setCurrentIndex(0);
}

bool KXEncodePopButton::isSeparator(int index) const
{
    return itemData(index, Qt::AccessibleDescriptionRole).toString() == QLatin1String("separator");
}

CharsetId KXEncodePopButton::tagAtIndex(int index) const { return itemData(index, kTagRole).toUInt(); }

CharsetId KXEncodePopButton::selectedTag() const { return tagAtIndex(currentIndex()); }

int KXEncodePopButton::indexOfItemWithTag(CharsetId tag) const
{
    for (int index = 0; index < count(); ++index) {
        if (!isSeparator(index) && tagAtIndex(index) == tag)
            return index;
    }
    return -1;
}

void KXEncodePopButton::selectItemAtIndex(int index) { setCurrentIndex(index); }

bool KXEncodePopButton::selectItemWithTag(CharsetId tag)
{
    const int index = indexOfItemWithTag(tag);
    if (index < 0)
        return false;
    setCurrentIndex(index);
    return true;
}

void KXEncodePopButton::showPopup()
{
    // Samples may be wider than the button: the list takes what it needs, up to most of the screen.
    const int wished = view()->sizeHintForColumn(0) + 2 * view()->frameWidth() + 16;
    const int most = screen()->availableGeometry().width() * 3 / 4;
    view()->setMinimumWidth(qMin(qMax(wished, width()), most));
    QComboBox::showPopup();
}

QString KXEncodePopButton::faceText() const
{
    // A separator stands for the automatic choice when it closes the list, and is selected for it at start.
    const int index = isSeparator(currentIndex()) ? indexOfItemWithTag(kCharsetUnknown) : currentIndex();
    return itemData(index, EncodingItemDelegate::NameRole).toString();
}

void KXEncodePopButton::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    const QRect field = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    option.currentText = option.fontMetrics.elidedText(faceText(), Qt::ElideRight, field.width());
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

}
