#include "builder/site/site_addresses.h"

#include "builder/documents/addresses.h"
#include "builder/documents/image_size.h"
#include "site/json_file.h"
#include "site/path_text.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

/// Whether a normal path leads out of the folder that it starts from.
bool leads_out(const fs::path& path) {
    return path.is_absolute() || (!path.empty() && *path.begin() == "..");
}

} // namespace

SiteAddresses::SiteAddresses(fs::path site_folder, std::string url)
    : folder_(std::move(site_folder))
    , url_(std::move(url)) {}

void SiteAddresses::add_page(std::string path, std::string title,
                             const std::vector<std::string>* anchors) {
    pages_.try_emplace(std::move(path), Page{std::move(title), anchors});
}

SiteTarget SiteAddresses::resolve(std::string_view address) const {
    std::string_view rest = address;
    if (!url_.empty() && rest.starts_with(url_) &&
        (rest.size() == url_.size() || rest[url_.size()] == '/' || rest[url_.size()] == '#'))
        rest.remove_prefix(url_.size());
    else if (is_web_address(rest) || !address_scheme(rest).empty())
        return {std::string(address), {}, true, {}};
    while (rest.starts_with('/'))
        rest.remove_prefix(1);

    const std::size_t hash = std::min(rest.find('#'), rest.size());
    const std::string_view fragment = rest.substr(hash);
    std::string path = percent_decoded(rest.substr(0, hash));
    if (path.empty() || path.ends_with('/'))
        path += "index.html";

    SiteTarget target;
    target.href = ROOT_MARK + percent_encoded(path) + std::string(fragment);
    const auto page = pages_.find(path);
    if (page == pages_.end()) {
        if (!use_file(path))
            target.problem = page_problem(path, address);
        return target;
    }
    target.title = page->second.title;
    const std::string anchor =
        fragment.empty() ? std::string() : percent_decoded(fragment.substr(1));
    const std::vector<std::string>* anchors = page->second.anchors;
    if (!anchor.empty() && anchors != nullptr &&
        std::find(anchors->begin(), anchors->end(), anchor) == anchors->end())
        target.problem = "the page of '" + std::string(address) + "' has no place '#" + anchor +
                         "'. Use the anchor of one of its headings.";
    return target;
}

std::string SiteAddresses::page_problem(const std::string& path, std::string_view address) const {
    const std::string shown(address);
    if (pages_.contains(path + "/index.html"))
        return "'" + shown + "' is no page; write '" + shown + "/'.";
    if (pages_.contains(path + ".html"))
        return "'" + shown + "' is no page; write '" + shown + ".html'.";
    return "'" + shown +
           "' leads nowhere: the site has no such page or file. Correct the address, "
           "or take the link out.";
}

bool SiteAddresses::use_file(const std::string& path) const {
    const fs::path relative = path_from_utf8(path).lexically_normal();
    if (leads_out(relative) || relative.filename().native().starts_with('.'))
        return false;
    std::error_code error;
    {
        const std::scoped_lock lock(mutex_);
        wanted_.insert(path_to_utf8(relative));
    }
    const fs::path real = fs::weakly_canonical(folder_ / relative, error);
    const fs::path root = fs::weakly_canonical(folder_, error);
    // A link out of the site's folder would publish what the owner did not mean to.
    if (error || !fs::is_regular_file(real, error) || leads_out(real.lexically_relative(root)))
        return false;
    const std::scoped_lock lock(mutex_);
    used_.insert(path_to_utf8(relative));
    return true;
}

PictureView SiteAddresses::picture(std::string_view reference, std::string& problem) const {
    if (reference.empty())
        return {};
    std::string path = percent_decoded(reference);
    path.erase(0, path.find_first_not_of('/') == std::string::npos ? path.size()
                                                                   : path.find_first_not_of('/'));
    {
        const std::scoped_lock lock(mutex_);
        if (const auto known = pictures_.find(path); known != pictures_.end())
            return known->second;
    }
    if (!use_file(path)) {
        problem = "the picture '" + std::string(reference) +
                  "' is not in the site's folder. Put it there, or choose another.";
        return {};
    }
    PictureView picture{ROOT_MARK + percent_encoded(path), 0, 0};
    const std::optional<std::string> bytes = read_text_file(folder_ / path_from_utf8(path));
    if (const auto size = bytes ? image_size(*bytes) : std::nullopt) {
        picture.width = size->width;
        picture.height = size->height;
    }
    const std::scoped_lock lock(mutex_);
    return pictures_.try_emplace(std::move(path), std::move(picture)).first->second;
}

std::set<std::string> SiteAddresses::used_files() const {
    const std::scoped_lock lock(mutex_);
    return used_;
}

std::set<std::string> SiteAddresses::wanted_files() const {
    const std::scoped_lock lock(mutex_);
    return wanted_;
}

} // namespace Lumenfold::Builder
