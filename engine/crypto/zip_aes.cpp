#include "engine/crypto/zip_aes.h"

#include "engine/crypto/late_openssl.h"

#include "engine/io/secret.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr unsigned kRounds = 1000;
constexpr std::size_t kAesBlock = 16, kPadSize = 4096;

std::size_t keySize(unsigned strength) { return 8 + 8 * strength; }

const EVP_CIPHER* cipherFor(unsigned strength)
{
    return strength == 1 ? EVP_aes_128_ecb() : strength == 2 ? EVP_aes_192_ecb() : EVP_aes_256_ecb();
}

}

struct ZipAes::State {
    EVP_CIPHER_CTX* context = nullptr; // made when first needed: OpenSSL is loaded late
    unsigned contextStrength = 0; // the cipher that the context is set up for
    HmacSha1 hmac{{}};
    std::uint64_t counter = 0; // of the last block of the pad
    std::array<std::byte, kPadSize> pad;
    std::size_t padUsed = kPadSize;

    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State()
    {
        if (context)
            EVP_CIPHER_CTX_free(context);
        wipe(pad.data(), pad.size());
    }

    /// Encrypts the next counters.
    bool fillPad(std::size_t wanted)
    {
        const auto size = std::min(kPadSize, (wanted + kAesBlock - 1) / kAesBlock * kAesBlock);
        const auto start = kPadSize - size;
        for (auto at = start; at < kPadSize; at += kAesBlock) {
            ++counter;
            for (std::size_t i = 0; i < 8; ++i)
                pad[at + i] = static_cast<std::byte>(counter >> 8 * i);
            std::fill_n(pad.begin() + static_cast<std::ptrdiff_t>(at) + 8, 8, std::byte{0});
        }
        auto* bytes = reinterpret_cast<unsigned char*>(pad.data() + start);
        int written = 0;
        padUsed = start;
        return EVP_EncryptUpdate(context, bytes, &written, bytes, static_cast<int>(size)) == 1;
    }
};

ZipAes::ZipAes() : m_state(std::make_unique<State>()) {}
ZipAes::~ZipAes() = default;
ZipAes::ZipAes(ZipAes&&) noexcept = default;
ZipAes& ZipAes::operator=(ZipAes&&) noexcept = default;

std::array<std::byte, ZipAes::kCheckSize> ZipAes::check(std::string_view password, ConstBytes salt, unsigned strength)
{
    std::array<std::byte, kCheckSize> bytes;
    pbkdf2Sha1(asBytes(password), salt, kRounds, bytes, 2 * keySize(strength));
    return bytes;
}

Result<void> ZipAes::derive(std::string_view password, ConstBytes salt, unsigned strength,
                            std::array<std::byte, kCheckSize>& check)
{
    auto& state = *m_state;
    if (!state.context && opensslLibrary.load())
        state.context = EVP_CIPHER_CTX_new();
    if (!state.context)
        return Error{ErrorCode::Internal, "zip: AES is not available"};
    std::array<std::byte, std::size_t{2} * 32 + kCheckSize> derived;
    const auto size = keySize(strength);
    const auto used = Bytes(derived).first(2 * size + kCheckSize);
    pbkdf2Sha1(asBytes(password), salt, kRounds, used);
    std::copy(used.end() - kCheckSize, used.end(), check.begin());
    state.hmac = HmacSha1(used.subspan(size, size));
    const auto* cipher = state.contextStrength == strength ? nullptr : cipherFor(strength);
    const auto* key = reinterpret_cast<const unsigned char*>(derived.data());
    const bool isSetUp = EVP_EncryptInit_ex(state.context, cipher, nullptr, key, nullptr) == 1
        && EVP_CIPHER_CTX_set_padding(state.context, 0) == 1;
    wipe(derived.data(), derived.size());
    if (!isSetUp)
        return Error{ErrorCode::Internal, "zip: AES is not available"};
    state.contextStrength = strength;
    state.counter = 0;
    state.padUsed = kPadSize;
    return {};
}

Result<bool> ZipAes::start(std::string_view password, ConstBytes salt, ConstBytes check, unsigned strength)
{
    std::array<std::byte, kCheckSize> derived{};
    TRY(derive(password, salt, strength, derived));
    return std::equal(check.begin(), check.end(), derived.begin(), derived.end());
}

Result<std::array<std::byte, ZipAes::kCheckSize>> ZipAes::startEncryption(std::string_view password, ConstBytes salt,
                                                                          unsigned strength)
{
    std::array<std::byte, kCheckSize> check{};
    TRY(derive(password, salt, strength, check));
    return check;
}

Result<void> ZipAes::applyPad(Bytes bytes)
{
    auto& state = *m_state;
    while (!bytes.empty()) {
        if (state.padUsed == kPadSize && !state.fillPad(bytes.size()))
            return Error{ErrorCode::Internal, "zip: AES failed"};
        const auto part = std::min(bytes.size(), kPadSize - state.padUsed);
        for (std::size_t i = 0; i < part; ++i)
            bytes[i] ^= state.pad[state.padUsed + i];
        state.padUsed += part;
        bytes = bytes.subspan(part);
    }
    return {};
}

Result<void> ZipAes::decrypt(Bytes bytes)
{
    m_state->hmac.update(bytes);
    return applyPad(bytes);
}

Result<void> ZipAes::encrypt(Bytes bytes)
{
    TRY(applyPad(bytes));
    m_state->hmac.update(bytes);
    return {};
}

std::array<std::byte, ZipAes::kCodeSize> ZipAes::code()
{
    const auto digest = m_state->hmac.finish();
    std::array<std::byte, kCodeSize> result;
    std::copy_n(digest.begin(), result.size(), result.begin());
    return result;
}

bool ZipAes::isAuthentic(ConstBytes code)
{
    const auto digest = m_state->hmac.finish();
    unsigned difference = code.size() == kCodeSize ? 0 : 1;
    for (std::size_t i = 0; i < std::min(code.size(), kCodeSize); ++i)
        difference |= std::to_integer<unsigned>(code[i] ^ digest[i]);
    return difference == 0;
}

}
