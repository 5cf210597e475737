#include "layers/log.h"

#include <iostream>
#include <utility>

namespace Layers {
namespace {

LogSink& installed_sink() {
    static LogSink sink;
    return sink;
}

} // namespace

void log_line(const std::string& message) {
    if (const LogSink& sink = installed_sink())
        sink(message);
    else
        std::cout << "layers." << message << '\n' << std::flush;
}

LogSink set_log_sink(LogSink sink) {
    return std::exchange(installed_sink(), std::move(sink));
}

} // namespace Layers
