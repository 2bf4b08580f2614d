#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace vantoro {

/// A password: UTF-8 text in one locked buffer, wiped when the last copy goes. Copies share the buffer.
/// While one is alive the process makes no core dump (PR_SET_DUMPABLE 0).
class Secret {
public:
    Secret() = default;
    /// Copies `text`; the caller wipes its own copy.
    explicit Secret(std::string_view text);
    std::string_view text() const;
    bool isEmpty() const { return text().empty(); }

private:
    struct Locked;
    std::shared_ptr<const Locked> m_locked;
};

/// Overwrites memory so that the compiler cannot leave it out.
void wipe(void* memory, std::size_t size);

}
