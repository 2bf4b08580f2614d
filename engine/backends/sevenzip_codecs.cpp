#include "engine/backends/sevenzip_codecs.h"

#include "engine/codecs/brotli.h"
#include "engine/codecs/lz4.h"
#include "engine/codecs/zstd.h"

#include <algorithm>
#include <array>

namespace vantoro::sevenzip {

namespace {

constexpr std::size_t kBlock = 128 << 10;

/// A stream of the library as one of ours.
class LibraryStream final : public ByteStream {
public:
    explicit LibraryStream(Ref<SequentialInStream> stream) : m_stream(std::move(stream)) {}
    Result<std::size_t> read(Bytes into) override
    {
        std::uint32_t got = 0;
        const auto wanted = static_cast<std::uint32_t>(std::min<std::size_t>(into.size(), 1 << 30));
        if (m_stream->read(into.data(), wanted, &got) != kOk)
            return Error{ErrorCode::Io, "7-Zip: a packed stream cannot be read"};
        return std::size_t{got};
    }

private:
    Ref<SequentialInStream> m_stream;
};

/// At most `left` bytes of a stream that somebody else goes on reading.
class Slice final : public ByteStream {
public:
    Slice(ByteStream& stream, std::uint64_t left) : m_stream(stream), m_left(left) {}
    Result<std::size_t> read(Bytes into) override
    {
        const auto got
            = TRY(m_stream.read(into.first(static_cast<std::size_t>(std::min<std::uint64_t>(into.size(), m_left)))));
        m_left -= got;
        return got;
    }

private:
    ByteStream& m_stream;
    std::uint64_t m_left;
};

/// Brotli has no frames of its own; 7z archives are met with one each for a thread: the mark of a skippable Zstandard
/// frame, 8, the packed size, "BR" and a hint at the size. Without them it is one bare stream.
class BrotliFrames final : public ByteStream {
public:
    explicit BrotliFrames(StreamPtr packed) : m_packed(std::move(packed)) {}
    Result<std::size_t> read(Bytes into) override
    {
        for (;;) {
            if (!m_frame && !TRY(nextFrame()))
                return std::size_t{0};
            const auto got = TRY(m_frame->read(into));
            if (got > 0)
                return got;
            m_frame = nullptr;
            if (m_isBare)
                return std::size_t{0};
        }
    }

private:
    static constexpr std::uint32_t kMark = 0x184D2A50;
    static constexpr std::size_t kHeader = 16;

    Result<bool> nextFrame()
    {
        std::array<std::byte, kHeader> header;
        const auto got = TRY(readFully(*m_packed, header));
        if (got == 0)
            return false;
        ByteReader in(Bytes(header).first(got));
        const auto mark = in.le32();
        const auto size = in.le32();
        const auto packedSize = in.le32();
        if (in.ok() && mark == kMark && size == 8 && in.text(2) == "BR") {
            m_frame = TRY(openBrotli(std::make_unique<Slice>(*m_packed, packedSize)));
            return true;
        }
        m_isBare = true;
        m_frame = TRY(openBrotli(
            prependedStream({header.begin(), header.begin() + static_cast<std::ptrdiff_t>(got)}, std::move(m_packed))));
        return true;
    }

    StreamPtr m_packed;
    StreamPtr m_frame;
    bool m_isBare = false;
};

Result<StreamPtr> openZstdCoder(StreamPtr packed) { return openZstd(std::move(packed)); }
Result<StreamPtr> openLz4Coder(StreamPtr packed) { return openLz4(std::move(packed)); }
Result<StreamPtr> openBrotliCoder(StreamPtr packed)
{
    return StreamPtr(std::make_unique<BrotliFrames>(std::move(packed)));
}

struct Method {
    std::uint64_t id; // in a 7z archive
    const char* name;
    Result<StreamPtr> (*open)(StreamPtr packed);
};
constexpr std::array kMethods{
    Method{0x4F71101, "ZSTD", openZstdCoder},
    Method{0x4F71102, "BROTLI", openBrotliCoder},
    Method{0x4F71104, "LZ4", openLz4Coder},
};

HResult writeAll(SequentialOutStream& out, ConstBytes block)
{
    while (!block.empty()) {
        std::uint32_t done = 0;
        const auto result = out.write(block.data(), static_cast<std::uint32_t>(block.size()), &done);
        if (result != kOk)
            return result;
        if (done == 0)
            return kFail;
        block = block.subspan(done);
    }
    return kOk;
}

class OwnDecoder final : public Object<Coder, DecoderProperties> {
public:
    explicit OwnDecoder(const Method& method) : m_method(method) {}

    HResult setDecoderProperties(const std::uint8_t*, std::uint32_t) override { return kOk; } // what encoded it, only

    HResult code(SequentialInStream* in, SequentialOutStream* out, const std::uint64_t*,
                 const std::uint64_t* unpackedSize, CoderProgress* progress) override
    {
        return callback([&] {
            auto stream = m_method.open(std::make_unique<LibraryStream>(Ref<SequentialInStream>::share(in)));
            if (!stream)
                return stream.error().code == ErrorCode::UnsupportedMethod ? kNotImplemented : kFalse;
            std::vector<std::byte> block(kBlock);
            std::uint64_t done = 0;
            for (;;) {
                const auto left = unpackedSize ? *unpackedSize - done : kBlock;
                if (left == 0)
                    return kOk;
                const auto got = (*stream)->read(Bytes(block).first(std::min<std::size_t>(kBlock, left)));
                if (!got)
                    return kFalse;
                if (*got == 0)
                    return unpackedSize ? kFalse : kOk;
                if (const auto result = writeAll(*out, Bytes(block).first(*got)); result != kOk)
                    return result;
                done += *got;
                if (const auto result = progress ? progress->setRatio(nullptr, &done) : kOk; result != kOk)
                    return result;
            }
        });
    }

private:
    const Method& m_method;
};

class OwnCodecs final : public Object<Codecs> {
public:
    HResult methodCount(std::uint32_t* count) override
    {
        *count = kMethods.size();
        return kOk;
    }
    HResult property(std::uint32_t index, std::uint32_t id, Variant* value) override
    {
        return callback([&] {
            if (index >= kMethods.size())
                return kInvalidArgument;
            switch (id) {
            case method_property::kId:
                value->type = VariantType::U64;
                value->u64 = kMethods[index].id;
                break;
            case method_property::kName:
                value->type = VariantType::Text;
                value->text = makeBstr(kMethods[index].name);
                break;
            case method_property::kHasDecoder:
            case method_property::kHasEncoder:
                value->type = VariantType::Bool;
                value->boolean = id == method_property::kHasDecoder ? -1 : 0;
                break;
            default:
                break;
            }
            return kOk;
        });
    }
    HResult createDecoder(std::uint32_t index, const Guid* wanted, void** coder) override
    {
        return callback([&] {
            *coder = nullptr;
            if (index >= kMethods.size())
                return kInvalidArgument;
            return makeObject<OwnDecoder>(kMethods[index])->queryInterface(*wanted, coder);
        });
    }
    HResult createEncoder(std::uint32_t, const Guid*, void** coder) override
    {
        *coder = nullptr;
        return kNotImplemented;
    }
};

}

void addOwnCodecs(const Ref<InArchive>& handler)
{
    if (const auto setter = handler.query<CodecsSetter>())
        setter->setCodecs(makeObject<OwnCodecs>().raw());
}

}
