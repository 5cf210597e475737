#include "app/window/dev_open.h"

#include "app/tabs/opening.h"

#include <cstdlib>
#include <sstream>
#include <string>

namespace Lumenfold {

void open_from_environment(const Context& context) {
    const char* value = std::getenv("LUMENFOLD_DEV_OPEN");
    if (!value)
        return;
    std::istringstream lines(value);
    for (std::string line; std::getline(lines, line);)
        if (!line.empty())
            open_config(context, line);
}

} // namespace Lumenfold
