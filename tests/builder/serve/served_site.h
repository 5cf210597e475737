#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <sys/types.h>

namespace TestSupport {

/// `lumenfold-cli site serve` on a free port, until it is destroyed.
class ServedSite {
public:
    explicit ServedSite(const std::filesystem::path& site);
    ~ServedSite();
    ServedSite(const ServedSite&) = delete;
    ServedSite& operator=(const ServedSite&) = delete;

    /// 0 if it did not come up.
    std::uint16_t port() const { return port_; }
    /// All that comes back for some bytes.
    std::string answer_to(const std::string& request) const;
    /// The answer to a request for this path, as it stands.
    std::string get(const std::string& path, const std::string& method = "GET",
                    const std::string& host = "localhost") const;
    /// Asks until the answer holds the text, or no longer does; the last answer.
    std::string wait_for(const std::string& path, const std::string& text) const;
    std::string wait_without(const std::string& path, const std::string& text) const;

private:
    std::string wait_until(const std::string& path, const std::string& text, bool there) const;

    pid_t process_ = -1;
    int output_ = -1;
    std::uint16_t port_ = 0;
};

} // namespace TestSupport
