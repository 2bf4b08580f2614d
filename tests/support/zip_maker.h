#pragma once

#include "engine/crypto/crc32.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vantoro::test {

inline void putLe(std::string& out, std::uint64_t value, unsigned bytes)
{
    for (unsigned i = 0; i < bytes; ++i)
        out.push_back(static_cast<char>(value >> 8 * i));
}

/// One entry of a zip made by hand; every field may lie.
struct ZipEntry {
    std::string name, data; ///< data as they lie in the file
    std::uint16_t method = 0, flags = 0;
    std::uint32_t crc = 0;
    std::uint64_t size = 0;
    std::string extra, comment; ///< of the directory header
    std::string localExtra, localName; ///< localName empty: the same as name
    std::uint32_t external = 0;
    std::uint8_t host = 3;
    std::uint32_t dosTime = 0x5A210000 | 0x6000;
    bool hasDescriptorSignature = true;
    bool inDirectory = true;
};

inline ZipEntry storedEntry(std::string name, std::string data)
{
    ZipEntry entry;
    entry.crc = crc32(0, asBytes(data));
    entry.size = data.size();
    entry.name = std::move(name);
    entry.data = std::move(data);
    return entry;
}

/// Builds a zip field by field.
class ZipMaker {
public:
    std::string bytes; ///< what has been written up to here

    /// Writes local header and data; returns the local offset.
    std::uint64_t add(const ZipEntry& entry)
    {
        const auto offset = bytes.size();
        const bool streamed = (entry.flags & 8) != 0;
        const auto& name = entry.localName.empty() ? entry.name : entry.localName;
        putLe(bytes, 0x04034B50, 4);
        putLe(bytes, 20, 2);
        putLe(bytes, entry.flags, 2);
        putLe(bytes, entry.method, 2);
        putLe(bytes, entry.dosTime, 4);
        putLe(bytes, streamed ? 0 : entry.crc, 4);
        putLe(bytes, streamed ? 0 : entry.data.size(), 4);
        putLe(bytes, streamed ? 0 : entry.size, 4);
        putLe(bytes, name.size(), 2);
        putLe(bytes, entry.localExtra.size(), 2);
        bytes += name + entry.localExtra + entry.data;
        if (streamed) {
            if (entry.hasDescriptorSignature)
                putLe(bytes, 0x08074B50, 4);
            putLe(bytes, entry.crc, 4);
            putLe(bytes, entry.data.size(), 4);
            putLe(bytes, entry.size, 4);
        }
        if (entry.inDirectory)
            list(entry, offset);
        return offset;
    }

    /// A directory header alone.
    void list(const ZipEntry& entry, std::uint64_t offset)
    {
        putLe(m_directory, 0x02014B50, 4);
        putLe(m_directory, 20 | entry.host << 8, 2);
        putLe(m_directory, 20, 2);
        putLe(m_directory, entry.flags, 2);
        putLe(m_directory, entry.method, 2);
        putLe(m_directory, entry.dosTime, 4);
        putLe(m_directory, entry.crc, 4);
        putLe(m_directory, entry.data.size(), 4);
        putLe(m_directory, entry.size, 4);
        putLe(m_directory, entry.name.size(), 2);
        putLe(m_directory, entry.extra.size(), 2);
        putLe(m_directory, entry.comment.size(), 2);
        putLe(m_directory, 0, 4);
        putLe(m_directory, entry.external, 4);
        putLe(m_directory, offset, 4);
        m_directory += entry.name + entry.extra + entry.comment;
        ++m_count;
    }

    std::string finish(const std::string& comment = {})
    {
        const auto start = bytes.size();
        bytes += m_directory;
        putLe(bytes, 0x06054B50, 4);
        putLe(bytes, 0, 4);
        putLe(bytes, m_count, 2);
        putLe(bytes, m_count, 2);
        putLe(bytes, m_directory.size(), 4);
        putLe(bytes, start, 4);
        putLe(bytes, comment.size(), 2);
        bytes += comment;
        return bytes;
    }

private:
    std::string m_directory;
    unsigned m_count = 0;
};

/// A field of an extra block.
inline std::string extraField(std::uint16_t id, const std::string& content)
{
    std::string field;
    putLe(field, id, 2);
    putLe(field, content.size(), 2);
    return field + content;
}

}
