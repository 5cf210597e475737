#include "builder/site/project_paths.h"
#include "builder/site/site_pages.h"

#include <utility>

namespace Lumenfold::Builder {

namespace {

/// A page that search should know by its title and a few words.
SearchPage short_page(std::string path, std::string title, std::string text) {
    SearchPage page;
    page.path = std::move(path);
    page.title = std::move(title);
    page.sections.push_back({{}, std::move(text)});
    return page;
}

SearchPage home_search(const SiteConfig& config, const SiteDocuments& documents) {
    SearchPage page = short_page(FIRST_PAGE, config.title, config.description);
    for (const ConfigSection& section : config.sections)
        if (!section.label.empty() || !section.subtext.empty()) {
            const std::string anchor = section_anchor(section.id);
            page.headings.push_back({2, anchor, section.label});
            page.sections.push_back({anchor, section.subtext});
        }
    page.sections.insert(page.sections.end(), documents.home_texts.begin(),
                         documents.home_texts.end());
    return page;
}

} // namespace

std::vector<SearchPage> site_search_pages(const SiteContext& context,
                                          const SiteDocuments& documents) {
    std::vector<SearchPage> pages{home_search(context.site.config, documents)};
    for (const PolicyDocument& policy : documents.policies) {
        SearchPage page = short_page(policy.path, policy.title, {});
        page.headings = policy.document.headings;
        page.sections = policy.document.sections;
        pages.push_back(std::move(page));
    }
    for (std::size_t i = 0; i < context.states.size(); ++i)
        if (context.states[i].note.search.empty()) {
            const SiteProject& project = context.site.projects[i];
            pages.push_back(short_page(project.address + FIRST_PAGE, project.config.name,
                                       project.config.tagline));
        }
    return pages;
}

} // namespace Lumenfold::Builder
