#pragma once

#include "engine/backends/libarchive_input.h"

struct archive_entry;

namespace vantoro {

/// One way of libarchive's to read a container, and what is to be known about it.
struct LibarchiveFormat {
    const char* id; ///< of the registry's row
    int (*enable)(archive*); ///< exactly one archive_read_support_format_…
    CharsetId nameCharset = kCharsetUnknown; ///< what names are declared to be in
    /// Fewest bytes of input that an entry takes: more entries than that allows are a trick.
    unsigned leastBytesPerEntry = 16;
    bool hasModes = true;
    /// Entries that are the container's own tables and no files; null: there are none.
    bool (*isTable)(std::string_view name) = nullptr;
};

/// One pass over an archive: libarchive has no way back, so a second look is a second session.
class LibarchiveSession {
public:
    static Result<std::unique_ptr<LibarchiveSession>> start(const LibarchiveFormat& format, LibarchiveInput input,
                                                            const Limits& limits);
    ~LibarchiveSession();
    LibarchiveSession(const LibarchiveSession&) = delete;
    LibarchiveSession& operator=(const LibarchiveSession&) = delete;

    /// The next header, owned by libarchive and good until the next call; null at the end.
    Result<archive_entry*> nextHeader();

    struct Block {
        ConstBytes bytes;
        std::uint64_t position = 0; ///< within the entry's data: gaps are holes
    };
    /// The next data of the current entry; nothing at its end.
    Result<std::optional<Block>> nextBlock();

    /// Where the current header stands in the input.
    std::uint64_t headerPosition() const;
    LibarchiveInput& input() { return m_input; }

    /// Set when a header could not be understood and was passed over.
    const std::optional<Error>& skippedHeader() const { return m_skippedHeader; }
    /// After an error of nextBlock(): whether the entries behind can still be read.
    bool canGoOn() const { return !m_isDead; }

private:
    LibarchiveSession(const LibarchiveFormat& format, LibarchiveInput input, const Limits& limits);
    Error lastError() const;
    Result<void> countHeader();

    const LibarchiveFormat& m_format;
    LibarchiveInput m_input;
    Limits m_limits;
    archive* m_reader = nullptr;
    std::uint64_t m_headers = 0;
    bool m_isDead = false;
    std::optional<Error> m_skippedHeader;
};

}
