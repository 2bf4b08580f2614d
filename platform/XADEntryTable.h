#pragma once

#include <QDateTime>
#include <QString>

#include <deque>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace vantoro {

/// What an archive lists, kept in 32 bytes an entry and the bytes of its name. Filled once, then read from any thread.
class XADEntryTable {
public:
    struct Row {
        const char* name = nullptr; ///< UTF-8, without a closing zero
        quint32 nameLength = 0;
        bool isFolder : 1 = false;
        bool isEncrypted : 1 = false;
        bool isLink : 1 = false;
        bool hasSize : 1 = false;
        bool hasDate : 1 = false;
        bool dateIsLocal : 1 = false; ///< seconds of the clock on the wall rather than UTC
        qint64 size = 0; ///< in bytes
        qint64 date = 0; ///< seconds since 1970
    };

    XADEntryTable() = default;
    XADEntryTable(const XADEntryTable&) = delete;
    XADEntryTable& operator=(const XADEntryTable&) = delete;

    qsizetype count() const { return static_cast<qsizetype>(m_rows.size()); }
    /// The index lies within count().
    const Row& at(qsizetype index) const { return m_rows[static_cast<std::size_t>(index)]; }
    std::string_view name(qsizetype index) const { return {at(index).name, at(index).nameLength}; }

    void add(Row row, std::string_view name);
    void setName(qsizetype index, std::string_view name);

private:
    const char* keep(std::string_view name);

    std::deque<Row> m_rows; // grows without copying
    std::vector<std::unique_ptr<char[]>> m_blocks;
    char* m_free = nullptr;
    std::size_t m_room = 0;
};

}
