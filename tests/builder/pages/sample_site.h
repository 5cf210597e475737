#pragma once

#include "builder/pages/search_index.h"
#include "builder/pages/site_assets.h"
#include "builder/pages/templates.h"

#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// What a sample is to look like.
struct SampleLook {
    std::string theme = "light"; ///< file names of shipped themes, without ".json"
    std::string other = "harbour";
    std::string language = "en";
    bool hostile = false; ///< every text holds markup, quotes and control characters
};

/// A small site with every kind of page and all that pages can show, from views written by hand.
/// Pages stand with ROOT_MARK replaced, as readers get them.
std::vector<SiteAsset> sample_site(const SampleLook& look);

/// A theme that comes with the application.
Corvel::Theme shipped_theme(const std::string& name);

} // namespace Lumenfold::Builder
