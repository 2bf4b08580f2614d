#include "engine/cage/channel.h"

#include <array>
#include <cerrno>
#include <memory>
#include <utility>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vantoro::cage {

namespace {

constexpr std::size_t kMaxMessage = kMaxText + 4096;
constexpr Error kGone{ErrorCode::DecoderStopped, "cage: the other process is gone"};

// What may have held a password.
struct WipedBuffer {
    std::vector<std::byte> bytes;
    ~WipedBuffer() { wipe(bytes.data(), bytes.size()); }
};

/// Room for any message, of which most fill a few bytes: touched only as far as it is used.
struct ReceivedBlock {
    ~ReceivedBlock() { wipe(bytes.get(), length); }
    std::unique_ptr<std::byte[]> bytes = std::make_unique_for_overwrite<std::byte[]>(kMaxMessage);
    std::size_t length = 0;
};

union ControlBuffer {
    cmsghdr align;
    std::array<char, CMSG_SPACE(sizeof(int) * kMaxParts)> bytes;
};

}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept
{
    if (this != &other) {
        if (m_fd >= 0)
            ::close(m_fd);
        m_fd = other.release();
    }
    return *this;
}

Descriptor::~Descriptor()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

int Descriptor::release() { return std::exchange(m_fd, -1); }

Result<std::pair<Descriptor, Descriptor>> Channel::makePair()
{
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return Error{ErrorCode::Internal, "cage: socketpair", errno};
    return std::pair(Descriptor(ends[0]), Descriptor(ends[1]));
}

Result<void> Channel::send(const Message& message, std::span<const int> descriptors) const
{
    WipedBuffer block{encodeMessage(message)};
    iovec part{block.bytes.data(), block.bytes.size()};
    msghdr header{};
    header.msg_iov = &part;
    header.msg_iovlen = 1;
    ControlBuffer control{};
    if (!descriptors.empty()) {
        assert(descriptors.size() <= kMaxParts);
        header.msg_control = control.bytes.data();
        header.msg_controllen = CMSG_SPACE(descriptors.size_bytes());
        auto* rights = CMSG_FIRSTHDR(&header);
        rights->cmsg_level = SOL_SOCKET;
        rights->cmsg_type = SCM_RIGHTS;
        rights->cmsg_len = CMSG_LEN(descriptors.size_bytes());
        std::memcpy(CMSG_DATA(rights), descriptors.data(), descriptors.size_bytes());
    }
    while (::sendmsg(m_socket.get(), &header, MSG_NOSIGNAL) < 0) {
        if (errno != EINTR)
            return kGone;
    }
    return {};
}

Result<std::optional<Received>> Channel::receive(int milliseconds, std::size_t maxDescriptors) const
{
    pollfd wanted{m_socket.get(), POLLIN, 0};
    const int ready = milliseconds < 0 ? 1 : ::poll(&wanted, 1, milliseconds);
    if (ready <= 0)
        return std::optional<Received>();
    ReceivedBlock block;
    iovec part{block.bytes.get(), kMaxMessage};
    msghdr header{};
    header.msg_iov = &part;
    header.msg_iovlen = 1;
    ControlBuffer control{};
    if (maxDescriptors > 0) {
        header.msg_control = control.bytes.data();
        header.msg_controllen = control.bytes.size();
    }
    ssize_t length = -1;
    bool wasReset = false;
    for (;;) {
        length = ::recvmsg(m_socket.get(), &header, MSG_CMSG_CLOEXEC);
        // The other end closed before it read all that we sent: what it said until then comes next.
        const bool isReset = length < 0 && errno == ECONNRESET && !std::exchange(wasReset, true);
        const bool isInterrupted = length < 0 && errno == EINTR && milliseconds < 0;
        if (!isReset && !isInterrupted)
            break;
    }
    if (length < 0 && errno == EINTR)
        return std::optional<Received>();
    if (length <= 0)
        return kGone;
    block.length = static_cast<std::size_t>(length);
    Received received;
    for (auto* item = CMSG_FIRSTHDR(&header); item; item = CMSG_NXTHDR(&header, item)) {
        if (item->cmsg_level != SOL_SOCKET || item->cmsg_type != SCM_RIGHTS)
            continue;
        const auto count = (item->cmsg_len - CMSG_LEN(0)) / sizeof(int);
        for (std::size_t i = 0; i < count; ++i) {
            int fd = -1;
            std::memcpy(&fd, CMSG_DATA(item) + i * sizeof fd, sizeof fd);
            received.descriptors.emplace_back(fd);
        }
    }
    received.message = TRY(parseMessage(ConstBytes(block.bytes.get(), block.length)));
    return std::optional(std::move(received));
}

}
