#pragma once

#include <cstdint>
#include <string_view>

namespace Lumenfold::Builder {

/// What becomes of an element that an author wrote.
enum class HtmlRule : std::uint8_t {
    Unknown,   ///< no element of HTML: most often words in angle brackets that were meant as text
    Unwrapped, ///< the element goes, its content stays
    Dropped,   ///< it goes with its content, which no page can show, and is told
    Silent,    ///< it goes with its content, without a word
    Kept,      ///< within words
    Block,     ///< kept; parts words
    Heading,
    Link,
    Image,
    Code, ///< preformatted; code in it is highlighted
    Table,
    CheckBox
};

/// An element by its lowercase name.
struct HtmlElement {
    std::string_view name; ///< as it is written: obsolete names become their successors
    HtmlRule rule = HtmlRule::Unknown;
    bool is_void = false; ///< has no content and no end tag
};
HtmlElement html_element(std::string_view name);

/// What an element may have of an attribute (both lowercase) with some value. Addresses, anchors
/// and alignment are not decided here.
enum class AttributeRule : std::uint8_t { Dropped, Kept, WithoutValue };
AttributeRule attribute_rule(std::string_view element, std::string_view attribute,
                             std::string_view value);

/// Elements that reopen themselves in later blocks until they are closed ("<b>" and its kind), so
/// that little text makes very many. They are parsed under a name of ours, as elements like others.
bool is_formatting(std::string_view name);

/// Elements whose content is no HTML up to their end tag, even if that never comes.
bool is_raw_text(std::string_view name);

} // namespace Lumenfold::Builder
