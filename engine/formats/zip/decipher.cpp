#include "engine/formats/zip/decipher.h"

#include <algorithm>

namespace vantoro::zip {

namespace {

/// The last byte of a classic header: of the checksum, or of the time where the checksum was not known yet.
std::byte classicCheck(const DirectoryHeader& header)
{
    const auto value = header.has(kHasDescriptor) ? header.dosTime >> 8 : header.crc >> 24;
    return static_cast<std::byte>(value);
}

}

Result<CipherFrame> cipherFrame(const DirectoryHeader& header)
{
    if (header.has(kStrongEncryption))
        return Error{ErrorCode::UnsupportedEncryption, "zip: strong encryption"};
    if (header.method != Method::Aes)
        return CipherFrame{ZipCipher::kHeaderSize, 0};
    const auto aes = header.aes();
    if (!aes)
        return Error{ErrorCode::Corrupt, "zip: AES without its extra field"};
    return CipherFrame{ZipAes::saltSize(aes->strength) + ZipAes::kCheckSize, ZipAes::kCodeSize};
}

Result<void> Decipherer::start(const DirectoryHeader& header, std::string_view password, ConstBytes head)
{
    const auto aes = header.aes();
    m_isAes = aes.has_value();
    bool fits = false;
    if (m_isAes) {
        const auto salt = head.first(ZipAes::saltSize(aes->strength));
        fits = TRY(m_aes.start(password, salt, head.subspan(salt.size()), aes->strength));
    } else {
        std::array<std::byte, ZipCipher::kHeaderSize> plain;
        std::copy(head.begin(), head.end(), plain.begin());
        m_classic = ZipCipher(password);
        m_classic.decrypt(plain);
        fits = plain.back() == classicCheck(header);
    }
    if (!fits)
        return Error{ErrorCode::WrongPassword, "zip: the quick check of the password failed"};
    return {};
}

Result<void> Decipherer::decrypt(Bytes bytes)
{
    if (m_isAes)
        return m_aes.decrypt(bytes);
    m_classic.decrypt(bytes);
    return {};
}

Result<void> Decipherer::finish(ConstBytes tail)
{
    if (m_isAes && !m_aes.isAuthentic(tail))
        return Error{ErrorCode::ChecksumMismatch, "zip: authentication code"};
    return {};
}

bool passesQuickCheck(const DirectoryHeader& header, std::string_view password, ConstBytes head)
{
    if (const auto aes = header.aes()) {
        const auto salt = head.first(ZipAes::saltSize(aes->strength));
        const auto check = ZipAes::check(password, salt, aes->strength);
        return std::equal(check.begin(), check.end(), head.begin() + static_cast<std::ptrdiff_t>(salt.size()));
    }
    Decipherer classic;
    return classic.start(header, password, head).has_value();
}

Result<std::unique_ptr<DecipheredStream>> DecipheredStream::open(StreamPtr packed, const DirectoryHeader& header,
                                                                 std::string_view password)
{
    const auto frame = TRY(cipherFrame(header));
    if (header.packed < frame.head + frame.tail)
        return Error{ErrorCode::Corrupt, "zip: encrypted entry too short"};
    std::array<std::byte, 32> head;
    if (TRY(readFully(*packed, Bytes(head).first(frame.head))) < frame.head)
        return Error{ErrorCode::Truncated, "zip: encryption header"};
    std::unique_ptr<DecipheredStream> stream(new DecipheredStream());
    stream->m_packed = std::move(packed);
    stream->m_left = header.packed - frame.head - frame.tail;
    stream->m_tailSize = frame.tail;
    TRY(stream->m_decipherer.start(header, password, ConstBytes(head).first(frame.head)));
    return stream;
}

Result<std::size_t> DecipheredStream::read(Bytes into)
{
    const auto wanted = into.first(static_cast<std::size_t>(std::min<std::uint64_t>(into.size(), m_left)));
    if (wanted.empty())
        return std::size_t{0};
    const auto got = TRY(m_packed->read(wanted));
    if (got == 0)
        return Error{ErrorCode::Truncated, "zip: encrypted data end too early"};
    TRY(m_decipherer.decrypt(wanted.first(got)));
    m_left -= got;
    return got;
}

Result<void> DecipheredStream::finish()
{
    std::array<std::byte, 4096> scrap;
    while (m_left > 0)
        TRY(read(scrap));
    if (TRY(readFully(*m_packed, Bytes(scrap).first(m_tailSize))) < m_tailSize)
        return Error{ErrorCode::Truncated, "zip: authentication code"};
    return m_decipherer.finish(ConstBytes(scrap).first(m_tailSize));
}

}
