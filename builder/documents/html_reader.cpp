#include "builder/documents/html_reader.h"

#include "builder/documents/allowed_html.h"
#include "builder/documents/clean_text.h"
#include "builder/documents/escape.h"
#include "builder/documents/html_piece.h"
#include "builder/documents/html_tree.h"

#include <algorithm>
#include <gumbo.h>
#include <string>
#include <unordered_set>
#include <vector>

namespace Lumenfold::Builder {
namespace {

constexpr std::size_t DEEPEST = 150;

/// Classes that pages give a meaning to; authors may use them too.
constexpr std::string_view CLASSES[] = {"task",
                                        "alert-title",
                                        "alert alert-note",
                                        "alert alert-tip",
                                        "alert alert-important",
                                        "alert alert-warning",
                                        "alert alert-caution",
                                        "align-left",
                                        "align-center",
                                        "align-right"};

std::string lowered(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
    return lower;
}

const GumboNode* child(const GumboNode& node, unsigned int index) {
    return static_cast<const GumboNode*>(node.v.element.children.data[index]);
}

bool is_element(const GumboNode& node) {
    return node.type == GUMBO_NODE_ELEMENT || node.type == GUMBO_NODE_TEMPLATE;
}

std::string element_name(const GumboElement& element) {
    if (element.tag != GUMBO_TAG_UNKNOWN)
        return gumbo_normalized_tagname(element.tag);
    GumboStringPiece piece = element.original_tag;
    gumbo_tag_from_original_text(&piece);
    std::string name = lowered({piece.data, piece.length});
    if (name.starts_with(FORMATTING_PREFIX) &&
        is_formatting(std::string_view(name).substr(FORMATTING_PREFIX.size())))
        name.erase(0, FORMATTING_PREFIX.size());
    return name;
}

std::string_view attribute(const GumboElement& element, const char* name) {
    const GumboAttribute* const found = gumbo_get_attribute(&element.attributes, name);
    return found == nullptr ? std::string_view() : found->value;
}

bool has_attribute(const GumboElement& element, const char* name) {
    return gumbo_get_attribute(&element.attributes, name) != nullptr;
}

std::string align_of(const GumboElement& element, std::string_view name) {
    const std::string align = name == "center" ? "center" : lowered(attribute(element, "align"));
    return align == "left" || align == "center" || align == "right" ? align : std::string();
}

std::string class_of(const GumboElement& element, std::string_view name) {
    const std::string align = align_of(element, name);
    if (!align.empty())
        return "align-" + align;
    const std::string_view wanted = attribute(element, "class");
    const bool known =
        std::find(std::begin(CLASSES), std::end(CLASSES), wanted) != std::end(CLASSES);
    return known ? std::string(wanted) : std::string();
}

/// Whether nothing but blanks and comments stands in an element.
bool is_empty(const GumboNode& node) {
    const GumboVector& children = node.v.element.children;
    for (unsigned int i = 0; i < children.length; ++i)
        if (child(node, i)->type != GUMBO_NODE_WHITESPACE &&
            child(node, i)->type != GUMBO_NODE_COMMENT)
            return false;
    return true;
}

bool holds_text_only(const GumboNode& node) {
    const GumboVector& children = node.v.element.children;
    for (unsigned int i = 0; i < children.length; ++i)
        if (is_element(*child(node, i)))
            return false;
    return true;
}

std::string text_of(const GumboNode& node) {
    std::string text;
    const GumboVector& children = node.v.element.children;
    for (unsigned int i = 0; i < children.length; ++i)
        if (!is_element(*child(node, i)))
            text += child(node, i)->v.text.text;
    return text;
}

/// The element that holds the text of a block of code: <pre> itself, or the <code> that is all of
/// its content. None if the code has elements in it.
const GumboNode* code_text(const GumboNode& pre) {
    if (holds_text_only(pre))
        return &pre;
    const GumboNode* only = nullptr;
    for (unsigned int i = 0; i < pre.v.element.children.length; ++i) {
        const GumboNode* const each = child(pre, i);
        if (each->type == GUMBO_NODE_WHITESPACE)
            continue;
        if (only != nullptr || !is_element(*each) || element_name(each->v.element) != "code" ||
            !holds_text_only(*each))
            return nullptr;
        only = each;
    }
    return only;
}

std::string code_language(const GumboElement& pre, const GumboElement& code) {
    if (has_attribute(pre, "lang"))
        return std::string(attribute(pre, "lang"));
    constexpr std::string_view prefix = "language-";
    const std::string_view name = attribute(code, "class");
    return name.starts_with(prefix)
               ? std::string(name.substr(prefix.size(), name.find(' ') - prefix.size()))
               : std::string();
}

class Walk {
public:
    Walk(const HtmlDraft& draft, DocumentWriter& writer)
        : draft_(draft)
        , writer_(writer) {}

    void run(const GumboNode& root) {
        open_.push_back({&root, HtmlRule::Unwrapped, {}});
        while (!open_.empty()) {
            Open& top = open_.back();
            if (top.next < top.node->v.element.children.length) {
                enter(*child(*top.node, top.next++));
            } else {
                const Open done = open_.back();
                open_.pop_back();
                close(done);
            }
        }
    }

private:
    struct Open {
        const GumboNode* node;
        HtmlRule rule;
        std::string name; ///< as it is written
        unsigned int next = 0;
    };

    void enter(const GumboNode& node) {
        if (is_element(node))
            enter_element(node);
        else if (node.type == GUMBO_NODE_TEXT || node.type == GUMBO_NODE_WHITESPACE ||
                 node.type == GUMBO_NODE_CDATA)
            write_text(node.v.text.text);
    }

    /// Character references in HTML may spell control characters too.
    void write_text(std::string_view text) { writer_.text(CleanText(text).text()); }

    void enter_element(const GumboNode& node) {
        const GumboElement& element = node.v.element;
        const std::string name = element_name(element);
        HtmlElement what = html_element(name);
        if (what.rule == HtmlRule::Dropped || what.rule == HtmlRule::Unknown)
            tell_lost(node, name, what.rule);
        if (what.rule == HtmlRule::Dropped || what.rule == HtmlRule::Silent ||
            (name == "p" && is_empty(node)))
            return;
        if (open_.size() > DEEPEST) {
            tell_depth(node);
            what.rule = HtmlRule::Unwrapped;
        }
        write_element(node, what, name);
    }

    void write_element(const GumboNode& node, const HtmlElement& what, const std::string& name) {
        const GumboElement& element = node.v.element;
        if (what.rule != HtmlRule::Unwrapped && what.rule != HtmlRule::Unknown)
            write_anchors(element, what.rule);
        switch (what.rule) {
        case HtmlRule::Image:
            write_image(node);
            return;
        case HtmlRule::CheckBox:
            write_check_box(element);
            return;
        case HtmlRule::Code:
            if (write_code(node))
                return;
            writer_.block("<pre tabindex=\"0\">");
            break;
        case HtmlRule::Link:
            write_link(node);
            return;
        case HtmlRule::Heading:
            writer_.begin_heading(name[1] - '0', is_outermost());
            if (const std::string align = class_of(element, name); !align.empty())
                writer_.heading_class(align);
            break;
        case HtmlRule::Table:
            if (tables_++ == 0)
                writer_.begin_table();
            else
                writer_.block("<table>");
            break;
        case HtmlRule::Block:
            writer_.block(start_tag(element, what.name, name));
            break;
        case HtmlRule::Kept:
            writer_.inline_tag(start_tag(element, what.name, name));
            break;
        default:
            break;
        }
        if (!what.is_void)
            open_.push_back({&node, what.rule, std::string(what.name)});
    }

    void write_anchors(const GumboElement& element, HtmlRule rule) {
        std::string_view id = attribute(element, "id");
        if (id.empty() && rule == HtmlRule::Link)
            id = attribute(element, "name");
        if (!id.empty() && !is_inside_table_parts())
            writer_.author_anchor(CleanText(id).text());
    }

    /// Between the parts of a table no other element may stand.
    bool is_inside_table_parts() const {
        const std::string& name = open_.back().name;
        return name == "table" || name == "thead" || name == "tbody" || name == "tr" ||
               name == "colgroup";
    }

    std::string start_tag(const GumboElement& element, std::string_view written,
                          const std::string& name) const {
        std::string tag = "<" + std::string(written);
        const std::string class_name = class_of(element, name);
        if (!class_name.empty())
            append(tag, "class", class_name);
        if (class_name.starts_with("alert "))
            append(tag, "role", "note");
        for (unsigned int i = 0; i < element.attributes.length; ++i) {
            const auto& each = *static_cast<const GumboAttribute*>(element.attributes.data[i]);
            const AttributeRule rule = attribute_rule(written, each.name, each.value);
            if (rule == AttributeRule::Kept)
                append(tag, each.name, each.value);
            else if (rule == AttributeRule::WithoutValue)
                tag.append(" ").append(each.name);
        }
        return tag + ">";
    }

    static void append(std::string& tag, std::string_view name, std::string_view value) {
        tag.append(" ").append(name).append("=\"");
        append_attribute(tag, CleanText(value).text());
        tag += '"';
    }

    void write_link(const GumboNode& node) {
        const GumboElement& element = node.v.element;
        const bool leads = has_attribute(element, "href") && !is_inside_link();
        const CleanText address(attribute(element, "href"));
        const CleanText title(attribute(element, "title"));
        if (leads)
            writer_.begin_link({address.text(), title.text(), offset_of(node)});
        open_.push_back({&node, leads ? HtmlRule::Link : HtmlRule::Unwrapped, "a"});
    }

    bool is_inside_link() const {
        return std::any_of(open_.begin(), open_.end(),
                           [](const Open& each) { return each.rule == HtmlRule::Link; });
    }

    void write_image(const GumboNode& node) {
        const GumboElement& element = node.v.element;
        const CleanText address(attribute(element, "src"));
        const CleanText alt(attribute(element, "alt"));
        const CleanText title(attribute(element, "title"));
        const std::string align = align_of(element, "img");
        writer_.image({address.text(), alt.text(), title.text(), offset_of(node),
                       attribute(element, "width"), attribute(element, "height"), align});
    }

    void write_check_box(const GumboElement& element) {
        if (lowered(attribute(element, "type")) != "checkbox")
            return;
        writer_.inline_tag(has_attribute(element, "checked")
                               ? "<input type=\"checkbox\" checked disabled aria-label=\"done\">"
                               : "<input type=\"checkbox\" disabled aria-label=\"to do\">");
    }

    bool write_code(const GumboNode& node) {
        const GumboNode* const text = code_text(node);
        if (text == nullptr)
            return false;
        const std::string code = text_of(*text);
        const std::string language = code_language(node.v.element, text->v.element);
        writer_.code_block(CleanText(code).text(), CleanText(language).text());
        return true;
    }

    bool is_outermost() const {
        return std::none_of(open_.begin(), open_.end(), [](const Open& each) {
            return each.name == "blockquote" || each.name == "li" || each.name == "details" ||
                   each.name == "td" || each.name == "th";
        });
    }

    void close(const Open& element) {
        switch (element.rule) {
        case HtmlRule::Link:
            writer_.end_link();
            break;
        case HtmlRule::Heading:
            writer_.end_heading();
            break;
        case HtmlRule::Table:
            if (--tables_ == 0)
                writer_.end_table();
            else
                writer_.block("</table>");
            break;
        case HtmlRule::Block:
        case HtmlRule::Code:
            writer_.block("</" + element.name + ">");
            if (tables_ == 1 && (element.name == "thead" || element.name == "tr"))
                writer_.end_table_head();
            break;
        case HtmlRule::Kept:
            writer_.inline_tag("</" + element.name + ">");
            break;
        default:
            break;
        }
    }

    std::size_t offset_of(const GumboNode& node) const {
        return draft_.source_offset(node.v.element.start_pos.offset);
    }

    void tell_lost(const GumboNode& node, const std::string& name, HtmlRule rule) {
        if (!told_.insert(name).second)
            return;
        writer_.tell(offset_of(node),
                     rule == HtmlRule::Unknown
                         ? "\"<" + name +
                               ">\" is read as HTML and not shown; if it is text, write `<" + name +
                               ">` or \\<" + name + ">"
                         : "<" + name +
                               "> is left out with what it holds; pages show text, "
                               "pictures, tables and links",
                     Severity::Complaint);
    }

    void tell_depth(const GumboNode& node) {
        if (told_.insert("").second)
            writer_.tell(offset_of(node),
                         "HTML nested deeper than " + std::to_string(DEEPEST) +
                             " levels: shown without further nesting; make it flatter",
                         Severity::Complaint);
    }

    const HtmlDraft& draft_;
    DocumentWriter& writer_;
    std::vector<Open> open_;
    std::unordered_set<std::string> told_;
    int tables_ = 0;
};

} // namespace

void read_html(const HtmlDraft& draft, DocumentWriter& writer) {
    const HtmlTree tree(draft.html());
    Walk(draft, writer).run(*tree.root());
}

} // namespace Lumenfold::Builder
