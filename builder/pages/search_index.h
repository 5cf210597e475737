#pragma once

#include "builder/documents/document.h"
#include "builder/pages/site_assets.h"

#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// A page as search knows it.
struct SearchPage {
    std::string path; ///< from the site's root
    std::string title;
    std::string project; ///< name; empty for the site's own pages
    std::string version; ///< label; empty if unversioned
    bool newest = true;
    std::vector<Heading> headings;
    std::vector<TextSection> sections;
};

/// "search.weights" of the site's configuration.
struct SearchWeights {
    double title = 4;
    double heading = 2;
    double body = 1;
};

/// What search needs of some pages, as bytes to be kept from build to build: the pages' text need
/// not be read again as long as they do not change. The versions of one page, newest first, are
/// found together only if they are in one summary, so a project's pages of all versions belong
/// there. A page that stands at two addresses is given once.
std::string search_summary(const std::vector<SearchPage>& pages);

/// The index that the pages' script loads piece by piece, from summaries in the order of the site.
/// The same summaries give the same files, all below "search/". A summary of another format is
/// passed over.
std::vector<SiteAsset> search_files(const std::vector<std::string>& summaries,
                                    const SearchWeights& weights);

} // namespace Lumenfold::Builder
