// site_bench FOLDER [PROJECTS VERSIONS TOPICS]: makes a large site in FOLDER, unless it is there,
// and tells how long its builds take and how much memory, with Hugo's beside where that is
// installed.
#include "builder/measured_site.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Measured {
    double seconds = 0;
    double processor = 0; ///< seconds of all cores: what counts on a machine with other work
    double megabytes = 0; ///< at the peak
};

double seconds_of(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

/// Runs a command, what it prints thrown away. Ends this program if the command fails.
Measured run(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    const auto begin = std::chrono::steady_clock::now();
    const pid_t process = ::fork();
    if (process == 0) {
        ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
        ::execvp(arguments.front(), arguments.data());
        ::_exit(127);
    }
    int status = 0;
    rusage usage = {};
    ::wait4(process, &status, 0, &usage);
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - begin;
    if (status != 0) {
        std::fprintf(stderr, "%s failed\n", command.front().c_str());
        std::exit(1);
    }
    return {spent.count(), seconds_of(usage.ru_utime) + seconds_of(usage.ru_stime),
            static_cast<double>(usage.ru_maxrss) / 1024};
}

/// The quickest of some runs, each after `prepare`: what the machine does beside only adds time.
Measured best_of(int runs, const std::vector<std::string>& command,
                 const std::function<void()>& prepare) {
    Measured best{1e9, 1e9, 0};
    for (int i = 0; i < runs; ++i) {
        prepare();
        const Measured now = run(command);
        best = {std::min(best.seconds, now.seconds), std::min(best.processor, now.processor),
                std::max(best.megabytes, now.megabytes)};
    }
    return best;
}

void tell(const char* what, const Measured& measured) {
    std::printf("%-44s %8.3f s %8.3f s of processors %6.0f MB\n", what, measured.seconds,
                measured.processor, measured.megabytes);
    std::fflush(stdout);
}

void remove_versions(const fs::path& site) {
    for (const auto& project : fs::directory_iterator(site / "projects"))
        fs::remove_all(project.path() / "versions");
}

void measure_builder(const fs::path& folder, const Bench::SiteSize& size) {
    const fs::path site = folder / "site";
    const fs::path output = site / "output";
    const std::vector<std::string> build = {LUMENFOLD_CLI, "site", "build", site.string()};
    std::vector<std::string> all = build;
    all.push_back("--pending");
    const auto nothing = [] {};
    tell("everything", best_of(3, all, [&] {
             fs::remove_all(output);
             remove_versions(site);
         }));
    tell("the site from built versions", best_of(3, build, [&] { fs::remove_all(output); }));
    tell("nothing changed", best_of(10, build, nothing));
    tell("nothing changed, asked for what is pending", best_of(5, all, nothing));
    const fs::path project =
        site / "projects" / ("project-" + std::to_string((size.projects + 1) / 2));
    tell("one topic's version changed", best_of(5, build, [&] {
             Bench::change_one_topic(folder, size);
             run({LUMENFOLD_CLI, "build", project.string()});
         }));
}

void measure_peer(const fs::path& folder) {
    if (std::system("command -v hugo >/dev/null") != 0) {
        std::puts("hugo is not installed");
        return;
    }
    const fs::path peer = folder / "hugo";
    const std::vector<std::string> build = {"hugo", "--quiet", "--source", peer.string()};
    tell("hugo, everything", best_of(3, build, [&] { fs::remove_all(peer / "public"); }));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 5) {
        std::fputs("usage: site_bench FOLDER [PROJECTS VERSIONS TOPICS]\n", stderr);
        return 2;
    }
    const fs::path folder = fs::absolute(argv[1]);
    Bench::SiteSize size;
    if (argc == 5)
        size = {std::atoi(argv[2]), std::atoi(argv[3]), std::atoi(argv[4])};
    if (!fs::exists(folder / "site"))
        Bench::make_measured_site(folder, size);
    measure_builder(folder, size);
    measure_peer(folder);
    return 0;
}
