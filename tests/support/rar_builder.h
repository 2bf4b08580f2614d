#pragma once

#include "engine/crypto/crc32.h"
#include "engine/crypto/rar_keys.h"

#include <openssl/evp.h>

#include <optional>
#include <string>
#include <vector>

namespace vantoro::test {

inline std::string le(std::uint64_t value, unsigned bytes)
{
    std::string out;
    for (unsigned i = 0; i < bytes; ++i)
        out.push_back(static_cast<char>(value >> (8 * i)));
    return out;
}

inline std::string vint(std::uint64_t value)
{
    std::string out;
    for (; value >= 0x80; value >>= 7)
        out.push_back(static_cast<char>(value | 0x80));
    out.push_back(static_cast<char>(value));
    return out;
}

/// Zeros up to a multiple of 16, then AES in CBC mode: 16 bytes of key for rar 3, 32 for rar 5.
inline std::string encryptCbc(std::string plain, ConstBytes key, ConstBytes iv)
{
    plain.resize((plain.size() + 15) / 16 * 16);
    std::string out(plain.size(), '\0');
    auto* const context = EVP_CIPHER_CTX_new();
    const auto* const cipher = key.size() == 16 ? EVP_aes_128_cbc() : EVP_aes_256_cbc();
    const auto octets = [](auto& bytes) { return reinterpret_cast<const unsigned char*>(bytes.data()); };
    int done = 0;
    EVP_EncryptInit_ex(context, cipher, nullptr, octets(key), octets(iv));
    EVP_CIPHER_CTX_set_padding(context, 0);
    EVP_EncryptUpdate(context, reinterpret_cast<unsigned char*>(out.data()), &done, octets(plain),
                      static_cast<int>(plain.size()));
    EVP_CIPHER_CTX_free(context);
    return out;
}

/// Headers and stored entries of rar 5. What a header should lie about is set by hand.
class Rar5Builder {
public:
    static constexpr std::string_view kMarker{"Rar!\x1A\x07\x01\x00", 8};

    struct File {
        std::string name;
        std::string data = {}; ///< as it lies in the archive
        std::optional<std::uint64_t> size = std::nullopt; ///< decoded; data's when not set
        std::optional<std::uint32_t> crc = std::nullopt; ///< data's when not set
        std::uint64_t fileFlags = 4; ///< the CRC is there
        std::uint64_t headerFlags = 0;
        std::uint64_t compression = 0; ///< stored
        std::uint64_t host = 1; ///< Unix
        std::uint64_t mode = 0100644;
        std::string extra = {};
    };

    /// A record of an extra area.
    static std::string record(std::uint64_t type, const std::string& payload)
    {
        const auto body = vint(type) + payload;
        return vint(body.size()) + body;
    }
    static std::string block(std::uint64_t type, std::uint64_t flags, const std::string& fields,
                             const std::string& extra = {}, const std::string& data = {})
    {
        if (!extra.empty())
            flags |= 1;
        if (!data.empty())
            flags |= 2;
        auto body = vint(type) + vint(flags);
        if (!extra.empty())
            body += vint(extra.size());
        if (!data.empty())
            body += vint(data.size());
        body += fields + extra;
        const auto sized = vint(body.size()) + body;
        return le(crc32(0, asBytes(sized)), 4) + sized + data;
    }
    static std::string main(std::uint64_t flags = 0, std::optional<std::uint64_t> number = std::nullopt)
    {
        return block(1, 0, vint(flags | (number ? 2 : 0)) + (number ? vint(*number) : std::string()));
    }
    static std::string file(const File& file, std::uint64_t type = 2)
    {
        const auto crc = file.crc.value_or(crc32(0, asBytes(file.data)));
        auto fields = vint(file.fileFlags) + vint(file.size.value_or(file.data.size())) + vint(file.mode);
        if ((file.fileFlags & 2) != 0)
            fields += le(1'000'000'000, 4);
        if ((file.fileFlags & 4) != 0)
            fields += le(crc, 4);
        fields += vint(file.compression) + vint(file.host) + vint(file.name.size()) + file.name;
        return block(type, file.headerFlags, fields, file.extra, file.data);
    }
    static std::string link(const std::string& name, std::uint64_t kind, const std::string& target)
    {
        return file({.name = name, .size = 0, .extra = record(5, vint(kind) + vint(0) + vint(target.size()) + target)});
    }
    static std::string end(std::uint64_t flags = 0) { return block(5, 0, vint(flags)); }
    /// An archive of these blocks.
    static std::string archive(const std::string& blocks) { return std::string(kMarker) + main() + blocks + end(); }
};

/// Headers and stored entries of rar 1.5 to 4.
class Rar3Builder {
public:
    static constexpr std::string_view kMarker{"Rar!\x1A\x07\x00", 7};

    struct File {
        std::string name;
        std::string data = {};
        std::optional<std::uint64_t> size = std::nullopt;
        std::optional<std::uint32_t> crc = std::nullopt;
        unsigned flags = 0;
        unsigned version = 29;
        unsigned method = 0x30;
        unsigned host = 3; ///< Unix
        std::uint32_t attributes = 0100644;
        std::uint32_t time = 0x3E8A5A8B;
        std::string tail = {}; ///< salt, extended times
    };

    static std::string block(unsigned type, unsigned flags, const std::string& fields, std::size_t checked = 0)
    {
        const auto size = 7 + fields.size();
        const auto body = le(type, 1) + le(flags, 2) + le(size, 2) + fields;
        const auto covered = asBytes(body).first(checked > 0 ? checked - 2 : body.size());
        return le(crc32(0, covered) & 0xFFFF, 2) + body;
    }
    static std::string main(unsigned flags = 0) { return block(0x73, flags, std::string(6, '\0')); }
    static std::string header(const File& file, unsigned type = 0x74)
    {
        const auto crc = file.crc.value_or(crc32(0, asBytes(file.data)));
        return block(type, file.flags | 0x8000,
                     le(file.data.size(), 4) + le(file.size.value_or(file.data.size()), 4) + le(file.host, 1)
                         + le(crc, 4) + le(file.time, 4) + le(file.version, 1) + le(file.method, 1)
                         + le(file.name.size(), 2) + le(file.attributes, 4) + file.name + file.tail);
    }
    static std::string file(const File& file, unsigned type = 0x74) { return header(file, type) + file.data; }
    static std::string end(unsigned flags = 0) { return block(0x7B, 0x4000 | flags, {}); }
    static std::string archive(const std::string& blocks, unsigned mainFlags = 0)
    {
        return std::string(kMarker) + main(mainFlags) + blocks + end();
    }
};

/// Bits, most significant first.
class MsbWriter {
public:
    MsbWriter& put(std::uint64_t value, unsigned bits)
    {
        for (; bits > 0; --bits) {
            if (m_count++ % 8 == 0)
                m_bytes.push_back('\0');
            if ((value >> (bits - 1) & 1) != 0)
                m_bytes.back() = static_cast<char>(m_bytes.back() | 0x80 >> ((m_count - 1) % 8));
        }
        return *this;
    }
    std::size_t bits() const { return m_count; }
    const std::string& bytes() const { return m_bytes; }

private:
    std::string m_bytes;
    std::size_t m_count = 0;
};

}
