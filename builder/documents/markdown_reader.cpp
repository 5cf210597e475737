#include "builder/documents/markdown_reader.h"

#include "builder/documents/alerts.h"
#include "builder/documents/entities.h"

#include <algorithm>
#include <cstddef>
#include <md4c.h>
#include <string>
#include <utility>
#include <vector>

namespace Lumenfold::Builder {
namespace {

constexpr unsigned DIALECT =
    MD_FLAG_TABLES | MD_FLAG_TASKLISTS | MD_FLAG_STRIKETHROUGH | MD_FLAG_PERMISSIVEAUTOLINKS;
constexpr int DEEPEST = 100;
/// Events that a text may make for each of its bytes, and in any case: wide tables with many short
/// rows make cells without end.
constexpr std::size_t EVENTS_PER_BYTE = 16;
constexpr std::size_t EVENTS_AT_LEAST = 100'000;
constexpr std::size_t ADDRESS_BYTES_PER_EVENT = 4;

/// An answer that ends the parser; it overlooks positive ones in places.
constexpr int STOP = -1;

constexpr const char* OPEN_TASK =
    "<li class=\"task\"><input type=\"checkbox\" disabled aria-label=\"to do\"> ";
constexpr const char* DONE_TASK =
    "<li class=\"task\"><input type=\"checkbox\" checked disabled aria-label=\"done\"> ";

std::string attribute_text(const MD_ATTRIBUTE& attribute) {
    std::string text;
    if (attribute.text == nullptr)
        return text;
    for (std::size_t i = 0; attribute.substr_offsets[i] < attribute.size; ++i) {
        const std::size_t begin = attribute.substr_offsets[i];
        const std::string_view part(attribute.text + begin,
                                    attribute.substr_offsets[i + 1] - begin);
        if (attribute.substr_types[i] == MD_TEXT_ENTITY)
            append_entity(text, part);
        else
            text += part;
    }
    return text;
}

std::string_view align_class(MD_ALIGN align) {
    switch (align) {
    case MD_ALIGN_LEFT:
        return " class=\"align-left\"";
    case MD_ALIGN_CENTER:
        return " class=\"align-center\"";
    case MD_ALIGN_RIGHT:
        return " class=\"align-right\"";
    default:
        return {};
    }
}

/// In a cell of a table a "|" has to be escaped, also in code.
std::string without_escaped_pipes(std::string_view code) {
    std::string text(code);
    for (std::size_t at = 0; (at = text.find("\\|", at)) != std::string::npos; ++at)
        text.erase(at, 1);
    return text;
}

/// Blocks that are one element with nothing to decide.
struct BlockTags {
    std::string_view open;
    std::string_view close;
};

BlockTags block_tags(MD_BLOCKTYPE type) {
    switch (type) {
    case MD_BLOCK_UL:
        return {"<ul>\n", "</ul>\n"};
    case MD_BLOCK_OL:
        return {"<ol>\n", "</ol>\n"};
    case MD_BLOCK_LI:
        return {"<li>", "</li>\n"};
    case MD_BLOCK_HR:
        return {"<hr>\n", ""};
    case MD_BLOCK_P:
        return {"<p>", "</p>\n"};
    case MD_BLOCK_THEAD:
        return {"<thead>\n", "</thead>\n"};
    case MD_BLOCK_TBODY:
        return {"<tbody>\n", "</tbody>\n"};
    case MD_BLOCK_TR:
        return {"<tr>\n", "</tr>\n"};
    case MD_BLOCK_TH:
        return {"<th", "</th>\n"};
    case MD_BLOCK_TD:
        return {"<td", "</td>\n"};
    default:
        return {};
    }
}

BlockTags span_tags(MD_SPANTYPE type) {
    switch (type) {
    case MD_SPAN_EM:
        return {"<em>", "</em>"};
    case MD_SPAN_STRONG:
        return {"<strong>", "</strong>"};
    case MD_SPAN_CODE:
        return {"<code>", "</code>"};
    case MD_SPAN_DEL:
        return {"<del>", "</del>"};
    default:
        return {};
    }
}

class Reader {
public:
    Reader(std::string_view source, AuthorHtml html, MarkdownSink& sink)
        : source_(source)
        , html_as_text_(html == AuthorHtml::AsText)
        , events_left_(static_cast<std::ptrdiff_t>(
              std::max(EVENTS_AT_LEAST, source.size() * EVENTS_PER_BYTE)))
        , sink_(sink) {}

    bool read();

private:
    // The parser's events. An answer other than 0 ends it.
    int enter_block(MD_BLOCKTYPE type, void* detail);
    int leave_block(MD_BLOCKTYPE type);
    int enter_span(MD_SPANTYPE type, void* detail);
    int leave_span(MD_SPANTYPE type);
    int text(MD_TEXTTYPE type, std::string_view text);
    int counted() { return --events_left_ > 0 ? 0 : STOP; }
    /// One long address may be referred to from very many places.
    void count_address(const MD_ATTRIBUTE& address) {
        events_left_ -= static_cast<std::ptrdiff_t>(address.size / ADDRESS_BYTES_PER_EVENT);
    }

    void open_block(MD_BLOCKTYPE type, void* detail);
    void close_block(MD_BLOCKTYPE type);
    void open_image(const MD_SPAN_IMG_DETAIL& image);
    void close_image();
    void take_text(MD_TEXTTYPE type, std::string_view text);
    void plain(std::string_view text);
    void append_line(std::string_view text);

    void settle();
    void settle_html();
    void settle_quote();
    bool begins_alert(std::string_view text);

    bool deepen();
    /// Whether the element that ends here was written.
    bool rise() { return depth_-- <= DEEPEST; }
    std::size_t offset_of(const MD_ATTRIBUTE& address) const;
    bool is_in_source(const char* text) const {
        return text >= source_.data() && text < source_.data() + source_.size();
    }

    /// How far the opening of a quote has got. It is written late, for its first line may make it
    /// an alert.
    enum class Quote { Settled, Opened, Paragraph, AlertMark };

    std::string_view source_;
    bool html_as_text_;
    std::ptrdiff_t events_left_;
    MarkdownSink& sink_;
    int depth_ = 0;
    bool told_depth_ = false;
    std::size_t offset_ = 0; ///< behind the last text that was met
    Quote quote_ = Quote::Settled;
    std::vector<std::string_view> quote_ends_;
    MD_BLOCKTYPE block_ = MD_BLOCK_DOC; ///< the innermost block that was entered
    std::string lines_; ///< of an open block of code or HTML, or of tags within words
    std::size_t lines_offset_ = 0;
    std::string language_;
    std::string entity_;
    int images_ = 0; ///< open ones; the texts within the outermost are its words
    std::string image_address_;
    std::string image_title_;
    std::string image_words_;
    std::size_t image_offset_ = 0;
};

bool Reader::read() {
    MD_PARSER parser{};
    parser.flags = DIALECT | (html_as_text_ ? MD_FLAG_NOHTML : 0U);
    parser.enter_block = [](MD_BLOCKTYPE type, void* detail, void* self) {
        return static_cast<Reader*>(self)->enter_block(type, detail);
    };
    parser.leave_block = [](MD_BLOCKTYPE type, void*, void* self) {
        return static_cast<Reader*>(self)->leave_block(type);
    };
    parser.enter_span = [](MD_SPANTYPE type, void* detail, void* self) {
        return static_cast<Reader*>(self)->enter_span(type, detail);
    };
    parser.leave_span = [](MD_SPANTYPE type, void*, void* self) {
        return static_cast<Reader*>(self)->leave_span(type);
    };
    parser.text = [](MD_TEXTTYPE type, const MD_CHAR* text, MD_SIZE size, void* self) {
        return static_cast<Reader*>(self)->text(type, {text, size});
    };
    return md_parse(source_.data(), static_cast<MD_SIZE>(source_.size()), &parser, this) == 0;
}

bool Reader::deepen() {
    if (++depth_ <= DEEPEST)
        return true;
    if (!told_depth_)
        sink_.tell(offset_,
                   "nested deeper than " + std::to_string(DEEPEST) +
                       " levels: shown without further nesting; make it flatter",
                   Severity::Complaint);
    told_depth_ = true;
    return false;
}

int Reader::enter_block(MD_BLOCKTYPE type, void* detail) {
    if (type == MD_BLOCK_DOC)
        return 0;
    if (type == MD_BLOCK_P && quote_ == Quote::Opened) {
        quote_ = Quote::Paragraph;
        return counted();
    }
    settle();
    block_ = type;
    if (deepen())
        open_block(type, detail);
    return counted();
}

void Reader::open_block(MD_BLOCKTYPE type, void* detail) {
    switch (type) {
    case MD_BLOCK_QUOTE:
        quote_ = Quote::Opened;
        break;
    case MD_BLOCK_H:
        sink_.begin_heading(static_cast<int>(static_cast<MD_BLOCK_H_DETAIL*>(detail)->level),
                            depth_ == 1);
        break;
    case MD_BLOCK_CODE:
        language_ = attribute_text(static_cast<MD_BLOCK_CODE_DETAIL*>(detail)->lang);
        break;
    case MD_BLOCK_TABLE:
        sink_.begin_table();
        break;
    case MD_BLOCK_TH:
    case MD_BLOCK_TD:
        sink_.block(block_tags(type).open);
        sink_.inline_tag(align_class(static_cast<MD_BLOCK_TD_DETAIL*>(detail)->align));
        sink_.inline_tag(">");
        break;
    case MD_BLOCK_OL: {
        const unsigned start = static_cast<MD_BLOCK_OL_DETAIL*>(detail)->start;
        sink_.block(start == 1 ? "<ol>\n" : "<ol start=\"" + std::to_string(start) + "\">\n");
        break;
    }
    case MD_BLOCK_LI: {
        const auto& item = *static_cast<MD_BLOCK_LI_DETAIL*>(detail);
        sink_.block(item.is_task == 0 ? "<li>" : item.task_mark == ' ' ? OPEN_TASK : DONE_TASK);
        break;
    }
    case MD_BLOCK_HTML:
        break;
    default:
        sink_.block(block_tags(type).open);
    }
}

int Reader::leave_block(MD_BLOCKTYPE type) {
    if (type == MD_BLOCK_DOC)
        return 0;
    if (type == MD_BLOCK_P && quote_ == Quote::AlertMark) {
        quote_ = Quote::Settled;
        --depth_;
        return counted();
    }
    settle();
    if (rise())
        close_block(type);
    block_ = MD_BLOCK_DOC;
    lines_.clear();
    return counted();
}

void Reader::close_block(MD_BLOCKTYPE type) {
    switch (type) {
    case MD_BLOCK_QUOTE:
        sink_.block(quote_ends_.back());
        quote_ends_.pop_back();
        break;
    case MD_BLOCK_H:
        sink_.end_heading();
        break;
    case MD_BLOCK_CODE:
        sink_.code_block(lines_, language_);
        break;
    case MD_BLOCK_HTML:
        sink_.html(lines_, lines_offset_);
        break;
    case MD_BLOCK_TABLE:
        sink_.end_table();
        break;
    case MD_BLOCK_THEAD:
        sink_.block(block_tags(type).close);
        sink_.end_table_head();
        break;
    default:
        sink_.block(block_tags(type).close);
    }
}

void Reader::settle() {
    settle_quote();
    settle_html();
}

/// Hands on the tags within words that have come so far: one tag may come in several lines.
void Reader::settle_html() {
    if (block_ != MD_BLOCK_HTML && !lines_.empty() && block_ != MD_BLOCK_CODE) {
        sink_.html(lines_, lines_offset_);
        lines_.clear();
    }
}

void Reader::settle_quote() {
    if (quote_ == Quote::Settled)
        return;
    quote_ends_.emplace_back("</blockquote>\n");
    sink_.block("<blockquote>\n");
    const bool in_paragraph = std::exchange(quote_, Quote::Settled) == Quote::Paragraph;
    if (in_paragraph && deepen())
        sink_.block("<p>");
}

bool Reader::begins_alert(std::string_view text) {
    if (quote_ != Quote::Paragraph || !is_in_source(text.data()))
        return false;
    const std::size_t offset = static_cast<std::size_t>(text.data() - source_.data());
    const AlertKind* const kind = alert_kind(source_.substr(offset));
    if (kind == nullptr)
        return false;
    quote_ = Quote::AlertMark;
    quote_ends_.emplace_back("</div>\n");
    const std::string name(kind->name);
    const std::string title(kind->title);
    sink_.block("<div class=\"alert alert-" + name + "\" role=\"note\"><p class=\"alert-title\">" +
                title + "</p>\n");
    ++depth_; // the paragraph
    return true;
}

int Reader::enter_span(MD_SPANTYPE type, void* detail) {
    settle();
    if (type == MD_SPAN_A || type == MD_SPAN_IMG)
        count_address(type == MD_SPAN_A ? static_cast<MD_SPAN_A_DETAIL*>(detail)->href
                                        : static_cast<MD_SPAN_IMG_DETAIL*>(detail)->src);
    if (!deepen() || images_ > 0) {
        images_ += type == MD_SPAN_IMG ? 1 : 0;
        return counted();
    }
    if (type == MD_SPAN_IMG)
        open_image(*static_cast<MD_SPAN_IMG_DETAIL*>(detail));
    else if (type != MD_SPAN_A)
        sink_.inline_tag(span_tags(type).open);
    else {
        const auto& link = *static_cast<MD_SPAN_A_DETAIL*>(detail);
        const std::string address = attribute_text(link.href);
        const std::string title = attribute_text(link.title);
        sink_.begin_link({address, title, offset_of(link.href)});
    }
    return counted();
}

int Reader::leave_span(MD_SPANTYPE type) {
    settle_html();
    const bool written = rise();
    if (type == MD_SPAN_IMG && --images_ == 0 && written)
        close_image();
    else if (!written || images_ > 0 || type == MD_SPAN_IMG)
        return counted();
    else if (type == MD_SPAN_A)
        sink_.end_link();
    else
        sink_.inline_tag(span_tags(type).close);
    return counted();
}

void Reader::open_image(const MD_SPAN_IMG_DETAIL& image) {
    images_ = 1;
    image_address_ = attribute_text(image.src);
    image_title_ = attribute_text(image.title);
    image_words_.clear();
    image_offset_ = offset_of(image.src);
}

void Reader::close_image() {
    ImageText image;
    image.address = image_address_;
    image.alt = image_words_;
    image.title = image_title_;
    image.offset = image_offset_;
    sink_.image(image);
}

std::size_t Reader::offset_of(const MD_ATTRIBUTE& address) const {
    if (address.size > 0 && is_in_source(address.text))
        return static_cast<std::size_t>(address.text - source_.data());
    return std::min(source_.find_first_not_of(" \t\r\n", offset_), source_.size());
}

int Reader::text(MD_TEXTTYPE type, std::string_view text) {
    if (is_in_source(text.data()))
        offset_ = static_cast<std::size_t>(text.data() - source_.data()) + text.size();
    else if (type == MD_TEXT_SOFTBR || type == MD_TEXT_BR)
        offset_ = std::min(source_.find('\n', offset_), source_.size());
    if (quote_ == Quote::AlertMark) {
        if (type == MD_TEXT_SOFTBR || type == MD_TEXT_BR) {
            quote_ = Quote::Settled;
            sink_.block("<p>");
        }
    } else if (!begins_alert(text)) {
        settle_quote();
        if (type != MD_TEXT_HTML)
            settle_html();
        take_text(type, text);
    }
    return counted();
}

void Reader::take_text(MD_TEXTTYPE type, std::string_view text) {
    switch (type) {
    case MD_TEXT_BR:
        if (images_ == 0)
            sink_.block("<br>\n");
        break;
    case MD_TEXT_SOFTBR:
        plain("\n");
        break;
    case MD_TEXT_HTML:
        if (images_ == 0)
            append_line(text);
        break;
    case MD_TEXT_CODE:
        if (block_ == MD_BLOCK_TH || block_ == MD_BLOCK_TD)
            plain(without_escaped_pipes(text));
        else
            plain(text);
        break;
    case MD_TEXT_ENTITY:
        entity_.clear();
        append_entity(entity_, text);
        plain(entity_);
        break;
    default:
        plain(text);
    }
}

void Reader::plain(std::string_view text) {
    if (block_ == MD_BLOCK_CODE)
        append_line(text);
    else if (images_ > 0)
        image_words_ += text;
    else
        sink_.text(text);
}

void Reader::append_line(std::string_view text) {
    if (lines_.empty())
        lines_offset_ = offset_ - std::min(offset_, text.size());
    lines_ += text;
}

bool may_hold_html(std::string_view markdown) {
    for (std::size_t at = 0; (at = markdown.find('<', at)) != std::string_view::npos; ++at) {
        const char next = at + 1 < markdown.size() ? markdown[at + 1] : ' ';
        if ((next >= 'a' && next <= 'z') || (next >= 'A' && next <= 'Z') || next == '/' ||
            next == '!' || next == '?')
            return true;
    }
    return false;
}

} // namespace

bool holds_html(std::string_view markdown) {
    if (!may_hold_html(markdown))
        return false;
    MD_PARSER parser{};
    parser.flags = DIALECT;
    parser.enter_block = [](MD_BLOCKTYPE, void*, void*) { return 0; };
    parser.leave_block = parser.enter_block;
    parser.enter_span = [](MD_SPANTYPE, void*, void*) { return 0; };
    parser.leave_span = parser.enter_span;
    parser.text = [](MD_TEXTTYPE type, const MD_CHAR*, MD_SIZE, void*) {
        return type == MD_TEXT_HTML ? STOP : 0;
    };
    return md_parse(markdown.data(), static_cast<MD_SIZE>(markdown.size()), &parser, nullptr) != 0;
}

bool read_markdown(std::string_view markdown, AuthorHtml html, MarkdownSink& sink) {
    return Reader(markdown, html, sink).read();
}

} // namespace Lumenfold::Builder
