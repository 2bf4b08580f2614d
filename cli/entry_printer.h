#pragma once

#include "cli/date_text.h"
#include "cli/output.h"

#include "engine/extract.h"

namespace vantoro::cli {

/// Writes entries as lines for people or as JSON objects, one a line.
class EntryPrinter {
public:
    EntryPrinter(bool json, Output& out) : m_json(json), m_out(out) {}

    /// `charset`: of the names, where the entry declares none.
    void print(const Entry& entry, CharsetId charset, const std::string& sha256);
    void printSum();

private:
    void key(std::string_view name) { (m_out.put(",\""), m_out.put(name), m_out.put("\":")); }
    void number(std::string_view name, std::optional<std::uint64_t> value);
    void printJson(const Entry& entry, CharsetId charset, const std::string& sha256);
    void printChecksum(const Checksum& checksum);
    void printLine(const Entry& entry, CharsetId charset);
    void printName(const Entry& entry, CharsetId charset);

    bool m_json;
    Output& m_out;
    DateText m_dates;
    std::uint64_t m_count = 0;
    std::uint64_t m_total = 0;
};

}
