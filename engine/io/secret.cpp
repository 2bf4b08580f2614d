#include "engine/io/secret.h"

#include <atomic>
#include <cstring>
#include <vector>

#include <sys/mman.h>
#include <sys/prctl.h>

namespace vantoro {

void wipe(void* memory, std::size_t size)
{
    if (size > 0)
        ::explicit_bzero(memory, size);
}

namespace {
std::atomic<int> secretsAlive{0};
}

struct Secret::Locked {
    explicit Locked(std::string_view text) : bytes(text.begin(), text.end())
    {
        if (secretsAlive.fetch_add(1) == 0)
            ::prctl(PR_SET_DUMPABLE, 0);
        // Fails where the limit on locked memory is used up; the buffer is wiped all the same.
        (void)::mlock(bytes.data(), bytes.size());
    }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
    ~Locked()
    {
        wipe(bytes.data(), bytes.size());
        (void)::munlock(bytes.data(), bytes.size());
        if (secretsAlive.fetch_sub(1) == 1)
            ::prctl(PR_SET_DUMPABLE, 1);
    }
    std::vector<char> bytes;
};

Secret::Secret(std::string_view text) : m_locked(std::make_shared<const Locked>(text)) {}

std::string_view Secret::text() const
{
    return m_locked ? std::string_view(m_locked->bytes.data(), m_locked->bytes.size()) : std::string_view();
}

}
