#pragma once

#include <string>

namespace Corvel {
class CorvelApp;
}

namespace Lumenfold {

/// Puts a state on a node or takes it off.
void set_state(Corvel::CorvelApp& app, const std::string& path, const std::string& state, bool on);

} // namespace Lumenfold
