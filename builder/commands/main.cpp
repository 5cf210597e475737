#include "builder/commands/command_line.h"
#include "builder/commands/run_command.h"
#include "builder/report/interruption.h"

#include <iostream>

int main(int argc, char** argv) {
    using namespace Lumenfold::Builder;
    std::ios::sync_with_stdio(false);
    watch_signals();
    int exit_code = EXIT_FINE;
    if (const auto wanted =
            parse_command_line(argc, argv, LUMENFOLD_VERSION, std::cout, std::cerr, exit_code))
        exit_code = run_command(*wanted);
    if (!std::cout.flush() && exit_code == EXIT_FINE)
        exit_code = EXIT_FOUND_ERRORS; // what was asked for did not arrive
    end_by_signal();
    return exit_code;
}
