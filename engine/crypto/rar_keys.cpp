#include "engine/crypto/rar_keys.h"

// The block functions below the EVP layer: the derivations make hundreds of thousands of tiny calls.
#include "engine/crypto/late_openssl.h"
#include "engine/io/secret.h"

#include <algorithm>
#include <bit>
#include <vector>

namespace vantoro {

namespace {

constexpr std::size_t kSha1Block = 64;
constexpr std::uint32_t kRar3Rounds = 0x40000;
constexpr std::uint32_t kRar3RoundsPerIvByte = kRar3Rounds / 16;
constexpr std::size_t kMaxPassword = 127; // characters

/// UTF-16LE without terminator; what is not UTF-8 goes byte by byte.
std::vector<std::uint8_t> utf16Password(std::string_view utf8)
{
    std::vector<std::uint8_t> out;
    const auto put = [&](std::uint32_t unit) {
        if (out.size() < 2 * kMaxPassword) {
            out.push_back(static_cast<std::uint8_t>(unit));
            out.push_back(static_cast<std::uint8_t>(unit >> 8));
        }
    };
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<std::uint8_t>(utf8[i++]);
        const unsigned more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
        std::uint32_t code = more == 0 ? lead : lead & (0x3FU >> more);
        for (unsigned k = 0; k < more && i < utf8.size(); ++k)
            code = code << 6 | (static_cast<std::uint8_t>(utf8[i++]) & 0x3F);
        if (code < 0x10000) {
            put(code);
        } else {
            put(0xD800 + ((code - 0x10000) >> 10));
            put(0xDC00 + (code & 0x3FF));
        }
    }
    return out;
}

/// The last 16 words of SHA-1's message schedule for `block`, each little-endian, in its place. Packers have a fault
/// that overwrites a long password so while it is hashed, and every reader must do the same.
void overwriteWithSchedule(std::uint8_t* block)
{
    std::array<std::uint32_t, 80> words;
    for (std::size_t i = 0; i < 16; ++i)
        words[i] = static_cast<std::uint32_t>(block[4 * i]) << 24 | static_cast<std::uint32_t>(block[4 * i + 1]) << 16
            | static_cast<std::uint32_t>(block[4 * i + 2]) << 8 | block[4 * i + 3];
    for (std::size_t i = 16; i < words.size(); ++i)
        words[i] = std::rotl(words[i - 3] ^ words[i - 8] ^ words[i - 14] ^ words[i - 16], 1);
    for (std::size_t i = 0; i < 16; ++i) {
        for (std::size_t k = 0; k < 4; ++k)
            block[4 * i + k] = static_cast<std::uint8_t>(words[64 + i] >> (8 * k));
    }
}

/// HMAC-SHA-256 with the key's two blocks hashed beforehand: two block operations a call.
class KeyedSha256 {
public:
    explicit KeyedSha256(std::string_view key)
    {
        std::array<std::uint8_t, SHA256_CBLOCK> block{};
        if (key.size() > block.size())
            SHA256(reinterpret_cast<const unsigned char*>(key.data()), key.size(), block.data());
        else
            std::copy(key.begin(), key.end(), block.begin());
        for (auto& byte : block)
            byte ^= 0x36;
        SHA256_Init(&m_inner);
        SHA256_Update(&m_inner, block.data(), block.size());
        for (auto& byte : block)
            byte ^= 0x36 ^ 0x5C;
        SHA256_Init(&m_outer);
        SHA256_Update(&m_outer, block.data(), block.size());
        wipe(block.data(), block.size());
    }
    ~KeyedSha256()
    {
        wipe(&m_inner, sizeof m_inner);
        wipe(&m_outer, sizeof m_outer);
    }
    KeyedSha256(const KeyedSha256&) = delete;
    KeyedSha256& operator=(const KeyedSha256&) = delete;

    std::array<std::uint8_t, 32> operator()(std::span<const std::uint8_t> data) const
    {
        std::array<std::uint8_t, 32> digest;
        auto context = m_inner;
        SHA256_Update(&context, data.data(), data.size());
        SHA256_Final(digest.data(), &context);
        context = m_outer;
        SHA256_Update(&context, digest.data(), digest.size());
        SHA256_Final(digest.data(), &context);
        return digest;
    }

private:
    SHA256_CTX m_inner, m_outer;
};

std::span<const std::uint8_t> octets(ConstBytes bytes)
{
    return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}

}

Result<Rar3Key> deriveRar3Key(std::string_view password, ConstBytes salt)
{
    auto seed = utf16Password(password);
    for (const auto byte : salt)
        seed.push_back(std::to_integer<std::uint8_t>(byte));

    Rar3Key result;
    SHA_CTX context;
    SHA1_Init(&context);
    std::array<std::uint8_t, SHA_DIGEST_LENGTH> digest;
    std::size_t hashed = 0;
    for (std::uint32_t round = 0; round < kRar3Rounds; ++round) {
        SHA1_Update(&context, seed.data(), seed.size());
        for (auto at = kSha1Block - hashed % kSha1Block; at + kSha1Block <= seed.size(); at += kSha1Block)
            overwriteWithSchedule(seed.data() + at);
        const std::array<std::uint8_t, 3> counter{static_cast<std::uint8_t>(round),
                                                  static_cast<std::uint8_t>(round >> 8),
                                                  static_cast<std::uint8_t>(round >> 16)};
        SHA1_Update(&context, counter.data(), counter.size());
        hashed += seed.size() + counter.size();
        if (round % kRar3RoundsPerIvByte == 0) {
            auto copy = context;
            SHA1_Final(digest.data(), &copy);
            result.iv[round / kRar3RoundsPerIvByte] = std::byte{digest[19]};
        }
    }
    SHA1_Final(digest.data(), &context);
    for (std::size_t i = 0; i < result.key.size(); ++i)
        result.key[i] = std::byte{digest[i / 4 * 4 + 3 - i % 4]};
    wipe(seed.data(), seed.size());
    return result;
}

Result<Rar5Key> deriveRar5Key(std::string_view password, ConstBytes salt, unsigned exponent, const CancelToken& cancel)
{
    assert(exponent <= kRar5MaxExponent);
    constexpr std::size_t kMaxPasswordBytes = kMaxPassword * 4;
    const KeyedSha256 hmac(password.substr(0, kMaxPasswordBytes));
    std::vector<std::uint8_t> first(octets(salt).begin(), octets(salt).end());
    first.insert(first.end(), {0, 0, 0, 1});
    auto link = hmac(first);
    auto sum = link;

    // One chain of rounds: the key, 16 rounds later the key for checksums, 16 later the check value.
    Rar5Key result;
    const std::uint32_t keyAt = 1U << exponent;
    for (std::uint32_t round = 1;; ++round) {
        const auto* const bytes = reinterpret_cast<const std::byte*>(sum.data());
        if (round == keyAt)
            std::copy_n(bytes, sum.size(), result.key.begin());
        if (round == keyAt + 16)
            std::copy_n(bytes, sum.size(), result.hashKey.begin());
        if (round == keyAt + 32)
            break;
        if (round % 4096 == 0)
            TRY(cancel.check());
        link = hmac(link);
        for (std::size_t i = 0; i < sum.size(); ++i)
            sum[i] ^= link[i];
    }
    result.check.fill(std::byte{0});
    for (std::size_t i = 0; i < sum.size(); ++i)
        result.check[i % 8] ^= std::byte{sum[i]};
    wipe(sum.data(), sum.size());
    return result;
}

std::optional<bool> matchesRar5Check(const Rar5Key& key, ConstBytes stored)
{
    const auto value = stored.first(8);
    std::array<std::uint8_t, SHA256_DIGEST_LENGTH> digest;
    SHA256(octets(value).data(), value.size(), digest.data());
    if (std::memcmp(digest.data(), stored.data() + 8, 4) != 0
        || std::all_of(value.begin(), value.end(), [](std::byte b) { return b == std::byte{0}; }))
        return std::nullopt;
    return std::equal(value.begin(), value.end(), key.check.begin());
}

std::uint32_t rar5KeyedCrc(const Rar5Key& key, std::uint32_t crc)
{
    const KeyedSha256 hmac(asText(key.hashKey));
    const std::array<std::uint8_t, 4> bytes{static_cast<std::uint8_t>(crc), static_cast<std::uint8_t>(crc >> 8),
                                            static_cast<std::uint8_t>(crc >> 16), static_cast<std::uint8_t>(crc >> 24)};
    const auto digest = hmac(bytes);
    std::uint32_t folded = 0;
    for (std::size_t i = 0; i < digest.size(); ++i)
        folded ^= static_cast<std::uint32_t>(digest[i]) << (8 * (i % 4));
    return folded;
}

std::array<std::byte, 32> rar5KeyedHash(const Rar5Key& key, ConstBytes hash)
{
    const KeyedSha256 hmac(asText(key.hashKey));
    return std::bit_cast<std::array<std::byte, 32>>(hmac(octets(hash)));
}

}
