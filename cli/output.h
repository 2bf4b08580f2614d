#pragma once

#include <string>
#include <string_view>

namespace vantoro::cli {

/// Standard output through one large buffer: a write a line would cost more than the listing.
class Output {
public:
    Output() { m_buffer.reserve(kSize); }
    ~Output() { flush(); }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    void put(std::string_view text)
    {
        m_buffer += text;
        if (m_buffer.size() >= kSize)
            flush();
    }
    void putNumber(std::uint64_t number);
    /// `text` as a JSON string; bytes that are not UTF-8 become U+FFFD.
    void putJson(std::string_view text);
    /// False once writing failed (the reader has gone).
    bool flush();
    bool isBroken() const { return m_broken; }

private:
    static constexpr std::size_t kSize = 256 << 10;
    std::string m_buffer;
    bool m_broken = false;
};

/// One line on standard error: "vantoro-cli: ARCHIVE: ENTRY: sentence", names made safe for terminals.
void complain(std::string_view archive, std::string_view entry, std::string_view sentence);

/// "1.5 MB", in powers of 1000.
std::string sizeText(std::uint64_t bytes);

}
