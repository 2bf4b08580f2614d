#pragma once

#include "engine/cage/protocol.h"

namespace vantoro::cage {

/// A descriptor that closes itself.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int fd) : m_fd(fd) {}
    Descriptor(Descriptor&& other) noexcept : m_fd(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor();
    int get() const { return m_fd; }
    int release();

private:
    int m_fd = -1;
};

struct Received {
    Message message;
    std::vector<Descriptor> descriptors;
};

/// One end of the socket pair: whole messages with descriptors.
class Channel {
public:
    explicit Channel(Descriptor socket) : m_socket(std::move(socket)) {}
    /// Two connected ends.
    static Result<std::pair<Descriptor, Descriptor>> makePair();

    /// DecoderStopped when the other end is gone. Wipes its own copy of the message.
    Result<void> send(const Message& message, std::span<const int> descriptors = {}) const;
    /// Waits up to `milliseconds` (below 0: for ever); nothing when the time is up. DecoderStopped when the other end
    /// is gone, Corrupt when it talks nonsense. Takes descriptors only when `maxDescriptors` allows them.
    Result<std::optional<Received>> receive(int milliseconds, std::size_t maxDescriptors) const;
    int fd() const { return m_socket.get(); }

private:
    Descriptor m_socket;
};

}
