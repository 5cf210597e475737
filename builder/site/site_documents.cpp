#include "builder/site/site_documents.h"

#include "site/json_file.h"
#include "site/path_text.h"

#include <filesystem>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

std::string without_root(std::string_view reference) {
    const std::size_t start = reference.find_first_not_of('/');
    return start == std::string_view::npos ? std::string() : std::string(reference.substr(start));
}

bool is_relative_path(std::string_view address) {
    const std::size_t end = address.find_first_of("/?#:");
    return !address.empty() && address.front() != '/' && address.front() != '#' &&
           (end == std::string_view::npos || address[end] != ':');
}

} // namespace

SiteDocument read_site_document(const SiteConfig& config, const std::string& reference) {
    const fs::path path = config.folder / path_from_utf8(without_root(reference));
    SiteDocument document;
    document.file = shown_path(path, config.folder);
    if (std::optional<std::string> text = read_text_file(path)) {
        document.text = *std::move(text);
        document.found = true;
    }
    return document;
}

SiteDocumentLinks::SiteDocumentLinks(const SiteAddresses& addresses, const SiteConfig& config,
                                     std::string base)
    : addresses_(addresses)
    , base_(std::move(base)) {
    for (const ConfigPolicy& policy : config.policies)
        policy_pages_.try_emplace(without_root(policy.file), policy.slug + ".html");
}

/// The address from the site's root; one that is absolute or rooted stays as it is.
std::string SiteDocumentLinks::rooted(std::string_view address) const {
    if (!is_relative_path(address))
        return std::string(address);
    const std::size_t end = std::min(address.find_first_of("?#"), address.size());
    const fs::path joined = path_from_utf8(base_ + std::string(address.substr(0, end)));
    const std::string path = joined.lexically_normal().generic_string();
    const auto page = policy_pages_.find(path);
    return "/" + (page == policy_pages_.end() ? path : page->second) +
           std::string(address.substr(end));
}

LinkTarget SiteDocumentLinks::link(std::string_view address, std::size_t) {
    SiteTarget target = addresses_.resolve(rooted(address));
    return {std::move(target.href), target.external, std::move(target.problem)};
}

ImageTarget SiteDocumentLinks::image(std::string_view address, std::size_t) {
    ImageTarget image;
    const std::string path = rooted(address);
    const SiteTarget target = addresses_.resolve(path);
    if (target.external) {
        image.link = target.href;
        image.advanced = true;
        image.problem = "the picture '" + std::string(address) +
                        "' lies elsewhere and became a link. Put a copy into the site's folder to "
                        "show it.";
        return image;
    }
    const PictureView picture = addresses_.picture(path, image.problem);
    image.src = picture.src;
    image.width = picture.width;
    image.height = picture.height;
    return image;
}

} // namespace Lumenfold::Builder
