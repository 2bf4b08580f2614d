#pragma once

#include "platform/XADString.h"

#include <QComboBox>

namespace vantoro {

struct EncodingRecord;

/// The pop-up from which the user picks the encoding of file names or passwords. An item's tag is the encoding's
/// number; 0 stands for the automatic or default choice. Empty until one of the build operations has run.
class KXEncodePopButton : public QComboBox {
    Q_OBJECT

public:
    explicit KXEncodePopButton(QWidget* parent = nullptr);

    static QList<EncodingRecord> encodings();
    static int maximumEncodingNameWidthWithAttributes(const QFont& attributes);

    void buildEncodingList();
    /// Only the encodings that can read the string, each with what it makes of it.
    void buildEncodingListMatchingXADString(const XADString& string);
    /// The automatic choice first; a separator closes the list.
    void buildEncodingListWithAutoDetect();
    /// The default choice and a separator first.
    void buildEncodingListWithDefaultEncoding();

    /// Of the chosen item; 0 for a separator and for none.
    CharsetId selectedTag() const;
    CharsetId tagAtIndex(int index) const;
    /// -1 when no item has the tag. Separators carry none.
    int indexOfItemWithTag(CharsetId tag) const;
    void selectItemAtIndex(int index);
    bool selectItemWithTag(CharsetId tag);
    bool isSeparator(int index) const;

    void showPopup() override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void appendItem(const QString& name, CharsetId tag);
    /// What the closed button reads: the name without its sample.
    QString faceText() const;
};

}
