#include "builder/documents/document.h"
#include "builder/documents/shown.h"
#include "support/case_file.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace Lumenfold::Builder {
namespace {

const std::string CASES = "tests/builder/documents/cases/";

/// The HTML without blank lines at its end, and the messages behind it.
std::string shown_document(std::string html, const Messages& messages) {
    html.erase(html.find_last_not_of(" \n") + 1);
    return (html.empty() ? "" : html + "\n") + shown(messages);
}

std::string markdown_html(const std::string& text) {
    OpenLinks links;
    Messages messages;
    const Document document = render_markdown(text, {"a.md", false}, links, messages);
    return shown_document(document.html, messages);
}

std::string outline(const std::string& text) {
    OpenLinks links;
    Messages messages;
    const Document document = render_markdown(text, {"a.md", true}, links, messages);
    std::string lines = "title: " + document.title + "\n";
    for (const Heading& heading : document.headings)
        lines += std::to_string(heading.level) + " #" + heading.id + " " + heading.text + "\n";
    for (const TextSection& section : document.sections)
        lines += "[" + section.anchor + "] " + section.text + "\n";
    return lines + shown(messages);
}

std::string plain_html(const std::string& text) {
    Messages messages;
    const Document document = render_plain_text(text, {"a", false}, messages);
    return shown_document(document.html, messages);
}

std::string fragment_html(const std::string& text) {
    OpenLinks links;
    Messages messages;
    const Document document = render_fragment(text, {"a.html", false}, links, messages);
    std::string anchors;
    for (const std::string& anchor : document.anchors)
        anchors += "#" + anchor + "\n";
    return document.html + anchors + shown(messages);
}

/// The first line is the language. Spans are shown as ‹k words›.
std::string highlighted(const std::string& text) {
    const std::size_t line = text.find('\n');
    std::string html = highlight_code(text.substr(line + 1), text.substr(0, line));
    const auto replace = [&html](const std::string& what, const std::string& with) {
        for (std::size_t at = 0; (at = html.find(what, at)) != std::string::npos; at += with.size())
            html.replace(at, what.size(), with);
    };
    replace("<span class=\"hl-", "‹");
    replace("\">", " ");
    replace("</span>", "›");
    return html;
}

struct CaseFile {
    const char* name;
    std::string (*output)(const std::string& text);
};

class DocumentCases : public testing::TestWithParam<CaseFile> {};

TEST_P(DocumentCases, GoAsWritten) {
    TestSupport::expect_cases(CASES + GetParam().name + ".txt", GetParam().output);
}

INSTANTIATE_TEST_SUITE_P(
    Documents, DocumentCases,
    testing::Values(CaseFile{"markdown", markdown_html}, CaseFile{"html", markdown_html},
                    CaseFile{"hostile", markdown_html}, CaseFile{"outline", outline},
                    CaseFile{"plain_text", plain_html}, CaseFile{"fragment", fragment_html},
                    CaseFile{"highlight", highlighted}),
    [](const auto& file) { return std::string(file.param.name); });

TEST(Documents, OtherThanUtf8AreToldAndShowSigns) {
    EXPECT_EQ(markdown_html("first\n\ncaf\xE9 \xC2\x85x\xED\xA0\x80 \xFF"),
              "<p>first</p>\n<p>caf� x��� �</p>\n! 3: the text is not UTF-8 here and shows "
              "replacement signs; save the file as UTF-8\n");
    EXPECT_EQ(plain_html("a\r\nb\x01\xC3"), "<p>a<br>\nb�</p>\n! 2: the text is not UTF-8 here and "
                                            "shows replacement signs; save the file as UTF-8\n");
}

} // namespace
} // namespace Lumenfold::Builder
