#include "builder/documents/html_draft.h"

#include "builder/documents/escape.h"
#include "builder/documents/html_piece.h"

#include <algorithm>
#include <cstdint>

namespace Lumenfold::Builder {
namespace {

constexpr std::size_t LARGEST = 16 << 20;
constexpr std::size_t MOST_TAGS = 1'000'000;
constexpr std::uint64_t MOST_WORK = 1'000'000'000;

} // namespace

HtmlDraft::HtmlDraft(std::string_view source, MarkdownSink& messages)
    : source_(source)
    , messages_(messages) {}

void HtmlDraft::block(std::string_view tag) {
    html_ += tag;
    ++tags_;
}

void HtmlDraft::inline_tag(std::string_view tag) {
    block(tag);
}

void HtmlDraft::text(std::string_view plain) {
    append_text(html_, plain);
}

void HtmlDraft::begin_heading(int level, bool) {
    headings_.push_back(level);
    block("<h" + std::to_string(level) + ">");
}

void HtmlDraft::end_heading() {
    block("</h" + std::to_string(headings_.back()) + ">\n");
    headings_.pop_back();
}

void HtmlDraft::attribute(std::string_view name, std::string_view value) {
    if (value.empty() && name != "href" && name != "src" && name != "alt")
        return;
    html_.append(" ").append(name).append("=\"");
    append_attribute(html_, value);
    html_ += '"';
}

void HtmlDraft::mark(std::size_t offset) {
    places_.emplace_back(html_.size(), offset);
}

void HtmlDraft::begin_link(const LinkText& link) {
    mark(link.offset);
    block("<a");
    attribute("href", link.address);
    attribute("title", link.title);
    html_ += '>';
}

void HtmlDraft::end_link() {
    block("</a>");
}

void HtmlDraft::image(const ImageText& image) {
    mark(image.offset);
    block("<img");
    attribute("src", image.address);
    attribute("alt", image.alt);
    attribute("title", image.title);
    html_ += '>';
}

void HtmlDraft::code_block(std::string_view code, std::string_view language) {
    block("<pre");
    attribute("lang", language);
    html_ += ">\n"; // the line end behind the tag is no part of the content
    append_text(html_, code);
    block("</pre>\n");
}

void HtmlDraft::begin_table() {
    block("<table>\n");
}

void HtmlDraft::end_table_head() {}

void HtmlDraft::end_table() {
    block("</table>\n");
}

void HtmlDraft::html(std::string_view piece, std::size_t offset) {
    mark(offset);
    std::size_t at = html_.size();
    const std::size_t tags = append_html_piece(html_, piece);
    for (; (at = html_.find('\n', at)) != std::string::npos; ++at) {
        offset = std::min(source_.find('\n', offset), source_.size() - 1) + 1;
        places_.emplace_back(at + 1, offset);
    }
    author_tags_ += tags;
    tags_ += tags;
}

void HtmlDraft::tell(std::size_t offset, std::string problem, Severity severity) {
    messages_.tell(offset, std::move(problem), severity);
}

std::size_t HtmlDraft::source_offset(std::size_t offset) const {
    const auto next = std::upper_bound(
        places_.begin(), places_.end(), offset,
        [](std::size_t wanted, const auto& place) { return wanted < place.first; });
    if (next == places_.begin())
        return 0;
    const auto& place = *std::prev(next);
    return place.second + (offset - place.first);
}

bool HtmlDraft::is_bounded() const {
    return html_.size() <= LARGEST && tags_ <= MOST_TAGS &&
           static_cast<std::uint64_t>(author_tags_) * tags_ <= MOST_WORK;
}

} // namespace Lumenfold::Builder
