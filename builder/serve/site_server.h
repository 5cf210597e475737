#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

namespace Lumenfold::Builder {

/// Serves a built site over HTTP on the loopback address, to any number of clients, in threads of
/// its own. It answers GET and HEAD for regular files of the folder and nothing else; names that
/// begin with a dot, and links that lead out of the folder, are never served.
class SiteServer {
public:
    explicit SiteServer(std::filesystem::path folder);
    ~SiteServer();

    /// Begins to serve; `port` 0 takes a free one. The port, or 0 if it cannot be had.
    std::uint16_t start(std::uint16_t port);

    /// Tells open pages that the site was made anew. `problem` is shown on every page until the
    /// next call; empty if there is none.
    void publish(std::string problem);

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace Lumenfold::Builder
