#include "tests/support/packers.h"

#include "engine/crypto/crc32.h"

#include <brotli/encode.h>
#include <bzlib.h>
#include <lz4.h>
#include <lz4frame.h>
#include <lzma.h>
#include <zlib.h>
#include <zstd.h>

#include <cstdlib>
#include <iostream>
#include <map>
#include <random>

namespace vantoro::packers {

namespace {

void require(bool condition, const char* what)
{
    if (condition)
        return;
    std::cerr << "packer failed: " << what << '\n';
    std::abort();
}

void appendLittleEndian(std::string& out, std::uint64_t value, unsigned bytes)
{
    for (unsigned i = 0; i < bytes; ++i)
        out.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
}

Bytef* zlibBytes(std::string_view data) { return reinterpret_cast<Bytef*>(const_cast<char*>(data.data())); }
const std::uint8_t* u8(std::string_view data) { return reinterpret_cast<const std::uint8_t*>(data.data()); }
std::uint8_t* u8(std::string& data) { return reinterpret_cast<std::uint8_t*>(data.data()); }

std::string zlibStream(std::string_view data, int level, int windowBits)
{
    z_stream stream{};
    require(deflateInit2(&stream, level, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY) == Z_OK, "deflateInit2");
    std::string out(deflateBound(&stream, static_cast<uLong>(data.size())), '\0');
    stream.next_in = zlibBytes(data);
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = zlibBytes(out);
    stream.avail_out = static_cast<uInt>(out.size());
    require(::deflate(&stream, Z_FINISH) == Z_STREAM_END, "deflate");
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

std::string runLzma(lzma_stream& stream, std::string_view data)
{
    std::string out(data.size() + data.size() / 2 + 65536, '\0');
    stream.next_in = u8(data);
    stream.avail_in = data.size();
    stream.next_out = u8(out);
    stream.avail_out = out.size();
    require(lzma_code(&stream, LZMA_FINISH) == LZMA_STREAM_END, "lzma_code");
    out.resize(static_cast<std::size_t>(stream.total_out));
    lzma_end(&stream);
    return out;
}

}

std::string deflate(std::string_view data, int level) { return zlibStream(data, level, -15); }
std::string zlib(std::string_view data, int level) { return zlibStream(data, level, 15); }

std::string gzip(std::string_view data, const GzipFields& fields, int level)
{
    std::string out("\x1F\x8B\x08", 3);
    out.push_back(static_cast<char>((fields.name.empty() ? 0 : 8) | (fields.headerCrc ? 2 : 0)));
    appendLittleEndian(out, fields.modified, 4);
    out += std::string("\0\3", 2);
    if (!fields.name.empty())
        out += fields.name + '\0';
    if (fields.headerCrc)
        appendLittleEndian(out, vantoro::crc32(0, asBytes(out)) & 0xFFFF, 2);
    out += deflate(data, level);
    appendLittleEndian(out, vantoro::crc32(0, asBytes(data)), 4);
    appendLittleEndian(out, data.size() & 0xFFFFFFFF, 4);
    return out;
}

std::string bzip2(std::string_view data, int blockSize)
{
    auto size = static_cast<unsigned>(data.size() + data.size() / 50 + 1000);
    std::string out(size, '\0');
    require(BZ2_bzBuffToBuffCompress(out.data(), &size, const_cast<char*>(data.data()),
                                     static_cast<unsigned>(data.size()), blockSize, 0, 0)
                == BZ_OK,
            "bzip2");
    out.resize(size);
    return out;
}

std::string xz(std::string_view data, std::size_t blockSize, unsigned preset)
{
    lzma_stream stream = LZMA_STREAM_INIT;
    if (blockSize == 0) {
        require(lzma_easy_encoder(&stream, preset, LZMA_CHECK_CRC64) == LZMA_OK, "lzma_easy_encoder");
    } else {
        lzma_mt options{};
        options.threads = 1;
        options.block_size = blockSize;
        options.preset = preset;
        options.check = LZMA_CHECK_CRC32;
        require(lzma_stream_encoder_mt(&stream, &options) == LZMA_OK, "lzma_stream_encoder_mt");
    }
    return runLzma(stream, data);
}

std::string lzmaAlone(std::string_view data, unsigned preset)
{
    lzma_options_lzma options;
    require(!lzma_lzma_preset(&options, preset), "lzma_lzma_preset");
    lzma_stream stream = LZMA_STREAM_INIT;
    require(lzma_alone_encoder(&stream, &options) == LZMA_OK, "lzma_alone_encoder");
    return runLzma(stream, data);
}

std::string lzip(std::string_view data)
{
    const auto alone = lzmaAlone(data); // 13 bytes of header, then what lzip wants; preset 1 has a 1 MiB dictionary
    std::string out("LZIP\1\x14");
    out += alone.substr(13);
    appendLittleEndian(out, vantoro::crc32(0, asBytes(data)), 4);
    appendLittleEndian(out, data.size(), 8);
    appendLittleEndian(out, out.size() + 8, 8);
    return out;
}

std::string zstd(std::string_view data, int level)
{
    auto* context = ZSTD_createCCtx();
    ZSTD_CCtx_setParameter(context, ZSTD_c_compressionLevel, level);
    ZSTD_CCtx_setParameter(context, ZSTD_c_checksumFlag, 1);
    std::string out(ZSTD_compressBound(data.size()), '\0');
    const auto size = ZSTD_compress2(context, out.data(), out.size(), data.data(), data.size());
    require(!ZSTD_isError(size), "zstd");
    out.resize(size);
    ZSTD_freeCCtx(context);
    return out;
}

std::string lz4(std::string_view data)
{
    LZ4F_preferences_t preferences{};
    preferences.frameInfo.contentChecksumFlag = LZ4F_contentChecksumEnabled;
    std::string out(LZ4F_compressFrameBound(data.size(), &preferences), '\0');
    const auto size = LZ4F_compressFrame(out.data(), out.size(), data.data(), data.size(), &preferences);
    require(!LZ4F_isError(size), "lz4");
    out.resize(size);
    return out;
}

std::string lz4Legacy(std::string_view data)
{
    std::string out("\x02\x21\x4C\x18");
    constexpr std::size_t kBlock = 8 << 20;
    for (std::size_t at = 0; at < data.size(); at += kBlock) {
        const auto part = data.substr(at, kBlock);
        std::string block(static_cast<std::size_t>(LZ4_compressBound(static_cast<int>(part.size()))), '\0');
        const auto size = LZ4_compress_default(part.data(), block.data(), static_cast<int>(part.size()),
                                               static_cast<int>(block.size()));
        require(size > 0, "lz4 legacy");
        appendLittleEndian(out, static_cast<std::uint64_t>(size), 4);
        out += block.substr(0, static_cast<std::size_t>(size));
    }
    return out;
}

namespace {

void appendBigEndian(std::string& out, std::uint64_t value, unsigned bytes)
{
    for (unsigned i = bytes; i > 0; --i)
        out.push_back(static_cast<char>(value >> (8 * (i - 1)) & 0xFF));
}

/// Literal runs, and matches of four bytes and more that lie up to 16 KiB back.
class Lzo1xWriter {
public:
    std::string pack(std::string_view block)
    {
        std::map<std::string_view, std::size_t> seen;
        std::size_t literals = 0; // from here
        for (std::size_t at = 0; at < block.size();) {
            const auto key = block.substr(at, 4);
            const auto known = key.size() == 4 ? seen.find(key) : seen.end();
            const auto from = known == seen.end() ? block.size() : known->second;
            if (key.size() == 4)
                seen[key] = at;
            if (from >= at || at - from > 16384) {
                ++at;
                continue;
            }
            std::size_t length = 4;
            while (at + length < block.size() && block[from + length] == block[at + length])
                ++length;
            putLiterals(block.substr(literals, at - literals));
            putLength(32, 31, length - 2);
            appendLittleEndian(m_out, (at - from - 1) << 2, 2);
            at += length;
            literals = at;
        }
        putLiterals(block.substr(literals));
        return m_out + std::string("\x11\0\0", 3);
    }

private:
    void putLength(unsigned code, std::size_t largest, std::size_t length)
    {
        if (length <= largest) {
            m_out.push_back(static_cast<char>(code | length));
            return;
        }
        m_out.push_back(static_cast<char>(code));
        for (length -= largest; length > 255; length -= 255)
            m_out.push_back('\0');
        m_out.push_back(static_cast<char>(length));
    }
    void putLiterals(std::string_view run)
    {
        if (run.empty())
            return;
        if (m_out.empty() && run.size() <= 238)
            m_out.push_back(static_cast<char>(17 + run.size()));
        else if (run.size() < 4)
            m_out[m_out.size() - 2] = static_cast<char>(m_out[m_out.size() - 2] | static_cast<char>(run.size()));
        else
            putLength(0, 15, run.size() - 3);
        m_out += run;
    }
    std::string m_out;
};

}

std::string lzop(std::string_view data)
{
    std::string out("\x89LZO\0\r\n\x1A\n", 9);
    std::string header;
    appendBigEndian(header, 0x1030, 2);
    appendBigEndian(header, 0x2080, 2);
    appendBigEndian(header, 0x0940, 2);
    header += std::string("\1\5", 2); // LZO1X-1, effort
    appendBigEndian(header, 0x3, 4); // Adler-32 of packed and decoded blocks
    appendBigEndian(header, 0100644, 4);
    appendBigEndian(header, 0, 8);
    header += "\5a.txt";
    out += header;
    appendBigEndian(out, vantoro::adler32(1, asBytes(header)), 4);
    constexpr std::size_t kBlock = 20'000;
    for (std::size_t at = 0; at < data.size(); at += kBlock) {
        const auto block = data.substr(at, kBlock);
        const auto packed = Lzo1xWriter().pack(block);
        const bool shrinks = packed.size() < block.size();
        appendBigEndian(out, block.size(), 4);
        appendBigEndian(out, shrinks ? packed.size() : block.size(), 4);
        appendBigEndian(out, vantoro::adler32(1, asBytes(block)), 4);
        if (shrinks)
            appendBigEndian(out, vantoro::adler32(1, asBytes(packed)), 4);
        out += shrinks ? packed : std::string(block);
    }
    appendBigEndian(out, 0, 4);
    return out;
}

std::string brotli(std::string_view data)
{
    auto size = BrotliEncoderMaxCompressedSize(data.size());
    std::string out(size, '\0');
    require(BrotliEncoderCompress(5, 20, BROTLI_MODE_GENERIC, data.size(), u8(data), &size, u8(out)) == BROTLI_TRUE,
            "brotli");
    out.resize(size);
    return out;
}

namespace {

/// Codes of one width in groups of eight, padded when the width changes.
class CodeWriter {
public:
    explicit CodeWriter(std::string& out) : m_out(out) {}
    void put(unsigned code, unsigned width)
    {
        for (unsigned bit = 0; bit < width; ++bit)
            putBit((code >> bit & 1) != 0);
        ++m_codes;
    }
    void finishGroup(unsigned width)
    {
        while (m_codes % 8 != 0)
            put(0, width);
    }
    void finish()
    {
        while (m_bits % 8 != 0)
            putBit(false);
    }

private:
    void putBit(bool bit)
    {
        if (m_bits % 8 == 0)
            m_out.push_back('\0');
        if (bit)
            m_out.back() = static_cast<char>(m_out.back() | 1 << (m_bits % 8));
        ++m_bits;
    }
    std::string& m_out;
    std::size_t m_bits = 0;
    std::size_t m_codes = 0; // in the groups of the width at hand
};

}

std::string compress(std::string_view data, unsigned largestWidth, bool hasClear)
{
    constexpr unsigned kClear = 256;
    constexpr unsigned kClearEvery = 100'000; // codes, so that clearing is met
    std::string out("\x1F\x9D");
    out.push_back(static_cast<char>(largestWidth | (hasClear ? 0x80U : 0U)));
    CodeWriter codes(out);
    std::map<std::pair<unsigned, char>, unsigned> table;
    unsigned width = 9;
    unsigned free = hasClear ? 257 : 256;
    unsigned written = 0;
    bool isFirst = true;
    const auto emit = [&](unsigned code) {
        codes.put(code, width);
        ++written;
        if (!isFirst)
            free = std::min(free + 1, 1U << largestWidth);
        isFirst = false;
        if (free > (1U << width) - 1 && width < (largestWidth == 9 ? 10 : largestWidth)) {
            codes.finishGroup(width);
            ++width;
        }
    };
    for (std::size_t at = 0; at < data.size();) {
        unsigned code = static_cast<unsigned char>(data[at++]);
        for (; at < data.size(); ++at) {
            const auto longer = table.find({code, data[at]});
            if (longer == table.end())
                break;
            code = longer->second;
        }
        emit(code);
        if (at < data.size() && free < 1U << largestWidth)
            table[{code, data[at]}] = free;
        if (hasClear && written % kClearEvery == 0) {
            codes.put(kClear, width);
            codes.finishGroup(width);
            table.clear();
            width = 9;
            free = 257;
            isFirst = true;
        }
    }
    codes.finish();
    return out;
}

std::string sampleData(std::size_t size)
{
    static constexpr std::string_view kWords[]
        = {"the ",     "archive ", "holds ",  "many ",       "entries, ", "and ", "each\n",  "one ",
           "is read ", "once; ",   "return ", "const auto ", "{\n    ",   "}\n",  "0x1F8B ", "aaaaaaaaaa"};
    std::mt19937 random(20240229);
    std::string data;
    data.reserve(size + 4096);
    while (data.size() < size) {
        const auto kind = random() % 64;
        if (kind == 0) {
            data.append(random() % 700, static_cast<char>(random() % 256));
        } else if (kind == 1) {
            for (auto left = random() % 300; left > 0; --left)
                data.push_back(static_cast<char>(random()));
        } else if (kind < 8 && data.size() > 5000) {
            const auto from = data.size() - 1 - random() % 5000;
            data += data.substr(from, random() % 200);
        } else {
            data += kWords[random() % std::size(kWords)];
        }
    }
    data.resize(size);
    return data;
}

}
