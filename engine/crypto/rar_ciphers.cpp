#include "engine/crypto/rar_ciphers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <vector>

namespace vantoro {

namespace {

constexpr std::size_t kMaxPassword = 127;

constexpr auto kCrcTable = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        auto value = i;
        for (int bit = 0; bit < 8; ++bit)
            value = value >> 1 ^ ((value & 1) != 0 ? 0xEDB88320 : 0);
        table[i] = value;
    }
    return table;
}();

class Rar14Cipher {
public:
    static constexpr std::size_t kUnit = 1;
    Rar14Cipher(std::uint8_t a, std::uint8_t b, std::uint8_t c) : m_keys{a, b, c} {}
    explicit Rar14Cipher(std::string_view password) : m_keys{}
    {
        for (const auto c : password) {
            const auto byte = static_cast<std::uint8_t>(c);
            m_keys[0] = static_cast<std::uint8_t>(m_keys[0] + byte);
            m_keys[1] ^= byte;
            m_keys[2] = std::rotl(static_cast<std::uint8_t>(m_keys[2] + byte), 1);
        }
    }
    void decrypt(std::span<std::uint8_t> data)
    {
        for (auto& byte : data) {
            m_keys[1] = static_cast<std::uint8_t>(m_keys[1] + m_keys[2]);
            m_keys[0] = static_cast<std::uint8_t>(m_keys[0] + m_keys[1]);
            byte = static_cast<std::uint8_t>(byte - m_keys[0]);
        }
    }

private:
    std::array<std::uint8_t, 3> m_keys;
};

class Rar15Cipher {
public:
    static constexpr std::size_t kUnit = 1;
    explicit Rar15Cipher(std::string_view password)
    {
        std::uint32_t crc = 0xFFFFFFFF;
        for (const auto c : password)
            crc = crc >> 8 ^ kCrcTable[(crc ^ static_cast<std::uint8_t>(c)) & 0xFF];
        m_keys = {static_cast<std::uint16_t>(crc), static_cast<std::uint16_t>(crc >> 16), 0, 0};
        for (const auto c : password) {
            const auto byte = static_cast<std::uint8_t>(c);
            m_keys[2] = static_cast<std::uint16_t>(m_keys[2] ^ byte ^ kCrcTable[byte]);
            m_keys[3] = static_cast<std::uint16_t>(m_keys[3] + byte + (kCrcTable[byte] >> 16));
        }
    }
    void decrypt(std::span<std::uint8_t> data)
    {
        for (auto& byte : data) {
            m_keys[0] = static_cast<std::uint16_t>(m_keys[0] + 0x1234);
            const auto entry = kCrcTable[(m_keys[0] & 0x1FE) >> 1];
            m_keys[1] = static_cast<std::uint16_t>(m_keys[1] ^ entry);
            m_keys[2] = static_cast<std::uint16_t>(m_keys[2] - (entry >> 16));
            m_keys[0] ^= m_keys[2];
            m_keys[3] = static_cast<std::uint16_t>(std::rotr(m_keys[3], 1) ^ m_keys[1]);
            m_keys[3] = std::rotr(m_keys[3], 1);
            m_keys[0] ^= m_keys[3];
            byte = static_cast<std::uint8_t>(byte ^ m_keys[0] >> 8);
        }
    }

private:
    std::array<std::uint16_t, 4> m_keys{};
};

constexpr std::array<std::uint8_t, 256> kStartTable{
    215, 19,  149, 35,  73,  197, 192, 205, 249, 28,  16,  119, 48,  221, 2,   42,  232, 1,   177, 233, 14,  88,
    219, 25,  223, 195, 244, 90,  87,  239, 153, 137, 255, 199, 147, 70,  92,  66,  246, 13,  216, 40,  62,  29,
    217, 230, 86,  6,   71,  24,  171, 196, 101, 113, 218, 123, 93,  91,  163, 178, 202, 67,  44,  235, 107, 250,
    75,  234, 49,  167, 125, 211, 83,  114, 157, 144, 32,  193, 143, 36,  158, 124, 247, 187, 89,  214, 141, 47,
    121, 228, 61,  130, 213, 194, 174, 251, 97,  110, 54,  229, 115, 57,  152, 94,  105, 243, 212, 55,  209, 245,
    63,  11,  164, 200, 31,  156, 81,  176, 227, 21,  76,  99,  139, 188, 127, 17,  248, 51,  207, 120, 189, 210,
    8,   226, 41,  72,  183, 203, 135, 165, 166, 60,  98,  7,   122, 38,  155, 170, 69,  172, 252, 238, 39,  134,
    59,  128, 236, 27,  240, 80,  131, 3,   85,  206, 145, 79,  154, 142, 159, 220, 201, 133, 74,  64,  20,  129,
    224, 185, 138, 103, 173, 182, 43,  34,  254, 82,  198, 151, 231, 180, 58,  10,  118, 26,  102, 12,  50,  132,
    22,  191, 136, 111, 162, 179, 45,  4,   148, 108, 161, 56,  78,  126, 242, 222, 15,  175, 146, 23,  33,  241,
    181, 190, 77,  225, 0,   46,  169, 186, 68,  95,  237, 65,  53,  208, 253, 168, 9,   18,  100, 52,  116, 184,
    160, 96,  109, 37,  30,  106, 140, 104, 150, 5,   204, 117, 112, 84,
};

/// A block cipher of 32 rounds whose keys change with every block of cipher text.
class Rar20Cipher {
public:
    static constexpr std::size_t kUnit = 16;
    explicit Rar20Cipher(std::string_view password) : m_table(kStartTable)
    {
        std::vector<std::uint8_t> padded(password.begin(), password.end());
        padded.resize((password.size() + kUnit) / kUnit * kUnit); // a zero follows the last byte in any case
        for (unsigned j = 0; j < 256; ++j) {
            for (std::size_t i = 0; i < password.size(); i += 2) {
                auto a = static_cast<std::uint8_t>(kCrcTable[(padded[i] - j) & 0xFF]);
                const auto b = static_cast<std::uint8_t>(kCrcTable[(padded[i + 1] + j) & 0xFF]);
                for (std::size_t k = 1; a != b; ++a, ++k)
                    std::swap(m_table[a], m_table[(a + i + k) & 0xFF]);
            }
        }
        for (std::size_t i = 0; i < (password.size() + kUnit - 1) / kUnit * kUnit; i += kUnit)
            transform(std::span(padded).subspan(i, kUnit), Direction::Encrypt);
    }
    void decrypt(std::span<std::uint8_t> data)
    {
        for (std::size_t i = 0; i + kUnit <= data.size(); i += kUnit)
            transform(data.subspan(i, kUnit), Direction::Decrypt);
    }

private:
    enum class Direction : std::uint8_t { Encrypt, Decrypt };
    using Block = std::array<std::uint32_t, 4>;

    std::uint32_t substitute(std::uint32_t word) const
    {
        return m_table[word & 0xFF] | static_cast<std::uint32_t>(m_table[word >> 8 & 0xFF]) << 8
            | static_cast<std::uint32_t>(m_table[word >> 16 & 0xFF]) << 16
            | static_cast<std::uint32_t>(m_table[word >> 24]) << 24;
    }
    static std::uint32_t load(std::span<const std::uint8_t> data, std::size_t word)
    {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i)
            value |= static_cast<std::uint32_t>(data[4 * word + i]) << (8 * i);
        return value;
    }
    void transform(std::span<std::uint8_t> data, Direction direction)
    {
        std::array<std::uint8_t, kUnit> cipherText;
        std::copy(data.begin(), data.end(), cipherText.begin());
        Block words;
        for (std::size_t i = 0; i < 4; ++i)
            words[i] = load(data, i) ^ m_keys[i];
        for (std::size_t i = 0; i < 32; ++i) {
            const auto key = m_keys[(direction == Direction::Encrypt ? i : 31 - i) & 3];
            const auto t = (words[2] + std::rotl(words[3], 11)) ^ key;
            const auto u = (words[3] ^ std::rotl(words[2], 17)) + key;
            words = {words[2], words[3], words[0] ^ substitute(t), words[1] ^ substitute(u)};
        }
        words = {words[2] ^ m_keys[0], words[3] ^ m_keys[1], words[0] ^ m_keys[2], words[1] ^ m_keys[3]};
        for (std::size_t i = 0; i < kUnit; ++i)
            data[i] = static_cast<std::uint8_t>(words[i / 4] >> (8 * (i % 4)));
        if (direction == Direction::Encrypt)
            std::copy(data.begin(), data.end(), cipherText.begin());
        for (std::size_t i = 0; i < kUnit; ++i)
            m_keys[i % 4] ^= kCrcTable[cipherText[i]];
    }

    std::array<std::uint8_t, 256> m_table;
    Block m_keys{0xD3A3B879, 0x3F6D12F7, 0x7515A235, 0xA4E7F123};
};

template <class Cipher> class CipherStream final : public ByteStream {
public:
    CipherStream(StreamPtr in, Cipher cipher) : m_in(std::move(in)), m_cipher(std::move(cipher)) {}

    Result<std::size_t> read(Bytes into) override
    {
        if (m_used == m_ready.size()) {
            m_ready.resize(kBuffer);
            const auto got = TRY(readFully(*m_in, Bytes(reinterpret_cast<std::byte*>(m_ready.data()), kBuffer)));
            m_ready.resize(got / Cipher::kUnit * Cipher::kUnit);
            m_used = 0;
            m_cipher.decrypt(m_ready);
        }
        const auto count = std::min(into.size(), m_ready.size() - m_used);
        if (count > 0)
            std::memcpy(into.data(), m_ready.data() + m_used, count);
        m_used += count;
        return count;
    }

private:
    static constexpr std::size_t kBuffer = 64 << 10;
    StreamPtr m_in;
    Cipher m_cipher;
    std::vector<std::uint8_t> m_ready;
    std::size_t m_used = 0;
};

template <class Cipher> StreamPtr cipherStream(StreamPtr in, Cipher cipher)
{
    return std::make_unique<CipherStream<Cipher>>(std::move(in), std::move(cipher));
}

}

StreamPtr openRarCipher(RarCipher cipher, StreamPtr cipherText, std::string_view password)
{
    password = password.substr(0, std::min(password.find('\0'), kMaxPassword));
    switch (cipher) {
    case RarCipher::Rar14:
        return cipherStream(std::move(cipherText), Rar14Cipher(password));
    case RarCipher::Rar15:
        return cipherStream(std::move(cipherText), Rar15Cipher(password));
    default:
        return cipherStream(std::move(cipherText), Rar20Cipher(password));
    }
}

StreamPtr openRar14CommentCipher(StreamPtr cipherText)
{
    return cipherStream(std::move(cipherText), Rar14Cipher(0, 7, 77));
}

}
