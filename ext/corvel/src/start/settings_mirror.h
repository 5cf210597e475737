#pragma once

#include <string>

namespace Corvel {

class CorvelApp;

/// Copies the direct keys of the settings group "store" into the application's store, over what
/// is there.
void load_store(CorvelApp& app);
/// Writes one key of that group at once; an empty value removes it.
void write_store_key(const std::string& key, const std::string& value);

/// The display name of the theme chosen last, or `fallback`.
std::string read_active_theme(const std::string& fallback);
void write_active_theme(const std::string& display_name);

} // namespace Corvel
