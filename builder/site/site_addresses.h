#pragma once

#include "builder/documents/link_resolver.h"
#include "builder/pages/views.h"
#include "builder/report/message.h"

#include <filesystem>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Lumenfold::Builder {

/// What an address on the site leads to.
struct SiteTarget {
    std::string href;  ///< beginning with ROOT_MARK, or absolute
    std::string title; ///< of the page, if it is one
    bool external = false;
    std::string problem; ///< words for the user if nothing is there
};

/// All that has an address on the site: pages with their anchors, and files of the site's folder,
/// which become part of the site as soon as something leads to them. Once all pages are added it
/// may be asked from several threads.
class SiteAddresses {
public:
    /// `url` is the site's own address: links to it are links within the site.
    SiteAddresses(std::filesystem::path site_folder, std::string url);

    /// Anchors must outlive this object.
    void add_page(std::string path, std::string title, const std::vector<std::string>* anchors);

    /// Resolves an address of a configuration or of a document of the site: absolute, or a path
    /// from the site's root with or without a slash before it.
    SiteTarget resolve(std::string_view address) const;

    /// The picture behind a reference such as "/images/logo.svg"; no picture, with words in
    /// `problem`, if there is none. An empty reference is no problem.
    PictureView picture(std::string_view reference, std::string& problem) const;

    /// The files of the site's folder that were asked for so far, as paths below it.
    std::set<std::string> used_files() const;
    /// The same and those that were not found: what a change of would change the site.
    std::set<std::string> wanted_files() const;

private:
    struct Page {
        std::string title;
        const std::vector<std::string>* anchors;
    };

    std::string page_problem(const std::string& path, std::string_view address) const;
    bool use_file(const std::string& path) const;

    std::filesystem::path folder_;
    std::string url_;
    std::unordered_map<std::string, Page> pages_;
    mutable std::mutex mutex_;
    mutable std::set<std::string> used_;
    mutable std::set<std::string> wanted_;
    mutable std::map<std::string, PictureView> pictures_;
};

} // namespace Lumenfold::Builder
