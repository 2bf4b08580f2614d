#include "engine/crypto/blake2sp.h"
#include "engine/crypto/rar_ciphers.h"
#include "engine/crypto/rar_keys.h"

#include <gtest/gtest.h>

#include <openssl/evp.h>

namespace vantoro {

namespace {

std::string hex(ConstBytes bytes)
{
    std::string text;
    for (const auto byte : bytes) {
        constexpr std::string_view digits = "0123456789abcdef";
        text.push_back(digits[std::to_integer<std::size_t>(byte >> 4)]);
        text.push_back(digits[std::to_integer<std::size_t>(byte & std::byte{15})]);
    }
    return text;
}

std::string unhex(std::string_view text)
{
    std::string bytes;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2)
        bytes.push_back(static_cast<char>(std::stoi(std::string(text.substr(i, 2)), nullptr, 16)));
    return bytes;
}

TEST(RarKeys, rar3DerivationOverwritesLongPasswordsAsPackersDo)
{
    struct Case {
        std::string password, salt, key, iv;
    };
    const std::vector<Case> cases{
        {"password", "00ff00", "a160cb31cb262e9231c0b6fc984fbb0d", "aa54a659fb0c359b30f353a6343fb11d"},
        {std::string(28, 'p'), "1122334455667788", "ffff33ffaf31987c899ccc2f965a8927",
         "bdff6873721b247afa4f978448a5aeef"},
        {std::string(29, 'p'), "1122334455667788", "306cafde28f1ea78c9427c3ec642c0db",
         "173ecdf574c0bfe9e7c23bdfd96fa435"},
        {std::string(127, 'p'), "1122334455667788", "b1bc223609af7d4f3b70e5a254ac2501",
         "302c97945530d7ffa7c551eb2dd21a90"},
    };
    for (const auto& [password, salt, key, iv] : cases) {
        const auto derived = deriveRar3Key(password, asBytes(unhex(salt))).value();
        EXPECT_EQ(hex(derived.key), key) << password;
        EXPECT_EQ(hex(derived.iv), iv) << password;
    }
}

TEST(RarKeys, rar5DerivationIsThreePbkdf2CallsInOne)
{
    const std::string password = "p\xC3\xA4ssword";
    const std::string salt = "0123456789abcdef";
    const auto derived = deriveRar5Key(password, asBytes(salt), 10, {}).value();
    const auto expected = [&](int rounds) {
        std::array<std::byte, 32> out;
        PKCS5_PBKDF2_HMAC(password.data(), static_cast<int>(password.size()),
                          reinterpret_cast<const unsigned char*>(salt.data()), 16, rounds, EVP_sha256(), 32,
                          reinterpret_cast<unsigned char*>(out.data()));
        return out;
    };
    EXPECT_EQ(derived.key, expected(1024));
    EXPECT_EQ(derived.hashKey, expected(1040));
    const auto material = expected(1056);
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(derived.check[i], material[i] ^ material[i + 8] ^ material[i + 16] ^ material[i + 24]);

    CancelToken cancelled;
    cancelled.cancel();
    EXPECT_EQ(deriveRar5Key(password, asBytes(salt), 24, cancelled).error().code, ErrorCode::Cancelled);
}

TEST(RarKeys, aDamagedCheckValueSaysNothing)
{
    const auto key = deriveRar5Key("a", asBytes("0123456789abcdef"), 0, {}).value();
    std::vector<std::byte> stored(12);
    std::copy(key.check.begin(), key.check.end(), stored.begin());
    EXPECT_EQ(matchesRar5Check(key, stored), std::nullopt);
    std::array<unsigned char, 32> digest;
    unsigned length = 0;
    EVP_Digest(stored.data(), 8, digest.data(), &length, EVP_sha256(), nullptr);
    std::memcpy(stored.data() + 8, digest.data(), 4);
    EXPECT_EQ(matchesRar5Check(key, stored), true);
    EXPECT_EQ(matchesRar5Check(deriveRar5Key("b", asBytes("0123456789abcdef"), 0, {}).value(), stored), false);
}

TEST(RarCiphers, rar15DecryptsAKnownText)
{
    const auto cipherText = unhex("2bb9f39c41a6aae71a7a7b");
    auto stream = openRarCipher(RarCipher::Rar15, windowStream(memorySource(cipherText)), "password");
    std::string plain(32, '\0');
    plain.resize(readFully(*stream, std::as_writable_bytes(std::span(plain))).value());
    EXPECT_EQ(plain, "hello world");
}

TEST(Blake2sp, hasThePublishedDigestsHoweverTheDataAreCut)
{
    const auto digestOf = [](std::string_view data, std::size_t step) {
        Blake2sp hash;
        for (std::size_t at = 0; at < data.size(); at += step)
            hash.update(asBytes(data.substr(at, step)));
        return hex(hash.finish());
    };
    EXPECT_EQ(digestOf("", 1), "dd0e891776933f43c7d032b08a917e25741f8aa9a12c12e1cac8801500f2ca4f");
    EXPECT_EQ(digestOf("abc", 1), "70f75b58f1fecab821db43c88ad84edde5a52600616cd22517b7bb14d440a7d5");
    // Around the sizes at which leaves and stripes fill up.
    for (const std::size_t size : {63U, 64U, 65U, 448U, 511U, 512U, 513U, 1023U, 1024U, 1025U, 1536U, 1537U, 5000U}) {
        std::string data(size, '\0');
        for (std::size_t i = 0; i < size; ++i)
            data[i] = static_cast<char>(i * 7 + i / 256);
        const auto whole = digestOf(data, size);
        for (const std::size_t step : {1U, 63U, 64U, 500U, 512U, 1024U, 1030U})
            EXPECT_EQ(digestOf(data, step), whole) << size << " in steps of " << step;
    }
}

}

}
