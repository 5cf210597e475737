#pragma once

#include "builder/documents/document.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Lumenfold::Builder {

// What pages show, ready to be written: nothing here has to be looked up, checked or computed any
// more. All texts are plain (templates escape them) but those named `html`. An address is absolute,
// or begins with ROOT_MARK and leads from the site's root: place_page puts the way there in.

/// A picture with its natural size; no picture where `src` is empty.
struct PictureView {
    std::string src;
    int width = 0; ///< 0 if unknown
    int height = 0;
};

/// A link of a menu, a list or a card.
struct LinkView {
    std::string label;
    std::string href; ///< empty: the label stands without a link
    std::string note; ///< a muted remark beside it; may be empty
    PictureView icon;
    bool external = false; ///< opens in a new tab
    bool current = false;  ///< the page on which it stands
};

/// An entry of the header's menus: a link, or a label with links below.
struct MenuView {
    LinkView link;
    std::vector<LinkView> items;
};

/// One <link> of the favicon set.
struct FaviconView {
    std::string rel;
    std::string type;
    std::string sizes;
    std::string href;
};

/// What every page of the site wears.
struct SiteView {
    std::string title;
    std::string tab_text; ///< what stands behind a page's title in the browser's tab
    std::string description;
    std::string url;      ///< without a slash at its end; empty if the site has none
    std::string language; ///< BCP 47, "en" by default
    std::string copyright;
    PictureView logo;
    std::string logo_height; ///< a CSS length such as "28px"; may be empty
    std::string logo_height_mobile;
    std::vector<MenuView> menus;
    std::vector<LinkView> footer_links;
    std::vector<LinkView> socials; ///< `note` is the user name
    std::vector<FaviconView> favicons;
    bool search = true;
    bool theme_switch = false;
    bool custom_css = false; ///< "custom.css" at the site's root comes last
    bool feed = false;       ///< "feed.xml" exists
};

/// What a page says of itself to browsers and other machines.
struct PageFrame {
    std::string path;             ///< from the site's root: "gauge/core/topics/units.html"
    std::string title;            ///< plain; templates add the site's
    std::string description;      ///< may be empty
    std::string canonical;        ///< absolute; empty without a site url
    PictureView picture;          ///< for previews of links, `src` absolute; may be empty
    std::string software_version; ///< with a version: JSON-LD of a software is written
    bool index = true;            ///< false for pages that search engines should leave out
};

/// A project or family in a list of projects.
struct ProjectCard {
    LinkView link; ///< name and address
    std::string tagline;
    PictureView logo;
    std::string version; ///< newest label; may be empty
    std::string date;
    std::vector<LinkView> members; ///< of a family
};

enum class HomeSectionKind : std::uint8_t { Description, Projects, Socials, Custom };

struct HomeSectionView {
    HomeSectionKind kind = HomeSectionKind::Custom;
    std::string id; ///< an anchor; may be empty
    std::string label;
    std::string subtext;
    PictureView icon;
    std::string html; ///< of a custom section
};

struct HomeView {
    std::string heading;
    PictureView hero;
    std::vector<HomeSectionView> sections;
    std::vector<ProjectCard> projects;
};

/// One version in a project's list.
struct VersionView {
    std::string label;
    std::string tag;
    std::string date; ///< "YYYY-MM-DD"; may be empty
    std::string license;
    std::string href;
    bool current = false; ///< the version of the page on which it stands
    bool newest = false;
};

struct FactView {
    std::string label;
    std::string value;
    std::string href; ///< may be empty
    std::string note;
};

struct DownloadView {
    LinkView link; ///< label is the platform's
    std::string size;
};

/// What all pages of one project's version share.
struct ProjectView {
    LinkView home; ///< name and address of the project's page, in this version
    std::string tagline;
    PictureView logo;
    LinkView family;               ///< empty label outside a family
    std::vector<LinkView> members; ///< the family's, this one marked
    std::vector<LinkView> topics;
    LinkView license;                  ///< empty label if there is none
    LinkView versions_page;            ///< empty label if there are no versions
    std::vector<VersionView> versions; ///< newest first
    VersionView version;     ///< the one on the page; empty label for an unversioned project
    bool unreleased = false; ///< shown from the work tree, no version is complete
    std::vector<FactView> facts;
    std::vector<DownloadView> downloads;
    std::vector<LinkView> requirements;
    LinkView repository; ///< empty href if there is none
};

/// A document of a project: its README, a topic, the license.
struct DocumentView {
    std::string title;
    std::string intro;
    std::string html;
    std::vector<Heading> headings;
    LinkView previous; ///< empty label at the ends, and outside topics
    LinkView next;
    LinkView source; ///< the file in the repository; may be empty
    /// On an older version's page: the same page of the newest, or that version's first page.
    LinkView newer;
    bool newer_is_same_page = false;
};

struct FamilyView {
    std::string name;
    std::string tagline;
    PictureView logo;
    std::vector<ProjectCard> members;
    std::vector<FactView> facts;
    DocumentView document; ///< a family's own README; empty html if it has none
};

struct PolicyView {
    std::string title;
    std::string html;
    std::vector<Heading> headings;
};

} // namespace Lumenfold::Builder
