#pragma once

#include "builder/pages/views.h"

#include <string>
#include <string_view>
#include <utility>

namespace Lumenfold::Builder {

/// Appends `text` so that it stands for itself in HTML, in an element and in a quoted attribute
/// alike. Control characters, which HTML does not allow and among which ROOT_MARK is, fall out.
void append_escaped(std::string& out, std::string_view text);

/// Appends an address for a quoted attribute. Only a ROOT_MARK at its beginning stays; one that
/// would run script or carry its own content gives "#".
void append_address(std::string& out, std::string_view address);

/// Puts a page together. What goes through `raw` must be HTML; all else is escaped.
class HtmlWriter {
public:
    HtmlWriter& raw(std::string_view html) {
        out_ += html;
        return *this;
    }
    HtmlWriter& text(std::string_view plain) {
        append_escaped(out_, plain);
        return *this;
    }
    /// ` name="value"`.
    HtmlWriter& attribute(std::string_view name, std::string_view value);
    /// The same for an address.
    HtmlWriter& address(std::string_view name, std::string_view value);
    /// An element that holds only text; nothing if the text is empty.
    HtmlWriter& element(std::string_view tag, std::string_view css_class, std::string_view text);
    /// A link with icon and note, marked as current if it leads to the page at `path`; without an
    /// address its words alone.
    HtmlWriter& link(const LinkView& link, std::string_view css_class = {},
                     std::string_view path = {});
    /// The beginning of the same, up to and without the ">" of its first tag.
    HtmlWriter& open_link(const LinkView& link, std::string_view css_class,
                          std::string_view path = {});
    HtmlWriter& close_link(const LinkView& link);
    /// A decorative picture that keeps its room; nothing if there is none.
    HtmlWriter& picture(const PictureView& picture, std::string_view css_class);
    /// A date as <time>, other words as they are.
    HtmlWriter& date(std::string_view date);

    void reserve(std::size_t bytes) { out_.reserve(bytes); }
    std::string take() { return std::move(out_); }

private:
    std::string out_;
};

LinkView make_link(std::string label, std::string href);

/// Whether `link` leads to the page at `path` from the site's root.
bool leads_to(const LinkView& link, std::string_view path);

} // namespace Lumenfold::Builder
