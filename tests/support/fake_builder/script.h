#pragma once

#include <nlohmann/json_fwd.hpp>

namespace FakeBuilder {

/// Plays a script, a list of steps, and returns the exit code, 0 unless a step gives another. The
/// environment variable LUMENFOLD_FAKE_BUILDER is an object of scripts, by the command that they
/// are for ("site build", "build" or "versions").
///
///     "I\tReading"                          a line
///     {"line": "I\tfast", "times": 100000}  many of them
///     {"line": "I\tdos", "end": "\r\n"}     another line end, or none: ""
///     {"bytes": [0, 255, 10]}               any bytes
///     {"error": "warning: odd"}             a line on the error stream
///     {"wait": 200}                         milliseconds, with everything so far delivered
///     {"signal": 9}                         end by a signal
///     {"exit": 3}                           end with a code
int play_script(const nlohmann::json& script);

} // namespace FakeBuilder
