#include "files/PropertyList.h"

#include <QDateTime>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace vantoro {
namespace {

constexpr int kDeepest = 256;

class Writer {
public:
    explicit Writer(QByteArray& bytes) : m_xml(&bytes) { m_xml.setAutoFormatting(true); }

    bool writeDocument(const QVariant& value)
    {
        m_xml.writeStartDocument();
        m_xml.writeStartElement(QStringLiteral("plist"));
        m_xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
        const bool isWhole = write(value);
        m_xml.writeEndDocument();
        return isWhole && !m_xml.hasError();
    }

private:
    bool write(const QVariant& value)
    {
        switch (value.typeId()) {
        case QMetaType::QVariantList:
        case QMetaType::QStringList:
            return writeList(value.toList());
        case QMetaType::QVariantMap:
        case QMetaType::QVariantHash:
            return writeMap(value.toMap());
        case QMetaType::QString:
            return text("string", value.toString());
        case QMetaType::QByteArray:
            return text("data", QString::fromLatin1(value.toByteArray().toBase64()));
        case QMetaType::QDateTime:
            return text("date", value.toDateTime().toUTC().toString(Qt::ISODate));
        case QMetaType::Bool:
            m_xml.writeEmptyElement(value.toBool() ? QStringLiteral("true") : QStringLiteral("false"));
            return true;
        case QMetaType::Float:
        case QMetaType::Double:
            return text("real", QString::number(value.toDouble(), 'g', 17));
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
            return text("integer", value.toString());
        default:
            return false;
        }
    }

    bool writeList(const QVariantList& list)
    {
        m_xml.writeStartElement(QStringLiteral("array"));
        bool isWhole = true;
        for (const QVariant& value : list)
            isWhole = write(value) && isWhole;
        m_xml.writeEndElement();
        return isWhole;
    }

    bool writeMap(const QVariantMap& map)
    {
        m_xml.writeStartElement(QStringLiteral("dict"));
        bool isWhole = true;
        for (auto entry = map.begin(); entry != map.end(); ++entry) {
            text("key", entry.key());
            isWhole = write(entry.value()) && isWhole;
        }
        m_xml.writeEndElement();
        return isWhole;
    }

    bool text(const char* element, const QString& content)
    {
        m_xml.writeTextElement(QString::fromLatin1(element), content);
        return true;
    }

    QXmlStreamWriter m_xml;
};

class Reader {
public:
    explicit Reader(const QByteArray& bytes) : m_xml(bytes) {}

    std::optional<QVariant> readDocument()
    {
        if (!m_xml.readNextStartElement() || m_xml.name() != QLatin1String("plist") || !m_xml.readNextStartElement())
            return std::nullopt;
        const QVariant value = read(0);
        return m_xml.hasError() || !value.isValid() ? std::nullopt : std::optional(value);
    }

private:
    QVariant read(int depth)
    {
        const QString kind = m_xml.name().toString();
        if (depth > kDeepest)
            m_xml.raiseError(QStringLiteral("too deep"));
        else if (kind == QLatin1String("array"))
            return readList(depth);
        else if (kind == QLatin1String("dict"))
            return readMap(depth);
        else
            return readPlain(kind);
        return {};
    }

    QVariant readList(int depth)
    {
        QVariantList list;
        while (m_xml.readNextStartElement())
            list += read(depth + 1);
        return list;
    }

    QVariant readMap(int depth)
    {
        QVariantMap map;
        while (m_xml.readNextStartElement()) {
            if (m_xml.name() != QLatin1String("key"))
                m_xml.raiseError(QStringLiteral("a value without a key"));
            const QString key = m_xml.readElementText();
            if (!m_xml.readNextStartElement())
                m_xml.raiseError(QStringLiteral("a key without a value"));
            else
                map.insert(key, read(depth + 1));
        }
        return map;
    }

    QVariant readPlain(const QString& kind)
    {
        const QString text = m_xml.readElementText();
        bool isGood = true;
        QVariant value;
        if (kind == QLatin1String("string"))
            value = text;
        else if (kind == QLatin1String("data"))
            value = QByteArray::fromBase64(text.toLatin1());
        else if (kind == QLatin1String("date"))
            value = QDateTime::fromString(text, Qt::ISODate);
        else if (kind == QLatin1String("true") || kind == QLatin1String("false"))
            value = kind == QLatin1String("true");
        else if (kind == QLatin1String("real"))
            value = text.toDouble(&isGood);
        else if (kind == QLatin1String("integer"))
            value = text.toLongLong(&isGood);
        else
            isGood = false;
        if (!isGood)
            m_xml.raiseError(QStringLiteral("not a value"));
        return value;
    }

    QXmlStreamReader m_xml;
};

}

std::optional<QByteArray> PropertyList::bytes(const QVariant& value)
{
    QByteArray bytes;
    return Writer(bytes).writeDocument(value) ? std::optional(bytes) : std::nullopt;
}

std::optional<QVariant> PropertyList::value(const QByteArray& bytes) { return Reader(bytes).readDocument(); }

}
