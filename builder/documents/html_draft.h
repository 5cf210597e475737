#pragma once

#include "builder/documents/markdown_sink.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Lumenfold::Builder {

/// A Markdown document with HTML of its author's, all of it as HTML to be parsed and passed through
/// the allow-list. Addresses are the author's own.
class HtmlDraft final : public MarkdownSink {
public:
    /// A draft of the document `source`; what is to be told goes to `messages`.
    HtmlDraft(std::string_view source, MarkdownSink& messages);

    void block(std::string_view tag) override;
    void inline_tag(std::string_view tag) override;
    void text(std::string_view plain) override;
    void begin_heading(int level, bool outermost) override;
    void end_heading() override;
    void begin_link(const LinkText& link) override;
    void end_link() override;
    void image(const ImageText& image) override;
    void code_block(std::string_view code, std::string_view language) override;
    void begin_table() override;
    void end_table_head() override;
    void end_table() override;
    void html(std::string_view piece, std::size_t offset) override;
    void tell(std::size_t offset, std::string problem, Severity severity) override;

    const std::string& html() const { return html_; }
    /// Where the document has what stands at `offset` of the HTML.
    std::size_t source_offset(std::size_t offset) const;
    /// Whether parsing the HTML stays within bounds: its time may grow with the author's tags times
    /// all tags, since unclosed ones nest.
    bool is_bounded() const;

private:
    void attribute(std::string_view name, std::string_view value);
    void mark(std::size_t offset);

    std::string_view source_;
    MarkdownSink& messages_;
    std::string html_;
    std::vector<int> headings_;
    std::vector<std::pair<std::size_t, std::size_t>> places_; ///< in the HTML, in the document
    std::size_t tags_ = 0;
    std::size_t author_tags_ = 0;
};

} // namespace Lumenfold::Builder
