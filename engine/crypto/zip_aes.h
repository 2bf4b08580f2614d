#pragma once

#include "engine/crypto/pbkdf2.h"

#include <memory>

namespace vantoro {

/// AES as zip uses it (AE-1 and AE-2): PBKDF2 of 1000 rounds, counter mode with a little-endian counter from 1,
/// HMAC-SHA-1 over the cipher text. Source: the published description of AE-1 and AE-2.
class ZipAes {
public:
    static constexpr std::size_t kCheckSize = 2; ///< password verification, behind the salt
    static constexpr std::size_t kCodeSize = 10; ///< authentication code, behind the data
    static std::size_t saltSize(unsigned strength) { return 4 + 4 * strength; } ///< strength 1 to 3
    /// What a sound password and the salt give, for a quick check before anything is derived in full.
    static std::array<std::byte, kCheckSize> check(std::string_view password, ConstBytes salt, unsigned strength);

    ZipAes();
    ~ZipAes();
    ZipAes(ZipAes&&) noexcept;
    ZipAes& operator=(ZipAes&&) noexcept;

    /// Derives the keys for one entry; false when the two check bytes behind the salt do not fit. Error Internal when
    /// the library has no AES.
    Result<bool> start(std::string_view password, ConstBytes salt, ConstBytes check, unsigned strength);
    /// Takes cipher text into the authentication and turns it into plain text, in place.
    Result<void> decrypt(Bytes bytes);
    /// Derives the keys for an entry to be written; returns the check bytes that stand behind the salt.
    Result<std::array<std::byte, kCheckSize>> startEncryption(std::string_view password, ConstBytes salt,
                                                              unsigned strength);
    /// Turns plain text into cipher text, in place, and takes that into the authentication.
    Result<void> encrypt(Bytes bytes);
    /// The authentication code of all cipher text seen.
    std::array<std::byte, kCodeSize> code();

    /// Whether the code stored behind the data is that of all cipher text seen.
    bool isAuthentic(ConstBytes code);

private:
    Result<void> derive(std::string_view password, ConstBytes salt, unsigned strength,
                        std::array<std::byte, kCheckSize>& check);
    Result<void> applyPad(Bytes bytes);
    struct State;
    std::unique_ptr<State> m_state;
};

}
