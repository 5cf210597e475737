#include "checks.h"

#include <cstdlib>

namespace CorvelLint {
namespace {

constexpr std::string_view PREFIX = "engine: ";
constexpr std::string_view LEFT_OUT = ": Left out";

// The messages read "engine: file:line: Left out ..."; those about a folder have no line.
void add(const std::string& message, Findings& findings) {
    const std::size_t end = message.find(LEFT_OUT);
    if (!message.starts_with(PREFIX) || end == std::string::npos)
        return;
    std::string file = message.substr(PREFIX.size(), end - PREFIX.size());
    std::uint64_t line = 0;
    const std::size_t colon = file.rfind(':');
    if (colon != std::string::npos &&
        file.find_first_not_of("0123456789", colon + 1) == std::string::npos) {
        line = std::strtoull(file.c_str() + colon + 1, nullptr, 10);
        file.erase(colon);
    }
    findings.add({file, line}, "", message.substr(end + 2),
                 line == 0 ? std::string()
                           : "the program loads no more of it; part the file, or write less at "
                             "once");
}

} // namespace

void check_limits(const StyleTree& tree, Findings& findings) {
    for (const std::string& message : tree.log())
        add(message, findings);
}

} // namespace CorvelLint
