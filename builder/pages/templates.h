#pragma once

#include "builder/pages/views.h"

#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// The parts of a page that are the same on each, written once for a build: head links, header and
/// footer.
struct Chrome {
    SiteView site;
    std::string head;
    std::string header;
    std::string footer;
};

Chrome make_chrome(SiteView site);

// Each gives a whole page (HTML, UTF-8) in which addresses still begin with ROOT_MARK.
std::string home_page(const Chrome& chrome, const PageFrame& frame, const HomeView& view);
std::string project_page(const Chrome& chrome, const PageFrame& frame, const ProjectView& project,
                         const DocumentView& readme);
std::string topic_page(const Chrome& chrome, const PageFrame& frame, const ProjectView& project,
                       const DocumentView& topic);
std::string license_page(const Chrome& chrome, const PageFrame& frame, const ProjectView& project,
                         const DocumentView& license);
std::string versions_page(const Chrome& chrome, const PageFrame& frame, const ProjectView& project);
std::string family_page(const Chrome& chrome, const PageFrame& frame, const FamilyView& view);
std::string policy_page(const Chrome& chrome, const PageFrame& frame, const PolicyView& view);
std::string search_page(const Chrome& chrome, const PageFrame& frame);
/// Servers show this page at any depth: its ROOT_MARK takes the path of the site's url ("/",
/// "/docs/"), not way_to_root.
std::string not_found_page(const Chrome& chrome, const PageFrame& frame);

/// The anchor of a home section with this id.
std::string section_anchor(std::string_view id);

/// The way from a page to the site's root: "" for "index.html", "../" for "gauge/index.html".
std::string way_to_root(std::string_view path);

/// The page with `root` in the place of each ROOT_MARK.
std::string place_page(std::string_view html, std::string_view root);

} // namespace Lumenfold::Builder
