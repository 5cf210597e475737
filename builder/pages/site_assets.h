#pragma once

#include "builder/report/message.h"
#include "theme/theme.h"

#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// A file of the site that is no page.
struct SiteAsset {
    std::string path; ///< from the site's root
    std::string bytes;
};

/// What the site's configuration says of its looks, beside the theme.
struct SiteStyle {
    std::string accent;      ///< "#rrggbb" for links and buttons; empty: one that suits the theme
    std::string logo_height; ///< a CSS length such as "28px"; anything else counts as none
    std::string logo_height_mobile;
};

/// The style sheet and scripts of the site, all below "assets/", in the colours of its theme and of
/// the one for the other of light and dark. A colour that would not read is moved until its
/// contrast holds, and told as an advanced line.
std::vector<SiteAsset> site_assets(const Corvel::Theme& theme, const Corvel::Theme& other,
                                   const SiteStyle& style, Messages& messages);

} // namespace Lumenfold::Builder
