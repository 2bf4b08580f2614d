#pragma once

#include "engine/io/bytes.h"
#include "engine/io/cancel.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vantoro {

/// What rar 2.9 to 4 derive from a password for AES-128 in CBC mode.
struct Rar3Key {
    std::array<std::byte, 16> key, iv;
};
/// `password` is UTF-8, `salt` has 8 bytes or none. Takes some 262,144 rounds of SHA-1.
Result<Rar3Key> deriveRar3Key(std::string_view password, ConstBytes salt);

/// What rar 5 derives from a password: AES-256 in CBC mode, and keyed checksums.
struct Rar5Key {
    std::array<std::byte, 32> key;
    std::array<std::byte, 32> hashKey;
    std::array<std::byte, 8> check;
};
inline constexpr unsigned kRar5MaxExponent = 24;
/// 2^exponent rounds of PBKDF2-HMAC-SHA-256 over the UTF-8 password. `exponent` is at most kRar5MaxExponent.
Result<Rar5Key> deriveRar5Key(std::string_view password, ConstBytes salt, unsigned exponent, const CancelToken& cancel);
/// Compares the check value of a header (12 bytes); nothing when the header's is damaged and says nothing.
std::optional<bool> matchesRar5Check(const Rar5Key& key, ConstBytes stored);

/// Keyed checksums of rar 5.
std::uint32_t rar5KeyedCrc(const Rar5Key& key, std::uint32_t crc);
std::array<std::byte, 32> rar5KeyedHash(const Rar5Key& key, ConstBytes hash);

}
