#pragma once

#include "screens/theme_sources.h"

namespace Corvel {

/// The theme directories on the settings store, the platform's directory dialog and the
/// environment variable CORVEL_THEME_DIR.
ThemeSourceServices desktop_theme_source_services();

} // namespace Corvel
