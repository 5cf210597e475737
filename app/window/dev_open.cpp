#include "app/window/dev_open.h"

#include "app/context/app_context.h"
#include "app/tabs/opening.h"
#include "app/window/command_line.h"

#include <cstdlib>
#include <sstream>
#include <string>

namespace Lumenfold {

namespace {

void tell_start_problems(const Context& context) {
    std::string text;
    for (const std::string& problem : start_problems())
        text += (text.empty() ? "" : "\n") + problem;
    if (!text.empty())
        context->message_dialog.show("Couldn't Open", text);
}

} // namespace

void open_named_files(const Context& context) {
    const char* value = std::getenv("LUMENFOLD_DEV_OPEN");
    std::istringstream lines(value ? value : "");
    for (std::string line; std::getline(lines, line);)
        if (!line.empty())
            open_config(context, line);
    tell_start_problems(context);
}

} // namespace Lumenfold
