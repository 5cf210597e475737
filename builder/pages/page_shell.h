#pragma once

#include "builder/pages/html_writer.h"
#include "builder/pages/templates.h"
#include "builder/pages/words.h"

#include <string_view>
#include <vector>

namespace Lumenfold::Builder {

// Ids of templates have a capital letter: anchors of documents, which have none, cannot meet them.

/// What stands around the content of a page.
struct Shell {
    const Chrome& chrome;
    const PageFrame& frame;
    std::string_view kind = {};           ///< class of the body: "topic"
    const ProjectView* project = nullptr; ///< gives the sidebar; null for a page without one
    const std::vector<Heading>* headings = nullptr; ///< gives the table of contents
    std::string_view machine_data = {};             ///< JSON-LD; may be empty
};

/// Everything before the content of <main>.
void begin_page(HtmlWriter& html, const Shell& shell);
/// Everything after it.
void end_page(HtmlWriter& html, const Shell& shell);

/// The head of a page between the charset and the links that all pages share.
void write_metadata(HtmlWriter& html, const Chrome& chrome, const PageFrame& frame);

/// The pages of a project: versions, topics, license, and the family's other members.
void write_sidebar(HtmlWriter& html, const Words& words, const ProjectView& project,
                   std::string_view path);

/// Whether a page has enough headings for a table of contents.
bool has_contents(const std::vector<Heading>* headings);
void write_contents(HtmlWriter& html, const std::vector<Heading>& headings);

const Words& words_of(const Chrome& chrome);

/// `sentence` with the values for "%1" and "%2".
std::string fill_in(std::string_view sentence, std::string_view first,
                    std::string_view second = {});

} // namespace Lumenfold::Builder
