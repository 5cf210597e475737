#pragma once

#include <functional>
#include <string>

namespace Layers {

using LogSink = std::function<void(const std::string& message)>;

/// Passes `message` to the installed sink; without one, writes "layers." + message and a newline
/// to standard output. Every diagnostic of the style language leaves through here.
void log_line(const std::string& message);

/// Installs the process-wide sink, or removes it when `sink` is empty. Returns the earlier one.
LogSink set_log_sink(LogSink sink);

} // namespace Layers
