#pragma once

#include "builder/commands/command_line.h"

namespace Lumenfold::Builder {

/// Does what was asked for and gives the exit code.
int run_command(const Invocation& wanted);

} // namespace Lumenfold::Builder
