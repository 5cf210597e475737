#pragma once

#include "builder/report/message.h"
#include "builder/site/site_config.h"
#include "theme/theme.h"

#include <filesystem>

namespace Lumenfold::Builder {

/// The palettes of a site: the one that it names, and one for the other of light and dark.
struct SiteThemes {
    Corvel::Theme theme;
    Corvel::Theme other;
};

/// Whether a theme is dark: by what it says of itself, else by its colour "Primary".
bool is_dark(const Corvel::Theme& theme);

/// Looks a site's theme up in its folder "themes", then in `shipped`. A theme that is not found is
/// told, and the default taken.
SiteThemes choose_themes(const SiteConfig& config, const std::filesystem::path& shipped,
                         Messages& messages);

} // namespace Lumenfold::Builder
