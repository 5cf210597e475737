#pragma once

#include "builder/pages/views.h"
#include "builder/report/message.h"
#include "builder/site/site_addresses.h"
#include "builder/site/site_config.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// A file that goes into the site as it is.
struct SiteFile {
    std::string path; ///< on the site
    std::filesystem::path source;
};

/// The links to the site's favicon files; ones that should be there and are not are told.
std::vector<FaviconView> favicon_views(const SiteConfig& config, Messages& messages);

bool has_custom_css(const SiteConfig& config);

/// Where favicons and the owner's style sheet are looked for, as paths below the site's folder.
std::vector<std::string> optional_files();

/// All files that are copied: those that pages use, favicons, the owner's style sheet.
std::vector<SiteFile> site_files(const SiteConfig& config, const SiteAddresses& addresses);

} // namespace Lumenfold::Builder
