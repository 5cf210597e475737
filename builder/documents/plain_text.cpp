#include "builder/documents/clean_text.h"
#include "builder/documents/document.h"
#include "builder/documents/escape.h"

#include <algorithm>
#include <cstddef>

namespace Lumenfold::Builder {
namespace {

std::string_view next_line(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    const std::size_t last = line.find_last_not_of(" \t\r");
    return line.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

} // namespace

Document render_plain_text(std::string_view text, const DocumentSource& source,
                           Messages& messages) {
    const CleanText clean(text);
    tell_invalid(clean, source, messages);
    Document document;
    TextSection section;
    std::string_view rest = clean.text();
    bool in_paragraph = false;
    while (!rest.empty()) {
        const std::string_view line = next_line(rest);
        if (line.empty()) {
            document.html += in_paragraph ? "</p>\n" : "";
            in_paragraph = false;
            continue;
        }
        document.html += in_paragraph ? "<br>\n" : "<p>";
        in_paragraph = true;
        append_text(document.html, line);
        const std::size_t words = line.find_first_not_of(" \t");
        if (!section.text.empty())
            section.text += ' ';
        section.text += line.substr(words);
    }
    document.html += in_paragraph ? "</p>\n" : "";
    if (!section.text.empty())
        document.sections.push_back(std::move(section));
    return document;
}

} // namespace Lumenfold::Builder
