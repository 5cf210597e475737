// CommonMark's own examples, which scripts/commonmark-examples fetches: each as we render it, and
// the HTML that is expected of it read by our reader of HTML. So both have what pages change on
// purpose: heading anchors and levels, the allow-list, room for pictures, wrappers of tables.

#include "builder/documents/document.h"
#include "builder/documents/document_writer.h"
#include "builder/documents/html_draft.h"
#include "builder/documents/html_reader.h"
#include "builder/documents/shown.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {
namespace {

std::string rendered(const std::string& markdown) {
    OpenLinks links;
    Messages messages;
    return render_markdown(markdown, {"a.md", false}, links, messages).html;
}

std::string expected_html(const std::string& html) {
    OpenLinks links;
    Messages messages;
    DocumentWriter writer(html, {"a.md", false}, links, messages);
    HtmlDraft draft(html, writer);
    draft.html(html, 0);
    read_html(draft, writer);
    return writer.finish().html;
}

bool is_block(const std::string& tag) {
    const std::size_t begin = tag.find_first_not_of("</");
    const std::string name = tag.substr(begin, tag.find_first_of(" >", begin) - begin);
    static const std::array<std::string, 22> blocks = {
        "p",  "ul", "ol",  "li", "blockquote", "pre", "hr",    "h1",    "h2", "h3", "h4",
        "h5", "h6", "div", "br", "table",      "tr",  "thead", "tbody", "td", "th", "details"};
    return std::find(blocks.begin(), blocks.end(), name) != blocks.end();
}

/// The HTML without blanks around blocks, where they mean nothing.
std::string without_blanks(const std::string& html) {
    constexpr const char* blanks = " \n";
    std::string text;
    bool skip = true;
    bool in_code = false;
    for (std::size_t at = 0; at < html.size();) {
        if (html[at] != '<') {
            if (!skip || in_code || std::string(blanks).find(html[at]) == std::string::npos) {
                text += html[at];
                skip = false;
            }
            ++at;
            continue;
        }
        const std::size_t end = std::min(html.find('>', at), html.size() - 1) + 1;
        const std::string tag = html.substr(at, end - at);
        in_code = tag.starts_with("<pre") || (in_code && tag != "</pre>");
        if (is_block(tag) && !in_code)
            text.erase(text.find_last_not_of(blanks) + 1);
        skip = is_block(tag);
        text += tag;
        at = end;
    }
    text.erase(text.find_last_not_of(blanks) + 1);
    return text;
}

/// Where pages differ on purpose, or the parser does, by the beginning of the example.
constexpr std::string_view DIFFERENCES[] = {
    // Addresses become links without angle brackets too.
    "< http://foo.bar >", "< https://foo.bar >", "http://example.com\n", "https://example.com\n",
    "foo@bar.example.com\n",
    // The parser is older than these rules: <textarea>, which pages leave out, goes on behind a
    // blank line, comments may hold "--", and currency signs count as punctuation beside emphasis.
    "<textarea>\n\n*foo*", "foo <!-- this is a --\ncomment", "foo <!--> foo -->", "*$*alpha."};

bool differs(std::string_view markdown) {
    return std::any_of(std::begin(DIFFERENCES), std::end(DIFFERENCES),
                       [&](std::string_view start) { return markdown.starts_with(start); });
}

TEST(CommonMark, ExamplesGiveTheExpectedHtml) {
    const char* const path = std::getenv("COMMONMARK_EXAMPLES");
    if (path == nullptr)
        GTEST_SKIP() << "scripts/commonmark-examples fetches them";
    const auto examples = nlohmann::json::parse(TestSupport::read_file(path));
    EXPECT_GT(examples.size(), 600U);
    for (const auto& example : examples) {
        const std::string markdown = example.at("markdown");
        const std::string ours = without_blanks(rendered(markdown));
        const std::string theirs = without_blanks(expected_html(example.at("html")));
        if (differs(markdown))
            EXPECT_NE(ours, theirs) << "is no difference any more:\n" << markdown;
        else
            EXPECT_EQ(ours, theirs) << example.at("section") << ":\n" << markdown;
    }
}

} // namespace
} // namespace Lumenfold::Builder
