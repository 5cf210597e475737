#include "builder/serve/serve_site.h"

#include "builder/report/interruption.h"
#include "builder/serve/site_server.h"
#include "builder/site/watch_list.h"

#include <algorithm>
#include <chrono>
#include <sstream>
#include <string>
#include <system_error>
#include <thread>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::milliseconds LOOK_EVERY{200};
constexpr std::chrono::milliseconds CLOCK_STEP{10}; ///< that times of files may lag behind

/// What one build had to complain of, as the pages show it.
struct BuildOutcome {
    bool sound = false;
    std::string problems;
};

class Builds {
public:
    Builds(fs::path site_file, const SiteBuildOptions& options, Reporter& reporter)
        : site_file_(std::move(site_file))
        , options_(options)
        , reporter_(reporter) {
        options_.watched = &watched_;
        options_.built_folder = &folder_;
    }

    BuildOutcome build() {
        const WatchList before = watched_;
        const std::string sign_before = before.sign();
        const auto begin = fs::file_time_type::clock::now() - CLOCK_STEP;
        std::ostringstream said;
        BuildOutcome outcome;
        {
            Reporter collected(said, ReportStyle::Porcelain, ReportDetail::Quiet);
            outcome.sound = build_site(site_file_, options_, collected);
        }
        std::istringstream lines(said.str());
        for (std::string line; std::getline(lines, line);)
            if (line.starts_with("E\t"))
                outcome.problems += line.substr(2) + "\n";
        // What was edited while this build ran may not be in it: the next one follows at once.
        const bool edited = before.sign() != sign_before || edited_since(begin);
        sign_ = edited ? std::string() : watched_.sign();
        return outcome;
    }

    bool something_changed() const { return watched_.sign() != sign_; }
    const fs::path& folder() const { return folder_; }

    void tell(const BuildOutcome& outcome) {
        std::istringstream lines(outcome.problems);
        for (std::string line; std::getline(lines, line);)
            reporter_.say({outcome.sound ? Severity::Complaint : Severity::Fault, {}, 0, line});
        reporter_.info(outcome.sound ? "Built." : "Not built. Waiting for a change.");
    }

private:
    bool edited_since(fs::file_time_type begin) const {
        const auto end = fs::file_time_type::clock::now();
        return std::any_of(watched_.files.begin(), watched_.files.end(), [&](const auto& file) {
            std::error_code error;
            const fs::file_time_type time = fs::last_write_time(file, error);
            return !error && time >= begin && time <= end;
        });
    }

    fs::path site_file_;
    SiteBuildOptions options_;
    Reporter& reporter_;
    WatchList watched_;
    fs::path folder_;
    std::string sign_;
};

} // namespace

bool serve_site(const fs::path& site_file, const SiteBuildOptions& options, std::uint16_t port,
                Reporter& reporter) {
    Builds builds(site_file, options, reporter);
    BuildOutcome outcome = builds.build();
    builds.tell(outcome);
    if (builds.folder().empty())
        return false;
    SiteServer server(builds.folder());
    server.publish(outcome.problems);
    const std::uint16_t taken = server.start(port);
    if (taken == 0) {
        reporter.fault({}, "Port " + std::to_string(port) +
                               " is taken. Choose another with --port, or let one be chosen.");
        return false;
    }
    reporter.info("Serving http://localhost:" + std::to_string(taken) + "/ until interrupted.");
    while (!is_interrupted()) {
        std::this_thread::sleep_for(LOOK_EVERY);
        if (!builds.something_changed())
            continue;
        outcome = builds.build();
        builds.tell(outcome);
        server.publish(outcome.problems);
    }
    return true;
}

} // namespace Lumenfold::Builder
