#include "builder/documents/clean_text.h"
#include "builder/documents/document.h"
#include "builder/documents/document_writer.h"
#include "builder/documents/html_draft.h"
#include "builder/documents/html_reader.h"
#include "builder/documents/markdown_reader.h"

namespace Lumenfold::Builder {
namespace {

/// Reads a document that holds HTML. False if it holds too much, which is told.
bool read_with_html(std::string_view text, DocumentWriter& writer) {
    HtmlDraft draft(text, writer);
    if (!read_markdown(text, AuthorHtml::AsHtml, draft))
        return false;
    if (draft.is_bounded()) {
        read_html(draft, writer);
        return true;
    }
    writer.tell(0,
                "the document holds too much HTML to be read safely and shows it as text; write "
                "it in Markdown",
                Severity::Complaint);
    return read_markdown(text, AuthorHtml::AsText, writer);
}

} // namespace

Document render_markdown(std::string_view text, const DocumentSource& source, LinkResolver& links,
                         Messages& messages) {
    const CleanText clean(text);
    tell_invalid(clean, source, messages);
    DocumentWriter writer(clean.text(), source, links, messages);
    const bool whole = holds_html(clean.text())
                           ? read_with_html(clean.text(), writer)
                           : read_markdown(clean.text(), AuthorHtml::AsText, writer);
    if (whole)
        return writer.finish();
    messages.push_back({Severity::Complaint, source.file, 0,
                        "the document makes far more page than it has text and is shown as plain "
                        "text; split its tables and shorten its addresses"});
    return render_plain_text(clean.text(), source, messages);
}

} // namespace Lumenfold::Builder
