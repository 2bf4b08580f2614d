#pragma once

#include "engine/crypto/zip_aes.h"
#include "engine/crypto/zip_cipher.h"
#include "engine/formats/zip/headers.h"
#include "engine/io/stream.h"

namespace vantoro::zip {

/// How many bytes the cipher adds in front of and behind the data of an entry.
struct CipherFrame {
    std::size_t head = 0, tail = 0;
};
/// UnsupportedEncryption for strong encryption, Corrupt where AES lacks its field.
Result<CipherFrame> cipherFrame(const DirectoryHeader& header);

/// Undoes the encryption of one entry after another; keeps its memory.
class Decipherer {
public:
    /// `head`: what stands in front of the data, cipherFrame().head bytes. WrongPassword when the quick check fails.
    Result<void> start(const DirectoryHeader& header, std::string_view password, ConstBytes head);
    /// In place.
    Result<void> decrypt(Bytes bytes);
    /// After all data; `tail` is what stands behind them. ChecksumMismatch when the authentication code differs.
    Result<void> finish(ConstBytes tail);

private:
    bool m_isAes = false;
    ZipAes m_aes;
    ZipCipher m_classic{{}};
};

/// The quick check alone: 1 in 256 wrong passwords pass the classic one, 1 in 65536 that of AES.
bool passesQuickCheck(const DirectoryHeader& header, std::string_view password, ConstBytes head);

/// The data of an encrypted entry in the clear.
class DecipheredStream final : public ByteStream {
public:
    /// `packed` is the whole of the entry's data, of the size that the header says.
    static Result<std::unique_ptr<DecipheredStream>> open(StreamPtr packed, const DirectoryHeader& header,
                                                          std::string_view password);
    Result<std::size_t> read(Bytes into) override;
    /// Reads what a decoder left over, and checks the authentication code.
    Result<void> finish();

private:
    DecipheredStream() = default;
    StreamPtr m_packed;
    std::uint64_t m_left = 0;
    std::size_t m_tailSize = 0;
    Decipherer m_decipherer;
};

}
