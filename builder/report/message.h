#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// What a message means for the run.
enum class Severity : std::uint8_t {
    Info,      ///< a step worth reading
    Advanced,  ///< a page and why it was made, a picture left out
    Complaint, ///< content that leads nowhere; the page is made as far as it can be
    Fault      ///< what keeps a version or the site from being made; the rest goes on
};

/// One line for the person who runs the builder.
struct Message {
    Severity severity = Severity::Info;
    std::string file;     ///< UTF-8, as a person would open it; may be empty
    std::size_t line = 0; ///< 1-based; 0 when the whole file is meant
    std::string text;     ///< what is wrong, and what to do
};

/// Messages in the order in which they are to be read. Work that runs beside other work collects
/// its own, so that the order never depends on threads.
using Messages = std::vector<Message>;

} // namespace Lumenfold::Builder
