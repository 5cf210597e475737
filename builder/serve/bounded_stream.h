#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <httplib.h>

namespace Lumenfold::Builder {

/// A connection to a client that may be slow, silent or talkative: it gets so much time for its
/// request and for taking the answer, and may say so much. Beyond that, reading and writing fail.
class BoundedStream : public httplib::Stream {
public:
    static constexpr std::chrono::seconds TIME{5};
    static constexpr std::size_t MOST_BYTES = 64 * 1024; ///< of a request

    /// The socket stays the caller's.
    explicit BoundedStream(socket_t socket)
        : socket_(socket) {}

    bool is_readable() const override { return true; }
    bool is_writable() const override { return true; }
    ssize_t read(char* bytes, std::size_t size) override;
    ssize_t write(const char* bytes, std::size_t size) override;
    void get_remote_ip_and_port(std::string&, int&) const override {}
    void get_local_ip_and_port(std::string&, int&) const override {}
    socket_t socket() const override { return socket_; }

private:
    bool wait_for(short event) const;
    ssize_t fill();

    socket_t socket_;
    std::chrono::steady_clock::time_point end_ = std::chrono::steady_clock::now() + TIME;
    std::array<char, 4096> block_{};
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
    std::size_t taken_ = 0;
};

} // namespace Lumenfold::Builder
