#pragma once

#include "builder/documents/anchors.h"
#include "builder/documents/document.h"
#include "builder/documents/line_index.h"
#include "builder/documents/link_resolver.h"
#include "builder/documents/markdown_sink.h"
#include "builder/report/message.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Lumenfold::Builder {

/// Makes a Document of what a reader finds in a text: resolves its addresses, names and nests its
/// headings, gathers its plain text for search and tells what is wrong.
///
/// A heading's level in the page is one more than the number of headings that it stands below, the
/// page's own title included: a document that begins with level 3 or goes from 2 to 4 gives no gap,
/// and further headings of level 1 stand beside those of level 2. Empty headings are left out.
class DocumentWriter final : public MarkdownSink {
public:
    DocumentWriter(std::string_view text, const DocumentSource& source, LinkResolver& links,
                   Messages& messages);

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
    void tell(std::size_t offset, std::string problem, Severity severity) override;

    /// Writes an anchor as its author wrote it, unless the document has it already.
    void author_anchor(std::string_view id);
    /// Gives the heading that was just begun a class.
    void heading_class(std::string_view name);

    /// Checks the links within the document and hands everything out. Call it once, at the end.
    Document finish();

private:
    void unhead_empty_cells();
    struct LocalLink {
        std::string anchor;
        std::size_t offset;
    };
    struct OpenHeading {
        int nested = 0; ///< headings begun and not ended
        int level = 0;
        bool is_title = false;
        std::size_t html_begin = 0;
        std::size_t id_place = 0;
        std::size_t content_begin = 0;
        std::string text;
    };

    int outline_level(int authored);
    void gather(std::string_view plain);
    std::string link_address(const LinkText& link, bool& external);
    std::string local_address(std::string_view address, std::size_t offset);
    void tell_missing_anchors();
    void write_words(const ImageText& image, const ImageTarget& target);

    DocumentSource source_;
    LinkResolver& links_;
    Messages& messages_;
    LineIndex lines_;
    std::size_t first_message_; ///< of this document
    Document document_;
    std::string html_;
    Anchors anchors_;
    std::vector<int> outline_; ///< authored levels of the headings above
    OpenHeading heading_;
    bool seen_text_ = false;
    bool word_ended_ = false;
    std::vector<bool> open_links_; ///< whether each has an element of its own
    std::vector<LocalLink> local_links_;
    std::size_t table_label_place_ = 0;
    std::string table_label_;
    bool in_table_head_ = false;
    std::unordered_map<std::string, int> table_labels_;
};

} // namespace Lumenfold::Builder
