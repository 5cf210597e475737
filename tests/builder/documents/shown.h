#pragma once

#include "builder/documents/link_resolver.h"
#include "builder/report/message.h"

#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// Messages as test cases write them, one a line: "! 12: what is wrong", "~" for advanced ones.
inline std::string shown(const Messages& messages, bool with_file = false) {
    std::string text;
    for (const Message& message : messages) {
        text += message.severity == Severity::Advanced ? "~ "
                : message.severity == Severity::Fault  ? "!! "
                                                       : "! ";
        if (with_file)
            text += message.file + ":";
        text += std::to_string(message.line) + ": " + message.text + "\n";
    }
    return text;
}

/// Leads every address where it says, but for those that begin with "missing". Pictures are 200
/// pixels wide and 100 high; those from elsewhere become links.
class OpenLinks final : public LinkResolver {
public:
    LinkTarget link(std::string_view address, std::size_t) override {
        if (address.starts_with("missing"))
            return {{}, false, "no file " + std::string(address)};
        return {std::string(address), address.starts_with("http"), {}};
    }

    ImageTarget image(std::string_view address, std::size_t) override {
        ImageTarget target;
        target.advanced = address.starts_with("http");
        if (target.advanced)
            target.link = address;
        else if (!address.starts_with("missing"))
            target.src = address;
        if (target.src.empty())
            target.problem = "no picture " + std::string(address);
        target.width = target.src.empty() ? 0 : 200;
        target.height = target.src.empty() ? 0 : 100;
        return target;
    }
};

} // namespace Lumenfold::Builder
