#pragma once

#include "site/json_file.h"

#include <optional>
#include <string>

namespace FakeBuilder {

/// The script for `command` ("site build", "build" or "versions"); null if there is none. It is the
/// list under that key of the object in the environment variable LUMENFOLD_FAKE_BUILDER, or else of
/// the configuration's "fake_builder".
Lumenfold::Json find_script(const std::string& command, const Lumenfold::Json& config);

/// Plays a script, a list of steps, and returns the exit code, 0 unless a step gives another.
///
///     "I\tReading"                          a line
///     {"line": "I\tfast", "times": 100000}  many of them
///     {"line": "I\tdos", "end": "\r\n"}     another line end, or none: ""
///     {"bytes": [0, 255, 10]}               any bytes
///     {"error": "warning: odd"}             a line on the error stream
///     {"wait": 200}                         milliseconds, with everything so far delivered
///     {"signal": 9}                         end by a signal
///     {"exit": 3}                           end with a code
int play_script(const Lumenfold::Json& script);

} // namespace FakeBuilder
