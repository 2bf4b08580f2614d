#pragma once

#include "engine/formats/zip/entry_reader.h"

namespace vantoro::zip {

/// Finds the password of an archive before anything is written, by the cheapest entry that can prove it.
class Passwords {
public:
    /// Asks until a password fits `chosen`, the entries about to be read; none is asked for when none is encrypted.
    /// The provider's error when there is none to be had.
    Result<void> prepare(const SourcePtr& source, const Directory& directory, const OpenContext& context,
                         std::span<const std::uint64_t> chosen);

    std::string_view text() const { return m_secret.text(); }
    /// A whole entry was decoded with it.
    bool isProven() const { return m_isProven; }

private:
    struct Proof;
    bool tryEncodings(const Proof& proof, const Secret& typed);
    bool fits(const Proof& proof, const Secret& candidate);

    Secret m_secret;
    bool m_isProven = false;
    unsigned m_attempts = 0;
};

}
