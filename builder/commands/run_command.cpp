#include "builder/commands/run_command.h"

#include "builder/commands/config_argument.h"
#include "builder/commands/site_plan.h"
#include "builder/commands/version_commands.h"
#include "builder/report/interruption.h"
#include "builder/report/reporter.h"
#include "builder/serve/serve_site.h"
#include "builder/site/build_site.h"

#include <cstdlib>
#include <iostream>
#include <string_view>
#include <unistd.h>

namespace Lumenfold::Builder {

namespace {

namespace fs = std::filesystem;

/// Whether what is printed is read on a terminal that knows colours by somebody who wants them.
bool is_colourful(int descriptor) {
    const char* terminal = std::getenv("TERM");
    const char* no_colour = std::getenv("NO_COLOR");
    return ::isatty(descriptor) == 1 && terminal && std::string_view(terminal) != "dumb" &&
           (!no_colour || *no_colour == '\0');
}

ReportStyle style_of(const Invocation& wanted, int descriptor) {
    if (wanted.porcelain)
        return ReportStyle::Porcelain;
    return is_colourful(descriptor) ? ReportStyle::Terminal : ReportStyle::Plain;
}

ReportDetail detail_of(const Invocation& wanted) {
    if (wanted.quiet)
        return ReportDetail::Quiet;
    return wanted.verbose ? ReportDetail::Verbose : ReportDetail::Normal;
}

SiteBuildOptions site_options(const Invocation& wanted) {
    SiteBuildOptions options;
    options.output = fs::path(wanted.output);
    options.pending = wanted.pending;
    options.check_only = wanted.command == Command::SiteCheck;
    options.threads = wanted.threads;
    return options;
}

bool is_for_a_site(Command command) {
    return command != Command::Build && command != Command::Versions;
}

/// Whether the command has printed something on its own that messages must not come between.
bool prints_data(const Invocation& wanted) {
    return wanted.command == Command::SitePlan ||
           (wanted.command == Command::Versions && !wanted.porcelain);
}

bool run(const Invocation& wanted, const fs::path& config, Reporter& reporter) {
    switch (wanted.command) {
    case Command::SiteBuild:
    case Command::SiteCheck:
        return build_site(config, site_options(wanted), reporter);
    case Command::SitePlan:
        return print_plan(config, wanted.program, std::cout, reporter);
    case Command::SiteServe:
        return serve_site(config, site_options(wanted), wanted.port, reporter);
    case Command::Build:
        return build_project(config, wanted.version, reporter);
    case Command::Versions:
        return print_versions(config, wanted.porcelain, std::cout, reporter);
    }
    return false;
}

} // namespace

int run_command(const Invocation& wanted) {
    const bool to_errors = prints_data(wanted);
    std::ostream& out = to_errors ? std::cerr : std::cout;
    const ReportStyle style = style_of(wanted, to_errors ? STDERR_FILENO : STDOUT_FILENO);
    Reporter reporter(out, style, detail_of(wanted));
    const ConfigKind kind = is_for_a_site(wanted.command) ? ConfigKind::Site : ConfigKind::Project;
    const std::optional<fs::path> config = config_argument(wanted.config, kind, reporter);
    const bool fine = config && run(wanted, *config, reporter);
    const bool complaints_count = wanted.strict || wanted.command == Command::SiteCheck;
    const bool complains = complaints_count && reporter.complaints() > 0;
    return fine && !complains && reporter.faults() == 0 && !is_interrupted() ? EXIT_FINE
                                                                             : EXIT_FOUND_ERRORS;
}

} // namespace Lumenfold::Builder
