#pragma once

#include "engine/formats/archive.h"

#include <optional>

namespace vantoro {

/// Decodes the names of one archive. What the format declares counts; undeclared names that are not UTF-8, and declared
/// UTF-8 that is none, are all taken for one charset: the chosen one, or what detection made of all of them together.
class EntryNames {
public:
    /// kCharsetUnknown: to be found by detection.
    explicit EntryNames(CharsetId chosen) : m_charset(chosen) {}

    /// Whether this name cannot be decoded before the charset is known.
    bool isOpen(std::string_view name, CharsetId declared) const;
    /// Valid UTF-8 outside this is only short chance; names that detection is to judge.
    static bool isUndeclared(std::string_view name, CharsetId declared);

    void setCharset(CharsetId charset) { m_charset = charset; }
    bool isKnown() const { return m_charset != kCharsetUnknown; }

    /// UTF-8; views `name` itself or `buffer`.
    std::string_view decoded(std::string_view name, CharsetId declared, std::string& buffer) const;

private:
    CharsetId m_charset;
};

}
