#include "builder/serve/served_site.h"

#include <arpa/inet.h>
#include <array>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace TestSupport {

namespace {

constexpr std::chrono::seconds LONGEST{60}; ///< for a machine that does much else

std::string read_until(int file, const std::string& words) {
    std::string text;
    std::array<char, 512> block{};
    while (text.find(words) == std::string::npos) {
        const ssize_t got = ::read(file, block.data(), block.size());
        if (got <= 0)
            break;
        text.append(block.data(), static_cast<std::size_t>(got));
    }
    return text;
}

} // namespace

ServedSite::ServedSite(const std::filesystem::path& site) {
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0)
        return;
    process_ = ::fork();
    if (process_ == 0) {
        ::dup2(pipe[1], STDOUT_FILENO);
        ::dup2(pipe[1], STDERR_FILENO);
        ::execl(LUMENFOLD_CLI, LUMENFOLD_CLI, "site", "serve", site.c_str(), nullptr);
        ::_exit(127);
    }
    ::close(pipe[1]);
    output_ = pipe[0];
    const std::string said = read_until(output_, "until interrupted");
    const std::string before = "http://localhost:";
    const std::size_t at = said.find(before);
    if (at != std::string::npos)
        port_ = static_cast<std::uint16_t>(std::stoi(said.substr(at + before.size())));
}

ServedSite::~ServedSite() {
    if (process_ > 0) {
        ::kill(process_, SIGTERM);
        ::waitpid(process_, nullptr, 0);
    }
    ::close(output_);
}

std::string ServedSite::answer_to(const std::string& request) const {
    const int client = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port_);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    std::string answer;
    if (::connect(client, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0) {
        for (std::size_t sent = 0; sent < request.size();) {
            const ssize_t count =
                ::send(client, request.data() + sent, request.size() - sent, MSG_NOSIGNAL);
            if (count <= 0)
                break;
            sent += static_cast<std::size_t>(count);
        }
        std::array<char, 4096> block{};
        for (ssize_t got = 0; (got = ::recv(client, block.data(), block.size(), 0)) > 0;)
            answer.append(block.data(), static_cast<std::size_t>(got));
    }
    ::close(client);
    return answer;
}

std::string ServedSite::get(const std::string& path, const std::string& method,
                            const std::string& host) const {
    return answer_to(method + " " + path + " HTTP/1.1\r\nHost: " + host + "\r\n\r\n");
}

std::string ServedSite::wait_for(const std::string& path, const std::string& text) const {
    return wait_until(path, text, true);
}

std::string ServedSite::wait_without(const std::string& path, const std::string& text) const {
    return wait_until(path, text, false);
}

std::string ServedSite::wait_until(const std::string& path, const std::string& text,
                                   bool there) const {
    const auto end = std::chrono::steady_clock::now() + LONGEST;
    std::string answer = get(path);
    while ((answer.find(text) != std::string::npos) != there &&
           std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        answer = get(path);
    }
    return answer;
}

} // namespace TestSupport
