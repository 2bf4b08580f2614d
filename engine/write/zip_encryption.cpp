#include "engine/write/zip_encryption.h"

#include <cerrno>

#include <sys/random.h>

namespace vantoro {

namespace {

constexpr unsigned kAes256 = 3;

Result<void> fillRandom(Bytes bytes)
{
    while (!bytes.empty()) {
        const auto count = ::getrandom(bytes.data(), bytes.size(), 0);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return Error{ErrorCode::Internal, "getrandom", errno};
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return {};
}

}

Result<ZipEncryption> ZipEncryption::start(const Secret& password, bool isClassic, std::uint32_t checksum)
{
    ZipEncryption encryption;
    auto& header = encryption.m_header;
    if (isClassic) {
        header.resize(ZipCipher::kHeaderSize);
        TRY(fillRandom(header));
        header.back() = static_cast<std::byte>(checksum >> 24);
        encryption.m_classic.emplace(password.text());
        encryption.m_classic->encrypt(header);
        return encryption;
    }
    header.resize(ZipAes::saltSize(kAes256));
    TRY(fillRandom(header));
    encryption.m_aes.emplace();
    const auto check = TRY(encryption.m_aes->startEncryption(password.text(), header, kAes256));
    header.insert(header.end(), check.begin(), check.end());
    return encryption;
}

Result<void> ZipEncryption::encrypt(Bytes data)
{
    if (m_aes)
        return m_aes->encrypt(data);
    m_classic->encrypt(data);
    return {};
}

std::vector<std::byte> ZipEncryption::footer()
{
    if (!m_aes)
        return {};
    const auto code = m_aes->code();
    return {code.begin(), code.end()};
}

}
