#include "builder/pages/page_shell.h"

#include <algorithm>

namespace Lumenfold::Builder {
namespace {

constexpr std::ptrdiff_t FEWEST = 2; ///< headings that are worth a table of contents
constexpr int DEEPEST = 3;

bool is_listed(const Heading& heading) {
    return heading.level <= DEEPEST && !heading.id.empty() && !heading.text.empty();
}

} // namespace

bool has_contents(const std::vector<Heading>* headings) {
    return headings != nullptr &&
           std::count_if(headings->begin(), headings->end(), is_listed) >= FEWEST;
}

void write_contents(HtmlWriter& html, const std::vector<Heading>& headings) {
    html.raw("<ul>\n");
    for (const Heading& heading : headings) {
        if (!is_listed(heading))
            continue;
        html.raw(heading.level == DEEPEST ? "<li class=\"deep\">" : "<li>").raw("<a");
        html.address("href", "#" + heading.id).raw(">").text(heading.text).raw("</a></li>\n");
    }
    html.raw("</ul>\n");
}

} // namespace Lumenfold::Builder
