#pragma once

#include <string>

namespace Corvel {

class CorvelApp;

/// Wires the version section of the settings screen and the update dialog below the root layer
/// `root` and its window `window`, and arms the automatic checks.
void install_update_section(CorvelApp& app, const std::string& root, const std::string& window);

} // namespace Corvel
