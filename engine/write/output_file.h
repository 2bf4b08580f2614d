#pragma once

#include "engine/io/stream.h"

#include <vector>

namespace vantoro {

/// An archive being written: under a hidden name beside its place, renamed onto it when it is whole. Until then what
/// stood there stays. Removed when it goes without commit().
class OutputFile final : public ByteSink {
public:
    static Result<std::unique_ptr<OutputFile>> create(const std::string& target);
    ~OutputFile() override;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    Result<void> write(ConstBytes block) override;
    Result<void> finish() override { return flush(); }
    /// Overwrites what has been written, to complete a header.
    Result<void> patch(std::uint64_t position, ConstBytes block);
    std::uint64_t position() const { return m_written + m_buffer.size(); }
    Result<void> flush();
    Result<void> truncate(std::uint64_t size);
    Result<void> commit();

private:
    OutputFile(int fd, std::string temporary, std::string target);
    Result<void> writeAll(ConstBytes block, std::uint64_t position);
    int m_fd;
    std::string m_temporary, m_target;
    std::vector<std::byte> m_buffer;
    std::uint64_t m_written = 0;
};

}
