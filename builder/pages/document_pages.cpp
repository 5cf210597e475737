#include "builder/pages/page_parts.h"

namespace Lumenfold::Builder {
namespace {

std::string document_page(std::string_view kind, const Chrome& chrome, const PageFrame& frame,
                          const ProjectView& project, const DocumentView& document) {
    HtmlWriter html;
    html.reserve(document.html.size() + 8192);
    const Words& words = words_of(chrome);
    const Shell shell{chrome, frame, kind, &project, &document.headings, {}};
    begin_page(html, shell);
    html.raw("<article>\n");
    write_breadcrumbs(html, project, frame.path);
    write_version_note(html, words, project, document);
    html.element("h1", {}, document.title.empty() ? frame.title : document.title).raw("\n");
    html.element("p", "lead", document.intro);
    write_document(html, words, document);
    html.raw("</article>\n");
    end_page(html, shell);
    return html.take();
}

} // namespace

std::string topic_page(const Chrome& chrome, const PageFrame& frame, const ProjectView& project,
                       const DocumentView& topic) {
    return document_page("topic", chrome, frame, project, topic);
}

std::string license_page(const Chrome& chrome, const PageFrame& frame, const ProjectView& project,
                         const DocumentView& license) {
    return document_page("license", chrome, frame, project, license);
}

} // namespace Lumenfold::Builder
