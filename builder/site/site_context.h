#pragma once

#include "builder/pages/templates.h"
#include "builder/site/project_state.h"
#include "builder/site/site_addresses.h"
#include "builder/site/site_model.h"

#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold::Builder {

/// What making any page may look at. Nothing in it changes while pages are made.
struct SiteContext {
    const SiteModel& site;
    const SiteAddresses& addresses;
    const std::vector<ProjectState>& states; ///< one for each project
};

/// Looks up what a configuration refers to, and tells what leads nowhere with its line.
class ReferenceReader {
public:
    ReferenceReader(const SiteAddresses& addresses, const ConfigFile& file, Messages& messages)
        : addresses_(addresses)
        , file_(file)
        , messages_(messages) {}

    /// A link; with an empty label it takes the title of the page it leads to.
    LinkView link(std::string label, const std::string& href, bool external = false) const;
    PictureView picture(const std::string& reference) const;

private:
    void tell(const std::string& reference, std::string problem) const;

    const SiteAddresses& addresses_;
    const ConfigFile& file_;
    Messages& messages_;
};

/// A page's address in the view of a link to it.
std::string page_href(std::string_view path);

/// The absolute address that search engines should know a page by; empty without a site address.
std::string canonical_address(const SiteConfig& config, std::string_view path);

/// A project or family as a card. Problems with its references are told elsewhere.
ProjectCard project_card(const SiteContext& context, std::size_t project);

} // namespace Lumenfold::Builder
