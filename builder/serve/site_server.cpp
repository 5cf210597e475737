#include "builder/serve/site_server.h"

#include "builder/files/file_io.h"
#include "builder/serve/bounded_stream.h"
#include "builder/serve/connection_threads.h"
#include "builder/serve/content_type.h"
#include "builder/serve/served_page.h"
#include "site/path_text.h"

#include <algorithm>
#include <atomic>
#include <httplib.h>
#include <mutex>
#include <optional>
#include <sys/resource.h>
#include <sys/socket.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

constexpr const char* LOOPBACK = "127.0.0.1";
constexpr int WAITING_CONNECTIONS = 1024;
constexpr rlim_t OPEN_FILES = 4096;
constexpr std::size_t MAX_REQUEST_BODY = 1024;

/// Whether a request was meant for this computer: a foreign name that somebody made point here
/// must not read what an author has not published yet.
bool names_loopback(const std::string& host) {
    const std::string name = host.substr(0, host.find(':'));
    return name == "localhost" || name == LOOPBACK;
}

/// The file that a request's path means; nothing if it is none that may be served.
std::optional<fs::path> file_for(const fs::path& folder, const std::string& path) {
    if (path.empty() || path.front() != '/' || path.find('\0') != std::string::npos ||
        path.find('\\') != std::string::npos)
        return std::nullopt;
    fs::path file = folder;
    for (const fs::path& part : path_from_utf8(path).relative_path()) {
        if (part.native().starts_with('.'))
            return std::nullopt;
        file /= part;
    }
    std::error_code error;
    if (fs::is_directory(file, error))
        file /= "index.html";
    const fs::path real = fs::canonical(file, error);
    if (error || !fs::is_regular_file(real, error))
        return std::nullopt;
    const fs::path below = real.lexically_relative(folder);
    return *below.begin() == ".." ? std::nullopt : std::optional(real);
}

/// Connections are files, too: without this, as many as a shell allows would keep pages from being
/// read.
void allow_many_connections() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur >= OPEN_FILES)
        return;
    limit.rlim_cur = std::min(limit.rlim_max, OPEN_FILES);
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

/// The library's server with one request for each connection, which is bounded in time and bytes.
class HttpServer : public httplib::Server {
public:
    void let_many_wait() { ::listen(svr_sock_, WAITING_CONNECTIONS); }

private:
    bool process_and_close_socket(socket_t socket) override {
        bool closed = false;
        BoundedStream stream(socket);
        // Several ranges of one file could ask for more than all of it.
        const bool answered =
            process_request(stream, /*close_connection=*/true, closed, [](auto& request) {
                if (request.ranges.size() > 1)
                    request.ranges.clear();
            });
        ::shutdown(socket, SHUT_RDWR);
        ::close(socket);
        return answered;
    }
};

} // namespace

struct SiteServer::State {
    fs::path folder;
    HttpServer server;
    std::jthread thread;
    std::atomic<unsigned> generation{1};
    std::mutex mutex;
    std::string problem;

    void answer(const httplib::Request& request, httplib::Response& response) {
        if (request.path == GENERATION_PATH) {
            response.set_content(std::to_string(generation), "text/plain");
            return;
        }
        if (request.path == RELOAD_SCRIPT_PATH) {
            response.set_content(std::string(reload_script()), "text/javascript; charset=utf-8");
            return;
        }
        if (request.path == STYLE_PATH) {
            response.set_content(std::string(problem_style()), "text/css; charset=utf-8");
            return;
        }
        std::error_code error;
        const bool folder_without_slash =
            !request.path.ends_with('/') &&
            fs::is_directory(folder / path_from_utf8(request.path).relative_path(), error);
        if (folder_without_slash && file_for(folder, request.path)) {
            response.set_redirect(request.path + "/", 301);
            return;
        }
        response.status = request.ranges.empty() ? 200 : 206;
        send_file(file_for(folder, request.path), response);
    }

    void send_file(std::optional<fs::path> file, httplib::Response& response) {
        if (!file) {
            response.status = 404;
            file = file_for(folder, "/404.html");
        }
        std::optional<std::string> bytes = file ? read_file(*file) : std::nullopt;
        const std::string type = file && bytes ? content_type(path_to_utf8(*file)) : "text/html";
        std::string body = bytes ? *std::move(bytes) : "<head></head><body>Nothing here.</body>";
        if (type.starts_with("text/html")) {
            const std::scoped_lock lock(mutex);
            body = served_page(std::move(body), problem);
        }
        response.set_content(std::move(body), type);
    }
};

SiteServer::SiteServer(fs::path folder)
    : state_(std::make_unique<State>()) {
    std::error_code error;
    state_->folder = fs::weakly_canonical(folder, error);
    httplib::Server& server = state_->server;
    server.new_task_queue = [] { return new ConnectionThreads; };
    server.set_payload_max_length(MAX_REQUEST_BODY);
    server.set_default_headers({{"Cache-Control", "no-cache"},
                                {"X-Content-Type-Options", "nosniff"},
                                {"Content-Security-Policy", "default-src 'self'"}});
    server.set_pre_routing_handler(
        [this](const httplib::Request& request, httplib::Response& response) {
            if (!names_loopback(request.get_header_value("Host")))
                response.status = 403;
            else if (request.method == "GET" || request.method == "HEAD")
                state_->answer(request, response);
            else
                response.status = 405;
            return httplib::Server::HandlerResponse::Handled;
        });
}

SiteServer::~SiteServer() {
    state_->server.stop();
}

std::uint16_t SiteServer::start(std::uint16_t port) {
    HttpServer& server = state_->server;
    allow_many_connections();
    if (port == 0) {
        const int taken = server.bind_to_any_port(LOOPBACK);
        port = taken > 0 ? static_cast<std::uint16_t>(taken) : 0;
    } else if (!server.bind_to_port(LOOPBACK, port)) {
        port = 0;
    }
    if (port == 0)
        return 0;
    server.let_many_wait();
    state_->thread = std::jthread([&server] { server.listen_after_bind(); });
    return port;
}

void SiteServer::publish(std::string problem) {
    {
        const std::scoped_lock lock(state_->mutex);
        state_->problem = std::move(problem);
    }
    ++state_->generation;
}

} // namespace Lumenfold::Builder
