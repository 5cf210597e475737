#include "builder/documents/document_writer.h"

#include "builder/documents/addresses.h"
#include "builder/documents/escape.h"
#include "builder/documents/picture_tag.h"

#include <algorithm>
#include <utility>

namespace Lumenfold::Builder {
namespace {

constexpr std::string_view BLANKS = " \t\r\n";
/// Code with a line longer than this may have to scroll, and must then be reached by keyboard.
constexpr std::size_t NARROW_CODE = 60;

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(BLANKS);
    return begin == std::string_view::npos
               ? std::string_view()
               : text.substr(begin, text.find_last_not_of(BLANKS) - begin + 1);
}

void drop_blanks_at_end(std::string& text) {
    text.erase(text.find_last_not_of(BLANKS) + 1);
}

bool may_scroll(std::string_view code) {
    std::size_t begin = 0;
    while (begin < code.size()) {
        const std::size_t end = std::min(code.find('\n', begin), code.size());
        if (end - begin > NARROW_CODE)
            return true;
        begin = end + 1;
    }
    return false;
}

/// Appends words separated by single blanks.
void append_words(std::string& words, std::string_view text) {
    for (const char c : text) {
        const bool blank = BLANKS.find(c) != std::string_view::npos;
        if (!blank)
            words += c;
        else if (!words.empty() && words.back() != ' ')
            words += ' ';
    }
}

} // namespace

DocumentWriter::DocumentWriter(std::string_view text, const DocumentSource& source,
                               LinkResolver& links, Messages& messages)
    : source_(source)
    , links_(links)
    , messages_(messages)
    , lines_(text)
    , first_message_(messages.size()) {
    html_.reserve(text.size() + text.size() / 2);
    document_.sections.emplace_back();
    document_.sections.back().text.reserve(text.size());
}

void DocumentWriter::block(std::string_view tag) {
    html_ += tag;
    word_ended_ = true;
}

void DocumentWriter::inline_tag(std::string_view tag) {
    html_ += tag;
}

void DocumentWriter::text(std::string_view plain) {
    // The parser leaves tabs around a heading's words.
    if (heading_.nested > 0 && html_.size() == heading_.content_begin)
        plain.remove_prefix(std::min(plain.find_first_not_of(BLANKS), plain.size()));
    append_text(html_, plain);
    gather(plain);
}

void DocumentWriter::gather(std::string_view plain) {
    if (heading_.nested > 0) {
        heading_.text += plain;
        return;
    }
    seen_text_ = seen_text_ || plain.find_first_not_of(BLANKS) != std::string_view::npos;
    std::string& section = document_.sections.back().text;
    const bool new_word = std::exchange(word_ended_, false);
    if (new_word && !section.empty() && section.back() != ' ')
        section += ' ';
    append_words(section, plain);
    if (in_table_head_ && plain.find_first_not_of(BLANKS) != std::string_view::npos) {
        table_label_ += new_word && !table_label_.empty() ? ", " : "";
        table_label_ += plain;
    }
}

int DocumentWriter::outline_level(int authored) {
    while (!outline_.empty() && outline_.back() >= authored)
        outline_.pop_back();
    outline_.push_back(authored);
    return std::min(static_cast<int>(outline_.size()) + 1, 6);
}

void DocumentWriter::begin_heading(int level, bool outermost) {
    if (heading_.nested++ > 0)
        return;
    const bool leading = !seen_text_ && document_.headings.empty();
    heading_.is_title = level == 1 && outermost && leading && document_.title.empty();
    heading_.html_begin = html_.size();
    heading_.text.clear();
    heading_.level = heading_.is_title && source_.drop_title ? 1 : outline_level(level);
    html_ += "<h";
    html_ += static_cast<char>('0' + heading_.level);
    heading_.id_place = html_.size();
    html_ += '>';
    heading_.content_begin = html_.size();
}

void DocumentWriter::end_heading() {
    if (--heading_.nested > 0)
        return;
    if (BLANKS.find(html_.back()) != std::string_view::npos) {
        drop_blanks_at_end(html_);
        drop_blanks_at_end(heading_.text);
    }
    if (html_.size() == heading_.content_begin) {
        html_.resize(heading_.html_begin);
        return;
    }
    const std::string& id = anchors_.add_heading(heading_.text);
    const std::string text(trimmed(heading_.text));
    if (heading_.is_title)
        document_.title = text;
    std::string attribute = " id=\"";
    append_attribute(attribute, id);
    attribute += '"';
    if (heading_.is_title && source_.drop_title) {
        // Links to the title's anchor still lead to the beginning of the document.
        html_.resize(heading_.html_begin);
        html_ += "<span" + attribute + "></span>\n";
        return;
    }
    html_.insert(heading_.id_place, attribute);
    html_ += "</h";
    html_ += static_cast<char>('0' + heading_.level);
    html_ += ">\n";
    if (!text.empty())
        document_.headings.push_back({heading_.level, id, text});
    document_.sections.push_back({id, {}});
}

void DocumentWriter::begin_link(const LinkText& link) {
    bool external = false;
    const std::string address = link_address(link, external);
    open_links_.push_back(!address.empty());
    if (address.empty())
        return;
    html_ += "<a href=\"";
    append_url(html_, address);
    if (external)
        html_ += "\" rel=\"external";
    if (!link.title.empty()) {
        html_ += "\" title=\"";
        append_attribute(html_, link.title);
    }
    html_ += "\">";
}

void DocumentWriter::end_link() {
    if (open_links_.empty())
        return;
    if (open_links_.back())
        html_ += "</a>";
    open_links_.pop_back();
}

std::string DocumentWriter::link_address(const LinkText& link, bool& external) {
    const std::string address = trimmed_address(link.address);
    if (!is_safe_link(address)) {
        tell(link.offset,
             "\"" + address_scheme(address) + ":\" links are left out; link to http, https, " +
                 "mailto, tel, ftp, irc or xmpp",
             Severity::Complaint);
        return {};
    }
    if (address.starts_with('#'))
        return local_address(address, link.offset);
    LinkTarget target = links_.link(address, lines_.line_at(link.offset));
    if (!target.problem.empty())
        tell(link.offset, std::move(target.problem), Severity::Complaint);
    external = target.external;
    return is_safe_link(target.href) ? std::move(target.href) : std::string();
}

std::string DocumentWriter::local_address(std::string_view address, std::size_t offset) {
    std::string anchor = percent_decoded(address.substr(1));
    if (!anchor.empty() && anchor != "top")
        local_links_.push_back({std::move(anchor), offset});
    return std::string(address);
}

void DocumentWriter::image(const ImageText& image) {
    ImageTarget target = links_.image(trimmed_address(image.address), lines_.line_at(image.offset));
    if (!target.problem.empty())
        tell(image.offset, std::move(target.problem),
             target.advanced ? Severity::Advanced : Severity::Complaint);
    const bool here = !is_web_address(target.src) && address_scheme(target.src).empty();
    if (!target.src.empty() && here)
        append_picture_tag(html_, image, target);
    else
        write_words(image, target);
}

void DocumentWriter::write_words(const ImageText& image, const ImageTarget& target) {
    const bool inside_link =
        std::find(open_links_.begin(), open_links_.end(), true) != open_links_.end();
    const bool linked = !target.link.empty() && !inside_link && is_safe_link(target.link);
    std::string_view words = image.alt.empty() ? image.title : image.alt;
    if (words.empty() && (linked || inside_link))
        words = image.address.substr(image.address.rfind('/') + 1);
    if (linked) {
        html_ += "<a href=\"";
        append_url(html_, target.link);
        html_ += "\" rel=\"external\">";
    }
    // A row of badges does not keep the heading behind it from being the title.
    const bool seen_text = seen_text_;
    append_text(html_, words);
    if (heading_.nested == 0)
        gather(words);
    seen_text_ = seen_text;
    if (linked)
        html_ += "</a>";
}

void DocumentWriter::code_block(std::string_view code, std::string_view language) {
    html_ += may_scroll(code) ? "<pre tabindex=\"0\"><code" : "<pre><code";
    if (!language.empty()) {
        html_ += " class=\"language-";
        append_attribute(html_, language);
        html_ += '"';
    }
    html_ += '>';
    html_ += highlight_code(code, language);
    html_ += "</code></pre>\n";
    word_ended_ = true;
    gather(code);
    word_ended_ = true;
}

void DocumentWriter::begin_table() {
    block("<div class=\"table-scroll\" tabindex=\"0\" role=\"region\" aria-label=\"\">");
    table_label_place_ = html_.size() - 2;
    html_ += "<table>\n";
    table_label_.clear();
    in_table_head_ = true;
}

void DocumentWriter::end_table_head() {
    if (!in_table_head_)
        return;
    in_table_head_ = false;
    unhead_empty_cells();
    std::string label;
    append_words(label, trimmed(table_label_));
    if (label.empty())
        label = "Table";
    const int count = ++table_labels_[label];
    if (count > 1)
        label += " " + std::to_string(count);
    std::string escaped;
    append_attribute(escaped, label);
    html_.insert(table_label_place_, escaped);
}

/// A cell without words heads nothing: a reader of screens would announce it for each cell below.
void DocumentWriter::unhead_empty_cells() {
    constexpr std::string_view END = "</th>";
    for (std::size_t at = html_.find(END, table_label_place_); at != std::string::npos;
         at = html_.find(END, at + END.size())) {
        const std::size_t begin = html_.rfind('<', at - 1);
        if (html_[at - 1] != '>' || html_.compare(begin, 3, "<th") != 0)
            continue;
        html_.replace(at, END.size(), "</td>");
        html_.replace(begin, 3, "<td");
    }
}

void DocumentWriter::end_table() {
    end_table_head();
    block("</table></div>\n");
}

void DocumentWriter::tell(std::size_t offset, std::string problem, Severity severity) {
    messages_.push_back({severity, source_.file, lines_.line_at(offset), std::move(problem)});
}

void DocumentWriter::author_anchor(std::string_view id) {
    if (!anchors_.add(id))
        return;
    html_ += "<span id=\"";
    append_attribute(html_, id);
    html_ += "\"></span>";
}

void DocumentWriter::heading_class(std::string_view name) {
    html_.pop_back();
    html_.append(" class=\"").append(name).append("\">");
    heading_.content_begin = html_.size();
}

void DocumentWriter::tell_missing_anchors() {
    const std::vector<std::string> none;
    std::size_t told = 0;
    for (const LocalLink& link : local_links_)
        if (!anchors_.contains(link.anchor))
            tell(link.offset,
                 missing_anchor(link.anchor, "this document",
                                ++told <= MOST_SUGGESTIONS ? anchors_.all() : none),
                 Severity::Complaint);
}

Document DocumentWriter::finish() {
    tell_missing_anchors();
    std::stable_sort(messages_.begin() + static_cast<std::ptrdiff_t>(first_message_),
                     messages_.end(),
                     [](const Message& a, const Message& b) { return a.line < b.line; });
    std::erase_if(document_.sections, [](TextSection& section) {
        if (section.text.ends_with(' '))
            section.text.pop_back();
        return section.text.empty();
    });
    document_.anchors = anchors_.take();
    document_.html = std::move(html_);
    return std::move(document_);
}

} // namespace Lumenfold::Builder
