#include "engine/backends/libarchive_session.h"

#include "engine/backends/late_libarchive.h"
#include "engine/backends/library_locale.h"

#include <algorithm>
#include <cerrno>

namespace vantoro {

namespace {

constexpr std::uint64_t kFreeHeaders = 1000; // before the headers are counted against the bytes they came from

/// libarchive has three numbers for errors and many sentences; the sentences do not change between releases.
Error errorFromText(std::string_view text)
{
    struct Rule {
        const char* part;
        Error error;
    };
    static constexpr Rule kRules[] = {
        {"nrecognized archive format", {ErrorCode::NotAnArchive, "libarchive: not this format"}},
        {"runcated", {ErrorCode::Truncated, "libarchive: truncated"}},
        {"nexpected end", {ErrorCode::Truncated, "libarchive: truncated"}},
        {"ncrypt", {ErrorCode::UnsupportedEncryption, "libarchive: encrypted"}},
        {"hecksum", {ErrorCode::ChecksumMismatch, "libarchive: checksum"}},
        {"CRC", {ErrorCode::ChecksumMismatch, "libarchive: checksum"}},
        {"nsupported", {ErrorCode::UnsupportedFeature, "libarchive: unsupported"}},
        {"not supported", {ErrorCode::UnsupportedFeature, "libarchive: unsupported"}},
        {"unavailable", {ErrorCode::UnsupportedFeature, "libarchive: unsupported"}},
    };
    for (const auto& rule : kRules) {
        if (text.find(rule.part) != std::string_view::npos)
            return rule.error;
    }
    return {ErrorCode::Corrupt, "libarchive: damaged"};
}

}

LibarchiveSession::LibarchiveSession(const LibarchiveFormat& format, LibarchiveInput input, const Limits& limits)
    : m_format(format)
    , m_input(std::move(input))
    , m_limits(limits)
{
}

LibarchiveSession::~LibarchiveSession()
{
    if (m_reader)
        archive_read_free(m_reader);
}

Result<std::unique_ptr<LibarchiveSession>> LibarchiveSession::start(const LibarchiveFormat& format,
                                                                    LibarchiveInput input, const Limits& limits)
{
    useUtf8ForLibraries();
    std::unique_ptr<LibarchiveSession> session(new LibarchiveSession(format, std::move(input), limits));
    session->m_reader = archive_read_new();
    if (!session->m_reader)
        return Error{ErrorCode::OutOfMemory, "libarchive: no reader"};
    if (format.enable(session->m_reader) < ARCHIVE_WARN)
        return Error{ErrorCode::UnsupportedFeature, "libarchive: built without this format"};
    session->m_input.attach(session->m_reader);
    if (archive_read_open1(session->m_reader) < ARCHIVE_WARN)
        return session->lastError();
    return session;
}

Error LibarchiveSession::lastError() const
{
    if (m_input.failure())
        return *m_input.failure();
    if (archive_errno(m_reader) == ENOMEM)
        return {ErrorCode::OutOfMemory, "libarchive: out of memory"};
    const char* text = archive_error_string(m_reader);
    return errorFromText(text ? text : "");
}

Result<void> LibarchiveSession::countHeader()
{
    if (++m_headers > m_limits.entries)
        return Error{ErrorCode::LimitExceeded, "libarchive: too many entries"};
    const auto bytes = m_input.sourceSize().value_or(m_input.consumed());
    if (m_headers > kFreeHeaders && (m_headers - kFreeHeaders) * m_format.leastBytesPerEntry > bytes)
        return Error{ErrorCode::Stalled, "libarchive: more headers than the input can hold"};
    return {};
}

Result<archive_entry*> LibarchiveSession::nextHeader()
{
    for (;;) {
        archive_entry* entry = nullptr;
        const int status = archive_read_next_header(m_reader, &entry);
        if (m_input.failure()) // whatever libarchive makes of it, even an end
            return *m_input.failure();
        if (status == ARCHIVE_EOF)
            return nullptr;
        if (status <= ARCHIVE_FATAL)
            return lastError();
        TRY(countHeader());
        if (status == ARCHIVE_OK || status == ARCHIVE_WARN)
            return entry;
        if (!m_skippedHeader)
            m_skippedHeader = lastError();
    }
}

std::uint64_t LibarchiveSession::headerPosition() const
{
    return static_cast<std::uint64_t>(std::max<la_int64_t>(archive_read_header_position(m_reader), 0));
}

Result<std::optional<LibarchiveSession::Block>> LibarchiveSession::nextBlock()
{
    const void* data = nullptr;
    std::size_t size = 0;
    la_int64_t position = 0;
    const int status = archive_read_data_block(m_reader, &data, &size, &position);
    if (status == ARCHIVE_EOF && !m_input.failure())
        return std::nullopt;
    if (status < ARCHIVE_WARN || m_input.failure()) {
        m_isDead = status <= ARCHIVE_FATAL || m_input.failure();
        return lastError();
    }
    if (position < 0)
        return Error{ErrorCode::Corrupt, "libarchive: negative position"};
    return Block{{static_cast<const std::byte*>(data), size}, static_cast<std::uint64_t>(position)};
}

}
