#pragma once

#include "builder/report/reporter.h"
#include "builder/site/build_site.h"

#include <cstdint>
#include <filesystem>

namespace Lumenfold::Builder {

/// Builds a site, serves it on the loopback address alone and builds it anew whenever a file of it
/// changes; open pages then load again by themselves. Where an edit keeps the site from being made,
/// the pages show why until it is mended. Runs until it is interrupted. False if the port cannot be
/// had or the site has never been made. `port` 0 takes a free one, which is told.
bool serve_site(const std::filesystem::path& site_file, const SiteBuildOptions& options,
                std::uint16_t port, Reporter& reporter);

} // namespace Lumenfold::Builder
