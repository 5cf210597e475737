#include "builder/commands/command_line.h"

#include <CLI/CLI.hpp>
#include <ostream>

namespace Lumenfold::Builder {

namespace {

constexpr const char* DESCRIPTION =
    "Builds a documentation website from the versions in your projects' git repositories.";

constexpr const char* EXAMPLES = R"(Examples:
  lumenfold-cli site build .                     make the site of this folder
  lumenfold-cli site build . --pending --strict  the one command of a CI
  lumenfold-cli site check .                     tell all that is wrong, write nothing
  lumenfold-cli site serve . --port 8080         see the site while you write
  lumenfold-cli versions projects/gauge          what is built, what is not
  lumenfold-cli build projects/gauge --version 3.2

Exit codes: 0 done, 1 errors were found, 2 wrong use.)";

constexpr const char* COMMON_OPTIONS =
    "Every command knows --porcelain, --quiet and --verbose too.";

constexpr const char* PLAN_EXAMPLE = R"(Example, two at a time:
  lumenfold-cli site plan . | jq -r '.[].command | @sh' |
    xargs -d '\n' -P2 -I{} sh -c '{}')";

constexpr unsigned MOST_THREADS = 256;

/// The options and subcommands, bound to an invocation that they fill in.
class Parser {
public:
    explicit Parser(const std::string& program_version)
        : app_(DESCRIPTION, "lumenfold-cli") {
        app_.set_version_flag("--version", "lumenfold-cli " + program_version);
        app_.require_subcommand(1);
        app_.fallthrough();
        app_.footer(COMMON_OPTIONS); // inherited by the commands that are added below
        app_.failure_message(CLI::FailureMessage::simple);
        app_.add_flag("--porcelain", wanted_.porcelain, "Print lines for programs");
        app_.add_flag("-q,--quiet", wanted_.quiet, "Print only what is wrong");
        app_.add_flag("-v,--verbose", wanted_.verbose, "Print each page and picture too");
        add_site();
        add_project();
        app_.footer(EXAMPLES);
    }

    void parse(int argc, const char* const* argv) {
        app_.parse(argc, argv);
        wanted_.program = argc > 0 ? argv[0] : "lumenfold-cli";
    }
    int tell(const CLI::ParseError& error, std::ostream& out, std::ostream& errors) {
        return app_.exit(error, out, errors);
    }
    bool is_porcelain() const { return wanted_.porcelain; }
    const Invocation& wanted() const { return wanted_; }

private:
    void add_site() {
        CLI::App* site = app_.add_subcommand("site", "The whole site");
        site->require_subcommand(1);
        site->fallthrough();

        CLI::App* build = add(site, Command::SiteBuild, "build", "Make the site");
        build->add_flag("--pending", wanted_.pending, "First build the versions that wait");
        build->add_flag("--strict", wanted_.strict, "Exit with 1 for broken links and the like");
        add_output(build);
        add_threads(build);

        CLI::App* check =
            add(site, Command::SiteCheck, "check", "Tell what is wrong, write nothing");
        add_threads(check);

        CLI::App* serve = add(site, Command::SiteServe, "serve",
                              "Make the site, show it to this computer, follow changes");
        serve->add_flag("--pending", wanted_.pending, "First build the versions that wait");
        serve->add_option("--port", wanted_.port, "Which port to use; a free one if not set")
            ->type_name("N");
        add_output(serve);
        add_threads(serve);

        CLI::App* plan = add(site, Command::SitePlan, "plan",
                             "Print the versions that wait, as JSON: a command for each");
        plan->footer(PLAN_EXAMPLE);
    }

    void add_project() {
        CLI::App* build =
            add(&app_, Command::Build, "build", "Build a project's versions that wait");
        build->add_option("--version", wanted_.version, "Only this one, such as 3.2")
            ->type_name("LABEL");
        add(&app_, Command::Versions, "versions", "List a project's versions");
    }

    CLI::App* add(CLI::App* parent, Command command, const char* name, const char* description) {
        CLI::App* app = parent->add_subcommand(name, description);
        app->fallthrough();
        app->add_option("CONFIG", wanted_.config, "The configuration, or its folder")
            ->required()
            ->type_name("");
        app->callback([this, command] { wanted_.command = command; });
        return app;
    }

    void add_output(CLI::App* app) {
        app->add_option("--output", wanted_.output, "Where to, instead of the site's \"output\"")
            ->type_name("FOLDER");
    }

    void add_threads(CLI::App* app) {
        app->add_option("--threads", wanted_.threads,
                        "How many to use; as many as cores if not set")
            ->check(CLI::Range(1U, MOST_THREADS).description(""))
            ->type_name("N");
    }

    Invocation wanted_;
    CLI::App app_;
};

} // namespace

std::optional<Invocation> parse_command_line(int argc, const char* const* argv,
                                             const std::string& program_version, std::ostream& out,
                                             std::ostream& errors, int& exit_code) {
    Parser parser(program_version);
    try {
        parser.parse(argc, argv);
        return parser.wanted();
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            exit_code = EXIT_FINE;
            parser.tell(error, out, errors);
        } else if (parser.is_porcelain()) {
            exit_code = EXIT_WRONG_USE;
            out << "E\t" << error.what() << '\n';
        } else {
            exit_code = EXIT_WRONG_USE;
            parser.tell(error, out, errors);
        }
    }
    return std::nullopt;
}

} // namespace Lumenfold::Builder
