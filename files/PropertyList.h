#pragma once

#include <QByteArray>
#include <QVariant>

#include <optional>

namespace vantoro {

/// Lists and maps of plain values as XML property lists, the text form that desktop programs exchange.
class PropertyList {
public:
    /// A list or a map, of lists, maps, text, bytes, dates, numbers and truth values. Nothing when it holds others.
    static std::optional<QByteArray> bytes(const QVariant& value);
    /// Nothing for bytes that are no property list.
    static std::optional<QVariant> value(const QByteArray& bytes);
};

}
