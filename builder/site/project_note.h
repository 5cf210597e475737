#pragma once

#include "builder/report/message.h"
#include "builder/versions/stored_version.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold::Builder {

/// A page of a project as the rest of the site knows it.
struct NotedPage {
    std::string path; ///< from the site's root
    std::string title;
    std::vector<std::string> anchors;
};

/// A release, for the feed and the project's card.
struct NotedRelease {
    std::string label;
    std::string tag;
    std::string date;
    std::string path; ///< of its first page
};

/// What the site has to know of a project's pages without reading them: kept from build to build,
/// so that a project of which nothing changed is not opened again.
struct ProjectNote {
    std::string inputs; ///< the sign of what this was made from
    std::vector<NotedPage> pages;
    std::vector<std::string> files;     ///< what the pages use, as paths from the site's root
    std::vector<NotedRelease> releases; ///< newest first
    std::vector<SiteLink> site_links;
    /// Files of a work tree that were looked at, with their identities then; empty for versions.
    std::vector<std::pair<std::string, std::string>> looked_at;
    Messages
        messages; ///< of documents of a work tree: those of versions are told when they are made
    std::string tags;                 ///< the sign of the repository's tags when it was last asked
    std::vector<std::string> waiting; ///< labels of versions that wait to be built
    Messages repository_messages;
    std::string search; ///< search_summary of its pages
};

std::string write_note(const ProjectNote& note);
/// Nothing if the bytes are no note that write_note made.
std::optional<ProjectNote> read_note(std::string_view bytes);

} // namespace Lumenfold::Builder
