#include "engine/codecs/lzma2_parallel.h"

#include "engine/codecs/parallel_blocks.h"

#include <algorithm>

namespace vantoro {

namespace {

constexpr std::uint64_t kMostMemory = 32 << 20;
constexpr std::uint64_t kLargestPart = 32 << 20;

/// What a stream of packed bytes has left.
class RestStream final : public ByteStream {
public:
    explicit RestStream(PackedStream& packed) : m_packed(packed) {}
    Result<std::size_t> read(Bytes into) override
    {
        const auto some = TRY(m_packed.peek());
        const auto count = std::min(some.size(), into.size());
        if (count > 0)
            std::memcpy(into.data(), some.data(), count);
        m_packed.consume(count);
        return count;
    }

private:
    PackedStream& m_packed;
};

class Lzma2Parts final : public ParallelBlocks {
public:
    Lzma2Parts(StreamPtr packed, std::uint64_t dictionary, const CodecParams& params)
        : ParallelBlocks(params, kMostMemory)
        , m_params(params)
        , m_dictionary(dictionary)
        , m_in(std::move(packed))
    {
    }
    ~Lzma2Parts() override { stop(); }

private:
    Result<bool> readNext(Job& job) override
    {
        const auto outcome = readPart(job);
        if (outcome && (job.size > kLargestPart || (m_isFirst && m_hasEnded))) {
            TRY(goOnSerially(std::move(job.packed)));
            return false;
        }
        m_isFirst = false;
        if (job.packed.empty())
            return outcome ? Result<bool>(false) : outcome.error();
        if (outcome)
            job.packed.push_back(std::byte{0}); // the end, for the decoder
        job.packed.resize(job.packed.size() + LzmaDecoder::kMargin);
        return outcome ? Result<bool>(true) : outcome.error();
    }

    /// Chunks up to the next one that begins a dictionary, or until there are too many.
    Result<void> readPart(Job& job)
    {
        if (m_carried) { // its control byte was read with the part before
            job.packed.push_back(*m_carried);
            TRY(readChunk(job, *std::exchange(m_carried, std::nullopt)));
        }
        while (!m_hasEnded && job.size <= kLargestPart) {
            const auto control = TRY(m_in.take(1)).front();
            m_hasEnded = Lzma2Control(control).isEnd();
            if (m_hasEnded)
                break;
            if (Lzma2Control(control).beginsDictionary() && !job.packed.empty()) {
                m_carried = control;
                break;
            }
            job.packed.push_back(control);
            TRY(readChunk(job, control));
        }
        return {};
    }

    Result<void> readChunk(Job& job, std::byte control)
    {
        const Lzma2Control chunk(control);
        if (!chunk.isValid())
            return Error{ErrorCode::Corrupt, "lzma2: damaged data"};
        const auto header = TRY(m_in.take(chunk.headerSize()));
        job.packed.insert(job.packed.end(), header.begin(), header.end());
        const auto sizes = chunk.sizes(header);
        job.size += sizes.decoded;
        for (auto left = sizes.packed; left > 0;) {
            const auto piece = TRY(m_in.take(std::min(left, PackedBytes::kMostTaken)));
            job.packed.insert(job.packed.end(), piece.begin(), piece.end());
            left -= piece.size();
        }
        return {};
    }

    Result<void> goOnSerially(std::vector<std::byte> read)
    {
        if (m_hasEnded)
            read.push_back(std::byte{0});
        auto rest = prependedStream(std::move(read), std::make_unique<RestStream>(m_in));
        m_serial = TRY(openLzma2Serial(std::move(rest), m_dictionary, m_params));
        return {};
    }

    Result<void> finish(SpanWriter& out) override
    {
        while (m_serial && out.room() > 0) {
            const auto got = TRY(m_serial->read(out.free()));
            if (got == 0)
                break;
            out.advance(got);
        }
        return {};
    }

    Result<void> decodeBlock(Job& job) override
    {
        PackedBlock packed(ConstBytes(job.packed).first(job.packed.size() - LzmaDecoder::kMargin));
        job.window.emplace(TRY(LzmaWindow::whole(static_cast<std::size_t>(job.size), m_dictionary)));
        return decodeLzma2(job, packed, [](ConstBytes) {});
    }

    CodecParams m_params;
    std::uint64_t m_dictionary;
    PackedStream m_in;
    std::optional<std::byte> m_carried;
    bool m_isFirst = true, m_hasEnded = false;
    StreamPtr m_serial; ///< for what is left
};

}

Result<StreamPtr> openLzma2Parts(StreamPtr packed, std::uint64_t dictionary, const CodecParams& params)
{
    if (params.threads < 2)
        return openLzma2Serial(std::move(packed), dictionary, params);
    return StreamPtr(std::make_unique<Lzma2Parts>(std::move(packed), dictionary, params));
}

}
