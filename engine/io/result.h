#pragma once

#include <cassert>
#include <cstdint>
#include <new>
#include <type_traits>
#include <utility>
#include <variant>

namespace vantoro {

/// The closed list of reasons that callers switch on. Each has one plain sentence: see describe().
/// The order is part of the worker protocol: append only.
enum class ErrorCode : std::uint8_t {
    Internal, ///< our own code or a library failed in a way that says nothing about the archive
    Cancelled, ///< the user or a signal asked to stop
    Io, ///< reading the archive failed; osError tells why
    NotAnArchive, ///< no reader knows the file
    Truncated, ///< the input ends too early
    Corrupt, ///< the input contradicts itself
    ChecksumMismatch, ///< decoded data do not have the stored checksum
    SizeMismatch, ///< decoded data are shorter or longer than declared
    UnsupportedMethod, ///< a compression method that no decoder here knows
    UnsupportedEncryption, ///< an encryption scheme that is recognised but cannot be undone
    UnsupportedFeature, ///< anything else of the format that is recognised but not read
    PasswordNeeded, ///< encrypted, and nobody gave a password
    WrongPassword, ///< the password is wrong, or the data are damaged and that cannot be told apart
    MissingVolume, ///< a part of a multi-part set is not there
    LimitExceeded, ///< a Limits value was passed (dictionary, header size, entries, depth)
    OutOfMemory,
    DecoderStopped, ///< the worker process died or was stopped
    Stalled, ///< the decoder produced nothing for too long
    OverlappingEntries, ///< entries share packed data: a bomb or a forged directory
    // What extract/ adds.
    UnsafeName, ///< ".." or NUL in a name, no name, too long or too deep
    UnsafeLink, ///< a link that leads out of the destination, or an entry beneath a link
    UnsupportedKind, ///< device, FIFO, socket
    EntryRefused, ///< said by a receiver: drop the rest of this entry and go on
    AlreadyExists,
    NoSpace, ///< disk or quota full
    WriteFailed, ///< any other failure of the destination; osError tells why
    NotWritable, ///< the destination folder cannot be written to
    DestinationGone, ///< the destination folder vanished while extracting
    BombRefused, ///< the archive would grow out of proportion, and the user said no or could not be asked
    EncodingNeeded, ///< names cannot be decoded with confidence, and the user could not be asked or stopped
    // What write/ adds.
    SourceUnreadable, ///< a file to be archived cannot be read
    UnsupportedKindOfArchive, ///< no writer for that kind
    TrailingData, ///< everything came out as stored, but something unknown follows the end of the compressed data
    ProgramReplaced, ///< the worker program is of another build than this process
};
constexpr unsigned kErrorCodes = static_cast<unsigned>(ErrorCode::ProgramReplaced) + 1;

/// Why an engine call failed. Trivially copyable, so that failing costs no allocation.
struct Error {
    ErrorCode code = ErrorCode::Internal;
    const char* what = ""; ///< static text for the log: "zip: local header past the end"; never shown to the user
    int osError = 0; ///< errno where a system call failed
    std::uint64_t wanted = 0; ///< bytes of memory that LimitExceeded is about, where they are known
};

/// A plain English sentence without a name, e.g. "the password is wrong"; never empty.
const char* describe(ErrorCode code);

/// A value or the reason why there is none, with the names of std::expected.
template <class T> class [[nodiscard]] Result {
public:
    Result(T value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : m_state(std::in_place_index<1>, error) {}
    template <class U>
    requires(
        std::is_convertible_v<
            U&&,
            T> && !std::is_same_v<std::remove_cvref_t<U>, T> && !std::is_same_v<std::remove_cvref_t<U>, Error> && !std::is_same_v<std::remove_cvref_t<U>, Result>)
        Result(U&& value)
        : m_state(std::in_place_index<0>, std::forward<U>(value))
    {
    }

    bool has_value() const { return m_state.index() == 0; }
    explicit operator bool() const { return has_value(); }
    T& value() & { return *std::get_if<0>(&m_state); }
    const T& value() const& { return *std::get_if<0>(&m_state); }
    T&& value() && { return std::move(*std::get_if<0>(&m_state)); }
    T& operator*() & { return value(); }
    const T& operator*() const& { return value(); }
    T&& operator*() && { return std::move(*this).value(); }
    T* operator->() { return &value(); }
    const T* operator->() const { return &value(); }
    const Error& error() const
    {
        assert(!has_value());
        return *std::get_if<1>(&m_state);
    }
    template <class U> T value_or(U&& other) const&
    {
        return has_value() ? value() : static_cast<T>(std::forward<U>(other));
    }

private:
    std::variant<T, Error> m_state;
};

template <> class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : m_error(error), m_failed(true) {}
    bool has_value() const { return !m_failed; }
    explicit operator bool() const { return has_value(); }
    void value() const {}
    const Error& error() const
    {
        assert(m_failed);
        return m_error;
    }

private:
    Error m_error;
    bool m_failed = false;
};

namespace detail {
template <class T> T unwrap(Result<T>&& result) { return std::move(result).value(); }
inline void unwrap(Result<void>&&) {}
}

/// The value of a Result, or return its Error from the enclosing function.
#define TRY(...)                                                                                                       \
    __extension__({                                                                                                    \
        auto tryResult = (__VA_ARGS__);                                                                                \
        if (!tryResult) [[unlikely]]                                                                                   \
            return tryResult.error();                                                                                  \
        ::vantoro::detail::unwrap(std::move(tryResult));                                                               \
    })

/// Runs what may throw (foreign code, callbacks, thread entries) and turns an exception into an Error.
template <class F> auto guarded(F&& f) noexcept -> decltype(f())
{
    try {
        return f();
    } catch (const std::bad_alloc&) {
        return Error{ErrorCode::OutOfMemory, "out of memory"};
    } catch (...) {
        return Error{ErrorCode::Internal, "foreign exception"};
    }
}

}
