#include "engine/io/file_read.h"

#include <cerrno>

#include <unistd.h>

namespace vantoro {

Result<std::size_t> readFileAt(int file, std::uint64_t position, Bytes into)
{
    std::size_t done = 0;
    while (done < into.size()) {
        const auto count = ::pread(file, into.data() + done, into.size() - done, static_cast<off_t>(position + done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return Error{ErrorCode::Io, "pread", errno};
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

}
