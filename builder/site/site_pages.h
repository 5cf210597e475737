#pragma once

#include "builder/pages/search_index.h"
#include "builder/site/project_pages.h"
#include "builder/site/site_context.h"

#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// A page of the site itself: its place, and its making once header and footer are known.
struct SitePage {
    std::string path;
    std::string title;
};

/// A policy with its document made into a page.
struct PolicyDocument {
    std::string path;
    Document document;
    std::string title;
};

/// What the site's own pages show, ready to be written.
struct SiteDocuments {
    std::vector<PolicyDocument> policies;
    HomeView home;
    std::vector<TextSection> home_texts; ///< of the home page's custom sections, for search
};

/// The pages that the site has besides its projects'.
std::vector<SitePage> site_page_list(const SiteConfig& config);

/// Reads and renders policies, fragments and all else that the site's own pages show; problems go
/// to `messages`.
SiteDocuments read_site_documents(const SiteContext& context, Messages& messages);

/// What search knows of the pages that no project's documents make: home, policies, and the pages
/// of families and of projects without documents.
std::vector<SearchPage> site_search_pages(const SiteContext& context,
                                          const SiteDocuments& documents);

/// What header and footer show. Problems with the configuration's references go to `messages`.
SiteView site_view(const SiteContext& context, Messages& messages);

/// Makes home, policies, search and the page for addresses that lead nowhere.
void make_site_pages(const SiteContext& context, const Chrome& chrome,
                     const SiteDocuments& documents, const FileWriter& write);

} // namespace Lumenfold::Builder
