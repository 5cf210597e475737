#pragma once

#include "builder/documents/link_resolver.h"
#include "builder/report/message.h"

#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold::Builder {

/// A heading of a document, for its table of contents, for search and for the check of anchors.
struct Heading {
    int level = 1;    ///< 1 to 6
    std::string id;   ///< the anchor, unique in the document, as code forges make them
    std::string text; ///< plain text
    bool operator==(const Heading&) const = default;
};

/// A stretch of a document's plain text, for search.
struct TextSection {
    std::string anchor; ///< of the heading before it; empty before the first
    std::string text;   ///< words separated by single blanks, code included
    bool operator==(const TextSection&) const = default;
};

/// A document as a piece of a page.
struct Document {
    std::string html;  ///< well formed, safe; addresses may begin with ROOT_MARK
    std::string title; ///< plain text of a heading of level 1 at the beginning; may be empty
    std::vector<Heading> headings;
    std::vector<std::string> anchors; ///< every id in `html`, headings' and others'
    std::vector<TextSection> sections;
};

/// What a renderer needs to know of a document.
struct DocumentSource {
    std::string file; ///< as messages name it
    /// The heading of level 1 at the beginning is left out of `html`, since the page shows a title
    /// of its own.
    bool drop_title = false;
};

/// Markdown (CommonMark 0.30 with tables, task lists, strikethrough, autolinks and alerts) as HTML.
/// Text that is not UTF-8 is told and shown with U+FFFD. Anchors within the document that lead
/// nowhere are told here; all other addresses go through `links`.
Document render_markdown(std::string_view text, const DocumentSource& source, LinkResolver& links,
                         Messages& messages);

/// A plain text, such as a license, as HTML: paragraphs at blank lines, line ends kept.
Document render_plain_text(std::string_view text, const DocumentSource& source, Messages& messages);

/// The owner's own HTML (a home fragment) with its addresses passed through `links`; nothing is
/// filtered.
Document render_fragment(std::string_view html, const DocumentSource& source, LinkResolver& links,
                         Messages& messages);

/// Code of a fenced block as escaped HTML with spans of class "hl-..."; the escaped text alone for
/// a language that is not known.
std::string highlight_code(std::string_view code, std::string_view language);

} // namespace Lumenfold::Builder
