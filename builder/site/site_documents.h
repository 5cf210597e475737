#pragma once

#include "builder/documents/document.h"
#include "builder/site/site_addresses.h"
#include "builder/site/site_config.h"

#include <map>
#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// The documents that lie in the site's own folder: policies and the fragments of the home page.
/// They are read before the site's addresses are known, and their links looked up afterwards.
struct SiteDocument {
    std::string file; ///< as messages name it
    std::string text;
    bool found = false;
};

/// Reads a document by its reference, which may begin with "/" for the site's folder.
SiteDocument read_site_document(const SiteConfig& config, const std::string& reference);

/// Resolves the links of a document in the site's folder: "/" is the site's root, other policies'
/// Markdown files become their pages, pictures are files of the site's folder.
class SiteDocumentLinks : public LinkResolver {
public:
    /// `base` is the folder, below the site's, that relative addresses start from.
    SiteDocumentLinks(const SiteAddresses& addresses, const SiteConfig& config, std::string base);

    LinkTarget link(std::string_view address, std::size_t line) override;
    ImageTarget image(std::string_view address, std::size_t line) override;

private:
    std::string rooted(std::string_view address) const;

    const SiteAddresses& addresses_;
    std::map<std::string, std::string, std::less<>> policy_pages_; ///< by file
    std::string base_;
};

} // namespace Lumenfold::Builder
