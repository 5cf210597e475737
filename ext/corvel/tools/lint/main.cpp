#include "attribute_page.h"
#include "checks.h"

#include <exception>
#include <iostream>

namespace {

int run(const std::vector<std::string>& arguments) {
    std::string error;
    const auto options = CorvelLint::parse_options(arguments, error);
    if (!options) {
        std::cerr << "corvel_lint: " << error << "; see --help\n";
        return 2;
    }
    if (options->help) {
        std::cout << CorvelLint::HELP_TEXT;
        return 0;
    }
    if (options->attributes) {
        CorvelLint::print_attributes(std::cout);
        return 0;
    }
    CorvelLint::Findings findings;
    check_syntax(*options, findings);
    const CorvelLint::StyleTree tree(*options);
    check_limits(tree, findings);
    check_values(tree, findings);
    check_states(tree, *options, findings);
    check_links(tree, findings);
    check_inheritance(tree, findings);
    check_binds(tree, *options, findings);
    check_icons(tree, *options, findings);
    check_icon_files(*options, findings);
    check_themes(*options, findings);
    findings.print(std::cout);
    return findings.empty() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run({argv + 1, argv + argc});
    } catch (const std::exception& failure) {
        std::cerr << "corvel_lint: " << failure.what() << '\n';
        return 2;
    }
}
