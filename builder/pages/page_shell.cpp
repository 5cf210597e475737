#include "builder/pages/page_shell.h"

namespace Lumenfold::Builder {
namespace {

/// The chrome's part with the link to the page at `path` marked.
void write_marked(HtmlWriter& html, std::string_view part, std::string_view path) {
    const std::string link = std::string("href=\"") + ROOT_MARK + std::string(path) + '"';
    std::size_t begin = 0;
    for (std::size_t at = 0; (at = part.find(link, begin)) != std::string_view::npos;) {
        const std::size_t end = at + link.size();
        html.raw(part.substr(begin, end - begin)).raw(" aria-current=\"page\"");
        begin = end;
    }
    html.raw(part.substr(begin));
}

/// On narrow screens: the buttons for sidebar and table of contents.
void write_local_bar(HtmlWriter& html, const Shell& shell, const Words& words) {
    const bool contents = has_contents(shell.headings);
    if (shell.project == nullptr && !contents)
        return;
    html.raw("<div class=\"local-bar\">");
    if (shell.project != nullptr)
        html.raw("<button type=\"button\" class=\"open-pages\" popovertarget=\"Pages\">")
            .text(shell.project->home.label)
            .raw("</button>");
    if (contents)
        html.raw("<button type=\"button\" class=\"open-contents\" popovertarget=\"Contents\">")
            .text(words.on_this_page)
            .raw("</button>");
    html.raw("</div>\n");
}

std::string layout_class(const Shell& shell) {
    std::string name = "layout";
    if (shell.project != nullptr)
        name += " has-sidebar";
    if (has_contents(shell.headings))
        name += " has-contents";
    return name;
}

} // namespace

void begin_page(HtmlWriter& html, const Shell& shell) {
    const Words& words = words_of(shell.chrome);
    const std::string& language = shell.chrome.site.language;
    html.raw("<!DOCTYPE html>\n<html").attribute("lang", language.empty() ? "en" : language);
    if (is_right_to_left(language))
        html.raw(" dir=\"rtl\"");
    html.raw(">\n<head>\n<meta charset=\"utf-8\">\n");
    write_metadata(html, shell.chrome, shell.frame);
    html.raw(shell.chrome.head).raw(shell.machine_data).raw("</head>\n<body");
    html.attribute("class", shell.kind).raw(">\n<a class=\"skip\" href=\"#Main\">");
    html.text(words.skip).raw("</a>\n");
    write_marked(html, shell.chrome.header, shell.frame.path);
    html.raw("<div").attribute("class", layout_class(shell)).raw(">\n");
    write_local_bar(html, shell, words);
    if (shell.project != nullptr)
        write_sidebar(html, words, *shell.project, shell.frame.path);
    html.raw("<main id=\"Main\">\n");
}

void end_page(HtmlWriter& html, const Shell& shell) {
    html.raw("</main>\n");
    if (has_contents(shell.headings)) {
        html.raw("<nav id=\"Contents\" class=\"contents\" popover "
                 "aria-labelledby=\"ContentsTitle\">")
            .raw("<h2 id=\"ContentsTitle\">")
            .text(words_of(shell.chrome).on_this_page)
            .raw("</h2>\n");
        write_contents(html, *shell.headings);
        html.raw("</nav>\n");
    }
    html.raw("</div>\n");
    write_marked(html, shell.chrome.footer, shell.frame.path);
    html.raw("</body>\n</html>\n");
}

const Words& words_of(const Chrome& chrome) {
    return words_for(chrome.site.language);
}

std::string fill_in(std::string_view sentence, std::string_view first, std::string_view second) {
    std::string result;
    for (std::size_t i = 0; i < sentence.size(); ++i) {
        const std::string_view place = sentence.substr(i, 2);
        if (place != "%1" && place != "%2") {
            result += sentence[i];
            continue;
        }
        result += place == "%1" ? first : second;
        ++i;
    }
    return result;
}

} // namespace Lumenfold::Builder
