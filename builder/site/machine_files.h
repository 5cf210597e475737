#pragma once

#include "builder/pages/site_assets.h"
#include "builder/site/site_context.h"

#include <vector>

namespace Lumenfold::Builder {

/// robots.txt, and for a site with an address sitemap.xml (sitemaps.org 0.9; an index and parts for
/// more pages than one may list) and feed.xml (RFC 4287, one entry a release). Nothing in them
/// tells when they were made.
std::vector<SiteAsset> machine_files(const SiteContext& context);

} // namespace Lumenfold::Builder
