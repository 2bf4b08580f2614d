#include "engine/crypto/aes_cbc.h"

#include "engine/crypto/late_openssl.h"

#include <algorithm>
#include <vector>

namespace vantoro {

namespace {

constexpr std::size_t kBlock = 16;

/// The state of one decryption.
class AesCbc {
public:
    AesCbc() : m_context(opensslLibrary.load() ? EVP_CIPHER_CTX_new() : nullptr) {}
    AesCbc(const AesCbc&) = delete;
    AesCbc& operator=(const AesCbc&) = delete;
    ~AesCbc()
    {
        if (m_context)
            EVP_CIPHER_CTX_free(m_context);
    }

    bool start(ConstBytes key, ConstBytes iv)
    {
        if (!m_context)
            return false;
        const auto* const cipher = key.size() == 16 ? EVP_aes_128_cbc()
            : key.size() == 24                      ? EVP_aes_192_cbc()
                                                    : EVP_aes_256_cbc();
        assert(key.size() == static_cast<std::size_t>(EVP_CIPHER_get_key_length(cipher)) && iv.size() == kBlock);
        return EVP_DecryptInit_ex(m_context, cipher, nullptr, reinterpret_cast<const unsigned char*>(key.data()),
                                  reinterpret_cast<const unsigned char*>(iv.data()))
            == 1
            && EVP_CIPHER_CTX_set_padding(m_context, 0) == 1;
    }
    /// `block` is a multiple of 16 bytes.
    bool decrypt(Bytes block)
    {
        constexpr std::size_t kAtOnce = 1 << 30; // OpenSSL counts in int
        while (!block.empty()) {
            const auto part = block.first(std::min(block.size(), kAtOnce));
            auto* const data = reinterpret_cast<unsigned char*>(part.data());
            int done = 0;
            if (EVP_DecryptUpdate(m_context, data, &done, data, static_cast<int>(part.size())) != 1)
                return false;
            block = block.subspan(part.size());
        }
        return true;
    }

private:
    EVP_CIPHER_CTX* m_context;
};

class AesCbcStream final : public ByteStream {
public:
    explicit AesCbcStream(StreamPtr in) : m_in(std::move(in)) {}
    bool start(ConstBytes key, ConstBytes iv) { return m_cipher.start(key, iv); }

    Result<std::size_t> read(Bytes into) override
    {
        // Whole blocks are decrypted where they are wanted, the rest of one is kept.
        if (m_restUsed == m_rest.size() && into.size() >= kBlock) {
            const auto whole = into.first(into.size() / kBlock * kBlock);
            const auto got = TRY(readFully(*m_in, whole)) / kBlock * kBlock;
            if (!m_cipher.decrypt(whole.first(got)))
                return Error{ErrorCode::Internal, "AES"};
            return got;
        }
        if (m_restUsed == m_rest.size()) {
            m_rest.resize(kBlock);
            const auto got = TRY(readFully(*m_in, m_rest));
            m_rest.resize(got / kBlock * kBlock);
            m_restUsed = 0;
            if (!m_cipher.decrypt(m_rest))
                return Error{ErrorCode::Internal, "AES"};
        }
        const auto count = std::min(into.size(), m_rest.size() - m_restUsed);
        std::copy_n(m_rest.begin() + static_cast<std::ptrdiff_t>(m_restUsed), count, into.begin());
        m_restUsed += count;
        return count;
    }

private:
    StreamPtr m_in;
    AesCbc m_cipher;
    std::vector<std::byte> m_rest;
    std::size_t m_restUsed = 0;
};

}

Result<StreamPtr> openAesCbc(StreamPtr cipherText, ConstBytes key, ConstBytes iv)
{
    auto stream = std::make_unique<AesCbcStream>(std::move(cipherText));
    if (!stream->start(key, iv))
        return Error{ErrorCode::Internal, "AES"};
    return StreamPtr(std::move(stream));
}

Result<void> decryptAesCbc(Bytes block, ConstBytes key, ConstBytes iv)
{
    AesCbc cipher;
    if (!cipher.start(key, iv) || !cipher.decrypt(block))
        return Error{ErrorCode::Internal, "AES"};
    return {};
}

}
