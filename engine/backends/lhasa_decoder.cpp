#include "engine/backends/lhasa_decoder.h"

#include <lhasa.h>

#include <optional>

namespace vantoro {

namespace {

class LhasaStream final : public ByteStream {
public:
    explicit LhasaStream(StreamPtr packed) : m_packed(std::move(packed)) {}
    ~LhasaStream() override
    {
        if (m_decoder)
            lha_decoder_free(m_decoder);
    }

    Result<void> start(const std::string& method, std::uint64_t size)
    {
        std::string name = method;
        auto* type = lha_decoder_for_name(name.data());
        if (!type)
            return Error{ErrorCode::UnsupportedMethod, "lha: compression method"};
        m_decoder = lha_decoder_new(type, &supply, this, TRY(checkedCast<std::size_t>(size)));
        if (!m_decoder)
            return m_failure.value_or(Error{ErrorCode::OutOfMemory, "lha: no decoder"});
        return {};
    }

    Result<std::size_t> read(Bytes into) override
    {
        const auto count = lha_decoder_read(m_decoder, reinterpret_cast<std::uint8_t*>(into.data()), into.size());
        if (m_failure)
            return *m_failure;
        return count;
    }

private:
    static std::size_t supply(void* buffer, std::size_t size, void* self)
    {
        auto& stream = *static_cast<LhasaStream*>(self);
        const auto got = guarded([&] { return readFully(*stream.m_packed, {static_cast<std::byte*>(buffer), size}); });
        if (!got)
            stream.m_failure = got.error();
        return got.value_or(0U);
    }

    StreamPtr m_packed;
    LHADecoder* m_decoder = nullptr;
    std::optional<Error> m_failure; // of the packed stream
};

}

Result<StreamPtr> openLhasaDecoder(const std::string& method, StreamPtr packed, std::uint64_t size)
{
    auto stream = std::make_unique<LhasaStream>(std::move(packed));
    TRY(stream->start(method, size));
    return StreamPtr(std::move(stream));
}

}
