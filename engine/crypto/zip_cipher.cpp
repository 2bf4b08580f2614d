#include "engine/crypto/zip_cipher.h"

namespace vantoro {

namespace {

constexpr auto kCrcTable = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        auto crc = i;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320 : crc >> 1;
        table[i] = crc;
    }
    return table;
}();

std::uint32_t crcStep(std::uint32_t crc, std::uint32_t byte) { return crc >> 8 ^ kCrcTable[(crc ^ byte) & 0xFF]; }

}

ZipCipher::ZipCipher(std::string_view password)
{
    for (const auto c : password)
        stir(static_cast<std::uint8_t>(c));
}

inline void ZipCipher::stir(std::uint8_t plain)
{
    m_key0 = crcStep(m_key0, plain);
    m_key1 = (m_key1 + (m_key0 & 0xFF)) * 134775813 + 1;
    m_key2 = crcStep(m_key2, m_key1 >> 24);
}

inline std::uint8_t ZipCipher::keyByte() const
{
    const auto t = (m_key2 | 2) & 0xFFFF;
    return static_cast<std::uint8_t>((t * (t ^ 1)) >> 8);
}

// Both work on a copy with its keys in registers: the object cannot alias the data then.

void ZipCipher::decrypt(Bytes bytes)
{
    auto local = *this;
    for (auto& byte : bytes) {
        const auto plain = static_cast<std::uint8_t>(std::to_integer<std::uint8_t>(byte) ^ local.keyByte());
        local.stir(plain);
        byte = static_cast<std::byte>(plain);
    }
    *this = local;
}

void ZipCipher::encrypt(Bytes bytes)
{
    auto local = *this;
    for (auto& byte : bytes) {
        const auto plain = std::to_integer<std::uint8_t>(byte);
        byte = static_cast<std::byte>(plain ^ local.keyByte());
        local.stir(plain);
    }
    *this = local;
}

}
