#pragma once

#include "engine/text/charset.h"

#include <QByteArray>
#include <QString>

namespace vantoro {

/// A name of an archive: either its undecoded bytes with what detection makes of them, or text that needs no choice of
/// encoding any more. Encodings are the engine's charset numbers; 0 means none.
class XADString {
public:
    XADString() = default;
    static XADString stringWithBytes(QByteArray bytes, CharsetId encoding, float confidence);
    /// Text that the archive declared or that has been decoded already: every encoding reads it alike.
    static XADString stringWithText(const QString& text);

    /// What detection guesses; 0 when it has no idea.
    CharsetId encoding() const { return m_encoding; }
    /// Of encoding(), 0 to 1.
    float confidence() const { return m_confidence; }
    bool canDecodeWithEncoding(CharsetId encoding) const;
    /// What the encoding makes of the name; bytes without a meaning in it appear as %XX.
    QString stringWithEncoding(CharsetId encoding) const;
    /// Undecoded; the text in UTF-8 where it is known.
    const QByteArray& bytes() const { return m_bytes; }

    /// IANA name; empty for a number that stands for no encoding.
    static QString encodingNameForEncoding(CharsetId encoding);
    /// The number of a name; 0 when it is not known.
    static CharsetId encodingForEncodingName(const QString& name);

private:
    QByteArray m_bytes;
    CharsetId m_encoding = kCharsetUtf8;
    float m_confidence = 1.0F;
    bool m_isText = true;
};

}
