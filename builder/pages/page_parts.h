#pragma once

#include "builder/pages/page_shell.h"

namespace Lumenfold::Builder {

// Pieces that more than one kind of page shows.

/// What a reader of an older version, or of one that is none yet, must know first.
void write_version_note(HtmlWriter& html, const Words& words, const ProjectView& project,
                        const DocumentView& document);

/// The way down to the page: family, project, version.
void write_breadcrumbs(HtmlWriter& html, const ProjectView& project, std::string_view path);

/// The document between its title and the end of its article, with the links that follow it.
void write_document(HtmlWriter& html, const Words& words, const DocumentView& document);

void write_facts(HtmlWriter& html, const std::vector<FactView>& facts);

/// Projects as a grid of cards with headings of level 2 or 3.
void write_cards(HtmlWriter& html, const std::vector<ProjectCard>& cards, int level);

/// Links to where a reader may go instead: the home page and what the menus lead to.
void write_ways_out(HtmlWriter& html, const Chrome& chrome);

} // namespace Lumenfold::Builder
