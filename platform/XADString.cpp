#include "platform/XADString.h"

namespace vantoro {
namespace {
std::string_view view(const QByteArray& bytes) { return {bytes.constData(), static_cast<std::size_t>(bytes.size())}; }
}

XADString XADString::stringWithBytes(QByteArray bytes, CharsetId encoding, float confidence)
{
    XADString string;
    string.m_bytes = std::move(bytes);
    string.m_encoding = encoding;
    string.m_confidence = confidence;
    string.m_isText = false;
    return string;
}

XADString XADString::stringWithText(const QString& text)
{
    XADString string;
    string.m_bytes = text.toUtf8();
    return string;
}

bool XADString::canDecodeWithEncoding(CharsetId encoding) const
{
    return m_isText || (findCharset(encoding) != nullptr && canDecode(view(m_bytes), encoding));
}

QString XADString::stringWithEncoding(CharsetId encoding) const
{
    if (m_isText)
        return QString::fromUtf8(m_bytes);
    return QString::fromStdString(decode(view(m_bytes), findCharset(encoding) ? encoding : kCharsetUtf8));
}

QString XADString::encodingNameForEncoding(CharsetId encoding)
{
    const Charset* charset = findCharset(encoding);
    return charset ? QString::fromLatin1(charset->name) : QString();
}

CharsetId XADString::encodingForEncodingName(const QString& name)
{
    const Charset* charset = findCharset(std::string_view(name.toStdString()));
    return charset ? charset->id : kCharsetUnknown;
}

}
