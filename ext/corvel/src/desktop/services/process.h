#pragma once

#include <QString>

#include <string>

namespace Corvel {

class CorvelApp;

/// Fills the `process` slot. Standard error comes in line with standard output; lines are bytes
/// without their line end. `on_async_change` is asked for once per read and once at the end. A
/// process still running when the application quits is killed, and nobody hears of its end.
void install_qt_process(CorvelApp& app);

/// What to start for a program name: a path as it stands, else the executable of that name beside
/// the application, else the name itself, for the search path.
QString resolve_program(const std::string& name);

} // namespace Corvel
