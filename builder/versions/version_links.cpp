#include "builder/versions/version_links.h"

#include "builder/documents/addresses.h"
#include "builder/documents/anchors.h"
#include "builder/documents/image_size.h"
#include "builder/versions/site_address.h"
#include "builder/versions/source_paths.h"

#include <algorithm>
#include <optional>
#include <unordered_set>
#include <utility>

namespace Lumenfold::Builder {
namespace {

constexpr const char* PICTURES = "files/";

LinkTarget link_problem(std::string problem) {
    LinkTarget target;
    target.problem = std::move(problem);
    return target;
}

ImageTarget image_problem(std::string problem) {
    ImageTarget target;
    target.problem = std::move(problem);
    return target;
}

ImageTarget elsewhere(std::string_view address) {
    ImageTarget target;
    target.link = (address.starts_with("//") ? "https:" : "") + std::string(address);
    target.advanced = true;
    target.problem = "the picture " + target.link +
                     " lies elsewhere and is shown as a link: pages ask no other host for anything";
    return target;
}

std::string with_fragment(std::string address, std::string_view fragment) {
    return fragment.empty() ? address : address.append("#").append(fragment);
}

} // namespace

VersionLinks::VersionLinks(const SourceTree& tree, const VersionContext& context)
    : tree_(tree)
    , context_(context)
    , repository_{context.repo_url, context.repo_platform, context.tag}
    , prefix_(tree.prefix()) {}

void VersionLinks::add_page(const std::string& source, const std::string& page_path) {
    pages_.try_emplace(source, page_path);
}

void VersionLinks::begin_document(const std::string& source, const std::string& page_path) {
    source_ = source;
    page_ = page_path;
    site_links_.clear();
}

std::string VersionLinks::file_name(std::string_view source) const {
    return context_.source_name.empty() ? std::string(source)
                                        : context_.source_name + "/" + std::string(source);
}

LinkTarget VersionLinks::link(std::string_view address, std::size_t line) {
    if (address.empty())
        return link_problem("a link without an address; give it one, or leave the words alone");
    if (const auto own = address_within_site(address, context_.site_url))
        return site_target(*own, line);
    if (is_web_address(address))
        return {(address.starts_with("//") ? "https:" : "") + std::string(address), true, {}};
    if (!address_scheme(address).empty())
        return {std::string(address), false, {}};
    if (address.starts_with('/'))
        return rooted_target(address, line);
    return relative_target(address, line);
}

LinkTarget VersionLinks::site_target(std::string_view address, std::size_t line) {
    const std::string file = site_file_address(address);
    site_links_.push_back({percent_decoded(file), file_name(source_), line});
    return {ROOT_MARK + file.substr(1), false, {}};
}

/// Code forges read "/" as the repository's root: what the source folder has there is meant.
std::optional<std::string> VersionLinks::rooted_file(std::string_view encoded) const {
    std::optional<std::string> path = joined_path("", percent_decoded(encoded));
    if (path && path->starts_with(prefix_))
        path->erase(0, prefix_.size());
    return path && tree_.kind(*path) == EntryKind::File ? path : std::nullopt;
}

LinkTarget VersionLinks::rooted_target(std::string_view address, std::size_t line) {
    const AddressParts parts = split_address(address);
    if (const std::optional<std::string> own = rooted_file(parts.path))
        return file_target(*own, parts.fragment, line);
    return site_target(address, line);
}

LinkTarget VersionLinks::relative_target(std::string_view address, std::size_t line) {
    const AddressParts parts = split_address(address);
    if (parts.path.empty())
        return page_target(page_, parts.fragment, line);
    const std::string relative = percent_decoded(parts.path);
    const std::string folder = prefix_ + std::string(folder_of(source_));
    const std::optional<std::string> path = joined_path(folder, relative);
    if (!path)
        return link_problem("\"" + relative + "\" leads out of the repository; use a web address");
    const bool inside = (*path + "/").starts_with(prefix_);
    if (!inside)
        return repository_target(*path, false, parts.fragment);
    const std::string own = path->size() < prefix_.size() ? "" : path->substr(prefix_.size());
    return file_target(own, parts.fragment, line);
}

/// The page of a document, or of the README of a folder.
const std::string* VersionLinks::page_at(const std::string& source) const {
    for (const char* const name : {"", "/README.md", "/readme.md", "/Readme.md"}) {
        const auto page = pages_.find(source.empty() && *name != '\0' ? name + 1 : source + name);
        if (page != pages_.end())
            return &page->second;
    }
    return nullptr;
}

LinkTarget VersionLinks::page_target(const std::string& page, std::string_view fragment,
                                     std::size_t line) {
    std::string anchor = percent_decoded(fragment);
    if (!anchor.empty() && anchor != "top")
        anchor_links_.push_back({file_name(source_), line, page, std::move(anchor)});
    return {with_fragment(relative_way(page_, page), fragment), false, {}};
}

LinkTarget VersionLinks::file_target(const std::string& path, std::string_view fragment,
                                     std::size_t line) {
    if (const std::string* const page = page_at(path))
        return page_target(*page, fragment, line);
    const EntryKind kind = path.empty() ? EntryKind::Folder : tree_.kind(path);
    if (kind == EntryKind::Missing && find_in(tree_, path).kind == EntryKind::Missing)
        return link_problem(missing(path));
    return repository_target(prefix_ + path, kind == EntryKind::Folder, fragment);
}

std::string VersionLinks::missing(const std::string& path) {
    return missing_file(tree_, path, ++missing_files_ <= MOST_SUGGESTIONS);
}

LinkTarget VersionLinks::repository_target(const std::string& repository_path, bool is_folder,
                                           std::string_view fragment) {
    std::string address = repository_address(repository_, repository_path, is_folder);
    if (address.empty())
        return link_problem("\"" + repository_path +
                            "\" has no page on the site; make it a topic, or give the project the "
                            "web address of its repository");
    return {with_fragment(std::move(address), fragment), true, {}};
}

ImageTarget VersionLinks::image(std::string_view address, std::size_t line) {
    if (address.empty())
        return image_problem("a picture without an address; give it one, or remove it");
    if (const auto own = address_within_site(address, context_.site_url))
        return rooted_picture(*own, line);
    if (is_web_address(address))
        return elsewhere(address);
    if (!address_scheme(address).empty())
        return image_problem("\"" + address_scheme(address) +
                             ":\" pictures are left out; save the picture as a file");
    return address.starts_with('/') ? rooted_picture(address, line) : relative_picture(address);
}

ImageTarget VersionLinks::relative_picture(std::string_view address) {
    const std::string relative = percent_decoded(split_address(address).path);
    const std::string folder = prefix_ + std::string(folder_of(source_));
    std::optional<std::string> path = joined_path(folder, relative);
    if (!path || !path->starts_with(prefix_))
        return image_problem("\"" + relative +
                             "\" lies outside the source folder, where pictures are taken from; "
                             "move it there");
    return file_picture(path->substr(prefix_.size()));
}

ImageTarget VersionLinks::rooted_picture(std::string_view address, std::size_t line) {
    const std::string_view encoded = split_address(address).path;
    const std::optional<std::string> own = rooted_file(encoded);
    if (own)
        return file_picture(*own);
    site_links_.push_back({percent_decoded(encoded), file_name(source_), line});
    ImageTarget target;
    target.src = ROOT_MARK + std::string(encoded.substr(1));
    return target;
}

ImageTarget VersionLinks::file_picture(const std::string& path) {
    auto entry = pictures_.find(path);
    if (entry == pictures_.end())
        entry = pictures_.emplace(path, read_picture(path)).first;
    ImageTarget target = entry->second.target;
    if (!target.src.empty())
        target.src = relative_way(page_, target.src);
    return target;
}

VersionLinks::Picture VersionLinks::read_picture(const std::string& path) {
    std::optional<std::string> bytes = tree_.read(path);
    if (!bytes)
        return {{}, image_problem(missing(path))};
    const std::optional<ImageSize> size = image_size(*bytes);
    if (!size)
        return {
            {},
            image_problem("\"" + path + "\" is no picture; use PNG, JPEG, GIF, WebP, AVIF or SVG")};
    Picture picture{std::move(*bytes), {}};
    picture.target.src = PICTURES + percent_encoded(path);
    picture.target.width = size->width;
    picture.target.height = size->height;
    return picture;
}

std::vector<SiteLink> VersionLinks::take_site_links() {
    return std::exchange(site_links_, {});
}

std::vector<VersionFile> VersionLinks::take_files() {
    std::vector<VersionFile> files;
    for (auto& [path, picture] : pictures_)
        if (!picture.target.src.empty())
            files.push_back({PICTURES + path, std::move(picture.bytes)});
    pictures_.clear();
    return files;
}

Messages VersionLinks::missing_anchors(const std::vector<VersionPage>& pages) const {
    std::unordered_map<std::string_view, const VersionPage*> by_path;
    std::unordered_map<const VersionPage*, std::unordered_set<std::string_view>> anchors;
    for (const VersionPage& page : pages) {
        by_path[page.path] = &page;
        anchors[&page].insert(page.anchors.begin(), page.anchors.end());
    }
    const std::vector<std::string> none;
    Messages messages;
    for (const AnchorLink& link : anchor_links_) {
        const VersionPage* const page = by_path.at(link.page);
        if (anchors[page].contains(link.anchor))
            continue;
        const bool suggest = messages.size() < MOST_SUGGESTIONS;
        messages.push_back({Severity::Complaint, link.file, link.line,
                            missing_anchor(link.anchor, "\"" + page->source + "\"",
                                           suggest ? page->anchors : none)});
    }
    return messages;
}

} // namespace Lumenfold::Builder
