#pragma once

#include "builder/documents/document.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// A link out of a version's own pages to a place on the site
/// ("/harmonics/topics/surge.html#tides"). Whether anything is there can only be told when the site
/// is made, at each build anew.
struct SiteLink {
    std::string address; ///< from the site's root, beginning with "/", anchor included
    std::string file;    ///< where it stands
    std::size_t line = 0;
    bool operator==(const SiteLink&) const = default;
};

/// One page of a version.
struct VersionPage {
    std::string path; ///< within the version: "index.html", "license.html", "topics/units.html"
    std::string title;
    std::string label;  ///< short name for menus; empty for pages other than topics
    std::string intro;  ///< a topic's sentence below the title; may be empty
    std::string source; ///< path from the repository's root, for a link to it; may be empty
    std::vector<Heading> headings;
    std::vector<std::string> anchors;
    std::vector<TextSection> sections;
    std::vector<SiteLink> site_links;
    std::string html; ///< the body; empty when read without bodies
    bool operator==(const VersionPage&) const = default;
};

/// A picture or other file that a version's pages use.
struct VersionFile {
    std::string path;  ///< within the version, "files/..." and the path in the source folder
    std::string bytes; ///< empty when read without bodies
    bool operator==(const VersionFile&) const = default;
};

/// All that a version's pages are made of, whatever header and footer they will wear: what one tag
/// holds, built once. Pages: "index.html" first (the README, may have an empty body), topics in
/// the manifest's order, "license.html" last if there is a license.
struct StoredVersion {
    std::string label;
    std::string tag; ///< empty for documents of a work tree
    std::string commit;
    std::string date; ///< "YYYY-MM-DD"; may be empty
    std::vector<VersionPage> pages;
    std::vector<VersionFile> files;
};

/// Whether `read_version` reads all that pages show, or only what is known of them: then `html`,
/// `sections` and the files' `bytes` are empty.
enum class Bodies : std::uint8_t { Without, With };

// A version's folder, "versions/3.2" beside the project's configuration:
//
//     .lumenfold-built   the record; written last, it says that the rest is whole
//     contents.json      what is known of the pages, and how many bytes each has in pages.html
//     pages.html         the pages' bodies, one behind the other in that order
//     search.txt         for each page its lines "anchor TAB text", and an empty line
//     files/             pictures and other files, as in the source folder
//
// It is made in ".lumenfold-building/3.2" beside "versions", where nobody takes it for a version,
// and moved into place.

/// Writes a version into `folder` ("…/versions/3.2") as a whole. `problem` gets words for the user
/// on failure; what was there before then still is.
bool write_version(const std::filesystem::path& folder, const StoredVersion& version,
                   std::string& problem);

/// Reads a version that `write_version` wrote; nothing if the folder holds none, one of a later
/// format, or a damaged one: it then counts as not built.
std::optional<StoredVersion> read_version(const std::filesystem::path& folder, Bodies bodies);

/// A sign of a stored version's content that costs one small read: equal signs, equal versions.
/// Empty if there is none, or none of ours.
std::string version_sign(const std::filesystem::path& folder);

} // namespace Lumenfold::Builder
