#pragma once

#include "engine/crypto/zip_aes.h"
#include "engine/crypto/zip_cipher.h"
#include "engine/io/secret.h"

#include <optional>
#include <vector>

namespace vantoro {

/// Encrypts the data of one zip entry: AES-256 (AE-2), or the old cipher.
class ZipEncryption {
public:
    /// `checksum`: CRC-32 of the plain data, whose highest byte is the old cipher's check; AES does not look at it.
    static Result<ZipEncryption> start(const Secret& password, bool isClassic, std::uint32_t checksum);
    /// What stands in front of the data: salt and check, or the old cipher's twelve bytes.
    const std::vector<std::byte>& header() const { return m_header; }
    Result<void> encrypt(Bytes data);
    /// What stands behind them: the authentication code, or nothing.
    std::vector<std::byte> footer();

private:
    ZipEncryption() = default;
    std::vector<std::byte> m_header;
    std::optional<ZipAes> m_aes;
    std::optional<ZipCipher> m_classic;
};

}
