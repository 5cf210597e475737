#include "builder/documents/allowed_html.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace Lumenfold::Builder {
namespace {

struct Row {
    std::string_view name;
    HtmlRule rule;
    std::string_view written = {}; ///< empty: under its own name
    bool is_void = false;
};

// In the order of the names.
constexpr Row ELEMENTS[] = {
    {"a", HtmlRule::Link},
    {"abbr", HtmlRule::Kept},
    {"acronym", HtmlRule::Unwrapped},
    {"address", HtmlRule::Block},
    {"applet", HtmlRule::Dropped},
    {"area", HtmlRule::Unwrapped},
    {"article", HtmlRule::Block, "div"},
    {"aside", HtmlRule::Block, "div"},
    {"audio", HtmlRule::Dropped},
    {"b", HtmlRule::Kept},
    {"base", HtmlRule::Dropped, {}, true},
    {"basefont", HtmlRule::Unwrapped},
    {"bdi", HtmlRule::Kept},
    {"bdo", HtmlRule::Kept},
    {"big", HtmlRule::Unwrapped},
    {"blink", HtmlRule::Unwrapped},
    {"blockquote", HtmlRule::Block},
    {"body", HtmlRule::Unwrapped},
    {"br", HtmlRule::Block, {}, true},
    {"button", HtmlRule::Dropped},
    {"canvas", HtmlRule::Dropped},
    {"caption", HtmlRule::Block},
    {"center", HtmlRule::Block, "div"},
    {"cite", HtmlRule::Kept},
    {"code", HtmlRule::Kept},
    {"col", HtmlRule::Kept, {}, true},
    {"colgroup", HtmlRule::Kept},
    {"data", HtmlRule::Unwrapped},
    {"dd", HtmlRule::Block},
    {"del", HtmlRule::Kept},
    {"details", HtmlRule::Block},
    {"dfn", HtmlRule::Kept},
    {"dialog", HtmlRule::Unwrapped},
    {"div", HtmlRule::Block},
    {"dl", HtmlRule::Block},
    {"dt", HtmlRule::Block},
    {"em", HtmlRule::Kept},
    {"embed", HtmlRule::Dropped},
    {"fieldset", HtmlRule::Unwrapped},
    {"figcaption", HtmlRule::Block},
    {"figure", HtmlRule::Block},
    {"font", HtmlRule::Unwrapped},
    {"footer", HtmlRule::Block, "div"},
    {"form", HtmlRule::Dropped},
    {"frameset", HtmlRule::Dropped},
    {"h1", HtmlRule::Heading},
    {"h2", HtmlRule::Heading},
    {"h3", HtmlRule::Heading},
    {"h4", HtmlRule::Heading},
    {"h5", HtmlRule::Heading},
    {"h6", HtmlRule::Heading},
    {"head", HtmlRule::Unwrapped},
    {"header", HtmlRule::Block, "div"},
    {"hgroup", HtmlRule::Unwrapped},
    {"hr", HtmlRule::Block, {}, true},
    {"html", HtmlRule::Unwrapped},
    {"i", HtmlRule::Kept},
    {"iframe", HtmlRule::Dropped},
    {"img", HtmlRule::Image, {}, true},
    {"input", HtmlRule::CheckBox, {}, true},
    {"ins", HtmlRule::Kept},
    {"kbd", HtmlRule::Kept},
    {"label", HtmlRule::Unwrapped},
    {"legend", HtmlRule::Unwrapped},
    {"li", HtmlRule::Block},
    {"link", HtmlRule::Dropped},
    {"main", HtmlRule::Block, "div"},
    {"map", HtmlRule::Unwrapped},
    {"mark", HtmlRule::Kept},
    {"marquee", HtmlRule::Unwrapped},
    {"math", HtmlRule::Dropped},
    {"menu", HtmlRule::Unwrapped},
    {"meta", HtmlRule::Dropped},
    {"nav", HtmlRule::Block, "div"},
    {"nobr", HtmlRule::Unwrapped},
    {"noembed", HtmlRule::Dropped},
    {"noframes", HtmlRule::Dropped},
    {"noscript", HtmlRule::Dropped},
    {"object", HtmlRule::Dropped},
    {"ol", HtmlRule::Block},
    {"p", HtmlRule::Block},
    {"picture", HtmlRule::Unwrapped},
    {"plaintext", HtmlRule::Dropped},
    {"pre", HtmlRule::Code},
    {"q", HtmlRule::Kept},
    {"rp", HtmlRule::Kept},
    {"rt", HtmlRule::Kept},
    {"ruby", HtmlRule::Kept},
    {"s", HtmlRule::Kept},
    {"samp", HtmlRule::Kept},
    {"script", HtmlRule::Dropped},
    {"search", HtmlRule::Unwrapped},
    {"section", HtmlRule::Block, "div"},
    {"select", HtmlRule::Dropped},
    {"small", HtmlRule::Kept},
    {"source", HtmlRule::Silent},
    {"span", HtmlRule::Kept},
    {"strike", HtmlRule::Kept, "s"},
    {"strong", HtmlRule::Kept},
    {"style", HtmlRule::Dropped},
    {"sub", HtmlRule::Kept},
    {"summary", HtmlRule::Block},
    {"sup", HtmlRule::Kept},
    {"svg", HtmlRule::Dropped},
    {"table", HtmlRule::Table},
    {"tbody", HtmlRule::Block},
    {"td", HtmlRule::Block},
    {"template", HtmlRule::Dropped},
    {"textarea", HtmlRule::Dropped},
    {"tfoot", HtmlRule::Block},
    {"th", HtmlRule::Block},
    {"thead", HtmlRule::Block},
    {"time", HtmlRule::Kept},
    {"title", HtmlRule::Dropped},
    {"tr", HtmlRule::Block},
    {"tt", HtmlRule::Kept, "code"},
    {"u", HtmlRule::Kept},
    {"ul", HtmlRule::Block},
    {"var", HtmlRule::Kept},
    {"video", HtmlRule::Dropped},
    {"wbr", HtmlRule::Kept, {}, true},
    {"xmp", HtmlRule::Dropped},
};
static_assert(std::is_sorted(std::begin(ELEMENTS), std::end(ELEMENTS),
                             [](const Row& a, const Row& b) { return a.name < b.name; }));

enum class ValueKind : std::uint8_t { Text, Number, Nothing };

struct AttributeRow {
    std::string_view element; ///< "*" for all
    std::string_view name;
    ValueKind kind;
};

constexpr AttributeRow ATTRIBUTES[] = {
    {"*", "title", ValueKind::Text},         {"*", "lang", ValueKind::Text},
    {"*", "dir", ValueKind::Text},           {"*", "aria-label", ValueKind::Text},
    {"details", "open", ValueKind::Nothing}, {"ol", "start", ValueKind::Number},
    {"ol", "reversed", ValueKind::Nothing},  {"li", "value", ValueKind::Number},
    {"td", "colspan", ValueKind::Number},    {"td", "rowspan", ValueKind::Number},
    {"th", "colspan", ValueKind::Number},    {"th", "rowspan", ValueKind::Number},
    {"th", "scope", ValueKind::Text},        {"th", "abbr", ValueKind::Text},
    {"col", "span", ValueKind::Number},      {"colgroup", "span", ValueKind::Number},
    {"time", "datetime", ValueKind::Text},
};

bool is_number(std::string_view value) {
    if (value.starts_with('-'))
        value.remove_prefix(1);
    return !value.empty() && value.size() < 10 &&
           std::all_of(value.begin(), value.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// <a> is missing on purpose: one that opens ends the one before.
constexpr std::string_view FORMATTING[] = {"b",      "big",  "code", "em",       "font",
                                           "i",      "nobr", "s",    "small",    "strike",
                                           "strong", "tt",   "u",    "plaintext"};
constexpr std::string_view RAW_TEXT[] = {"iframe", "noembed",  "noframes", "noscript", "script",
                                         "style",  "textarea", "title",    "xmp"};

template <std::size_t Count>
bool is_one_of(std::string_view name, const std::string_view (&names)[Count]) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

} // namespace

HtmlElement html_element(std::string_view name) {
    const Row* const row = std::lower_bound(
        std::begin(ELEMENTS), std::end(ELEMENTS), name,
        [](const Row& each, std::string_view wanted) { return each.name < wanted; });
    if (row == std::end(ELEMENTS) || row->name != name)
        return {name, HtmlRule::Unknown, false};
    return {row->written.empty() ? row->name : row->written, row->rule, row->is_void};
}

AttributeRule attribute_rule(std::string_view element, std::string_view attribute,
                             std::string_view value) {
    for (const AttributeRow& row : ATTRIBUTES)
        if (row.name == attribute && (row.element == "*" || row.element == element)) {
            if (row.kind == ValueKind::Number && !is_number(value))
                return AttributeRule::Dropped;
            return row.kind == ValueKind::Nothing ? AttributeRule::WithoutValue
                                                  : AttributeRule::Kept;
        }
    return AttributeRule::Dropped;
}

bool is_formatting(std::string_view name) {
    return is_one_of(name, FORMATTING);
}

bool is_raw_text(std::string_view name) {
    return is_one_of(name, RAW_TEXT);
}

} // namespace Lumenfold::Builder
