#pragma once

#include "engine/crypto/crc32.h"

#include <QByteArray>
#include <QFile>

#include <string_view>

namespace vantoro {

/// A zip archive of stored entries, with names of any bytes.
class ZipBuilder {
public:
    enum class Damage { None, Checksum };

    /// A name that ends with a slash is a folder. Names are not marked as UTF-8.
    ZipBuilder& add(const QByteArray& name, const QByteArray& data, Damage damage = Damage::None)
    {
        const auto crc = crcOf(data) ^ (damage == Damage::Checksum ? 1U : 0U);
        const auto offset = static_cast<quint32>(m_local.size());
        const QByteArray fields = header(crc, name, data);
        m_local += "PK\3\4" + fields + name + data;
        m_central += "PK\1\2" + le(20, 2) + fields + le(0, 2) + le(0, 2) + le(0, 2) + le(0, 4) + le(offset, 4) + name;
        ++m_count;
        return *this;
    }
    QByteArray bytes() const
    {
        return m_local + m_central + "PK\5\6" + le(0, 4) + le(m_count, 2) + le(m_count, 2)
            + le(static_cast<quint32>(m_central.size()), 4) + le(static_cast<quint32>(m_local.size()), 4) + le(0, 2);
    }
    bool write(const QString& path) const
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(bytes()) == bytes().size();
    }

private:
    static QByteArray le(quint32 value, int width)
    {
        QByteArray bytes;
        for (int i = 0; i < width; ++i)
            bytes += static_cast<char>(value >> (8 * i) & 0xFF);
        return bytes;
    }
    static quint32 crcOf(const QByteArray& data)
    {
        return crc32(0, asBytes({data.constData(), static_cast<std::size_t>(data.size())}));
    }
    static QByteArray header(quint32 crc, const QByteArray& name, const QByteArray& data)
    {
        const auto size = static_cast<quint32>(data.size());
        const quint32 kDosTime = 0x58210000; // 2024-01-01 00:00
        return le(20, 2) + le(0, 2) + le(0, 2) + le(kDosTime, 4) + le(crc, 4) + le(size, 4) + le(size, 4)
            + le(static_cast<quint32>(name.size()), 2) + le(0, 2);
    }

    QByteArray m_local;
    QByteArray m_central;
    quint32 m_count = 0;
};

}
