#pragma once

#include "engine/io/bytes.h"

#include <array>

namespace vantoro {

/// The classic cipher of zip: three 32-bit keys stirred by every plain byte.
class ZipCipher {
public:
    static constexpr std::size_t kHeaderSize = 12; ///< random bytes in front of the data; the last is a check byte

    explicit ZipCipher(std::string_view password);
    void decrypt(Bytes bytes);
    void encrypt(Bytes bytes);

private:
    void stir(std::uint8_t plain);
    std::uint8_t keyByte() const;
    std::uint32_t m_key0 = 0x12345678, m_key1 = 0x23456789, m_key2 = 0x34567890;
};

}
