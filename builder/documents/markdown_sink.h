#pragma once

#include "builder/report/message.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// A link as a document has it. Texts are plain, offsets lead into the document's text.
struct LinkText {
    std::string_view address;
    std::string_view title; ///< may be empty
    std::size_t offset = 0;
};

/// A picture as a document has it.
struct ImageText {
    std::string_view address;
    std::string_view alt;
    std::string_view title;
    std::size_t offset = 0;
    std::string_view width; ///< the author's own, "120" or "50%"; may be empty
    std::string_view height;
    std::string_view align; ///< "left" or "right"; may be empty
};

/// Takes what MarkdownReader finds, in the order of the text. Tags are trusted HTML and every
/// opening one is closed.
class MarkdownSink {
public:
    virtual ~MarkdownSink() = default;
    virtual void block(std::string_view tag) = 0;      ///< a tag that parts words
    virtual void inline_tag(std::string_view tag) = 0; ///< a tag within words
    virtual void text(std::string_view plain) = 0;
    /// `outermost`: it stands in no list or quote and may be the document's title.
    virtual void begin_heading(int level, bool outermost) = 0;
    virtual void end_heading() = 0;
    virtual void begin_link(const LinkText& link) = 0;
    virtual void end_link() = 0;
    virtual void image(const ImageText& image) = 0;
    virtual void code_block(std::string_view code, std::string_view language) = 0;
    virtual void begin_table() = 0;
    virtual void end_table_head() = 0;
    virtual void end_table() = 0;
    /// The author's own HTML, a whole tag or some lines.
    virtual void html(std::string_view, std::size_t /*offset*/) {}
    virtual void tell(std::size_t offset, std::string problem, Severity severity) = 0;
};

} // namespace Lumenfold::Builder
