#include "engine/write/bzip2_sink.h"

#include "engine/codecs/bzip2_encoder.h"
#include "engine/write/lender.h"
#include "engine/write/ordered_jobs.h"

namespace vantoro {

namespace {

class Bzip2Sink final : public ByteSink {
public:
    Bzip2Sink(ByteSink& out, unsigned level, unsigned threads)
        : m_out(out)
        , m_level(level)
        , m_file(level)
        , m_jobs(threads, [this](Result<Bzip2Bits> block) { return take(std::move(block)); })
    {
    }

    Result<void> write(ConstBytes bytes) override
    {
        while (!bytes.empty()) {
            if (!m_block)
                m_block = m_blocks.take([this] { return std::make_shared<Bzip2BlockInput>(m_level); });
            bytes = bytes.subspan(m_block->add(bytes));
            if (m_block->isFull())
                TRY(pack());
        }
        return {};
    }
    Result<void> finish() override
    {
        if (m_block)
            TRY(pack());
        TRY(m_jobs.finish());
        m_file.end();
        return m_out.write(m_file.take());
    }

private:
    Result<void> pack()
    {
        return m_jobs.add([this, block = std::exchange(m_block, nullptr)] { return encode(block); });
    }

    /// On a thread of the pool.
    Result<Bzip2Bits> encode(const std::shared_ptr<Bzip2BlockInput>& block)
    {
        return guarded([&]() -> Result<Bzip2Bits> {
            auto encoder = m_encoders.take([] { return std::make_shared<Bzip2Encoder>(); });
            auto packed = encoder->encode(*block);
            m_encoders.giveBack(std::move(encoder));
            block->clear();
            m_blocks.giveBack(block);
            return packed;
        });
    }

    Result<void> take(Result<Bzip2Bits> block)
    {
        if (!block)
            return block.error();
        m_file.add(*block);
        return m_out.write(m_file.take());
    }

    ByteSink& m_out;
    unsigned m_level;
    Bzip2File m_file;
    std::shared_ptr<Bzip2BlockInput> m_block; // being filled
    Lender<Bzip2BlockInput> m_blocks;
    Lender<Bzip2Encoder> m_encoders;
    OrderedJobs<Result<Bzip2Bits>> m_jobs; // goes first: its threads use the others
};

}

std::unique_ptr<ByteSink> makeBzip2Sink(ByteSink& out, unsigned level, unsigned threads)
{
    return std::make_unique<Bzip2Sink>(out, level, threads);
}

}
