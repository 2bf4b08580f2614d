#pragma once

#include "platform/XADArchive.h"

#include "engine/extract/entry_names.h"
#include "engine/extract/safe_name.h"

#include <chrono>

namespace vantoro {

/// Takes an archive's listing into a table. Names are made fit to be shown as they come; those whose charset nobody
/// declared wait for what all of them together make of it.
class XADListing final : public EntryVisitor {
public:
    explicit XADListing(const XADListingWatch& watch);
    Result<void> visit(const Entry& entry) override;
    /// The whole listing; nothing is added any more.
    std::shared_ptr<const XADEntryTable> finish();

    /// After finish(): what undeclared names were read as.
    CharsetId charset() const { return m_charset; }
    /// After finish(): whether there were such names.
    bool foundCharset() const { return !m_waiting.empty(); }
    bool hasEncryptedEntries() const { return m_hasEncryptedEntries; }

private:
    struct Waiting {
        quint32 index;
        CharsetId declared;
        PathStyle style;
    };
    std::string_view shown(std::string_view utf8, PathStyle style, std::size_t index);
    Result<void> tell();

    const XADListingWatch& m_watch;
    std::shared_ptr<XADEntryTable> m_table = std::make_shared<XADEntryTable>();
    std::vector<Waiting> m_waiting;
    CharsetDetector m_detector;
    NameCleaner m_cleaner;
    CharsetId m_charset = kCharsetUtf8;
    bool m_hasEncryptedEntries = false;
    std::string m_shown;
    std::string m_decoded;
    std::chrono::steady_clock::time_point m_nextTold;
};

/// The name in parts joined by '/', none of them empty, "." or "..", whatever `utf8` is; empty when nothing is left.
/// For names that NameCleaner refuses: they are never created, but still shown.
std::string presentableName(std::string_view utf8, PathStyle style);

}
