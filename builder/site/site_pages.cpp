#include "builder/site/site_pages.h"

#include "builder/site/project_paths.h"
#include "builder/site/site_documents.h"
#include "site/creation.h"

#include <utility>

namespace Lumenfold::Builder {

namespace {

constexpr const char* NOT_FOUND_PAGE = "404.html";
constexpr const char* SEARCH_PAGE = "search.html";

std::string policy_title(const ConfigPolicy& policy) {
    if (!policy.name.empty())
        return policy.name;
    return policy.title.empty() ? policy.slug : policy.title;
}

bool has_page(const ConfigPolicy& policy) {
    return is_valid_slug(policy.slug);
}

HomeSectionKind section_kind(const std::string& type) {
    if (type == "description")
        return HomeSectionKind::Description;
    if (type == "projects")
        return HomeSectionKind::Projects;
    return type == "socials" ? HomeSectionKind::Socials : HomeSectionKind::Custom;
}

PageFrame site_frame(const SiteConfig& config, std::string path, std::string title) {
    PageFrame frame;
    frame.canonical = canonical_address(config, path);
    frame.path = std::move(path);
    frame.title = std::move(title);
    return frame;
}

std::string folder_of(const std::string& file) {
    const std::size_t start = file.find_first_not_of('/');
    const std::size_t slash = file.rfind('/');
    if (start == std::string::npos || slash == std::string::npos || slash < start)
        return {};
    return file.substr(start, slash + 1 - start);
}

void tell_missing(const SiteConfig& config, const std::string& file, Messages& messages) {
    messages.push_back(
        {Severity::Complaint, config.file.name, config.file.line_of(file),
         "the file '" + file + "' is not in the site's folder. Write it, or take the entry out."});
}

PolicyDocument read_policy(const SiteContext& context, const ConfigPolicy& policy,
                           Messages& messages) {
    const SiteConfig& config = context.site.config;
    PolicyDocument page{policy.slug + ".html", {}, policy_title(policy)};
    const SiteDocument document = read_site_document(config, policy.file);
    if (!document.found) {
        tell_missing(config, policy.file, messages);
        return page;
    }
    SiteDocumentLinks links(context.addresses, config, folder_of(policy.file));
    page.document =
        render_markdown(document.text, {document.file, /*drop_title=*/true}, links, messages);
    return page;
}

Document read_fragment(const SiteContext& context, const ConfigSection& section,
                       Messages& messages) {
    const SiteConfig& config = context.site.config;
    if (section_kind(section.type) != HomeSectionKind::Custom || section.body.empty())
        return {};
    const SiteDocument document = read_site_document(config, section.body);
    if (!document.found) {
        tell_missing(config, section.body, messages);
        return {};
    }
    SiteDocumentLinks links(context.addresses, config, "");
    return render_fragment(document.text, {document.file}, links, messages);
}

void read_home(const SiteContext& context, SiteDocuments& documents, Messages& messages) {
    const SiteConfig& config = context.site.config;
    const ReferenceReader references(context.addresses, config.file, messages);
    HomeView& view = documents.home;
    view.heading = config.title;
    view.hero = references.picture(config.hero);
    for (const ConfigSection& section : config.sections) {
        HomeSectionView item;
        item.kind = section_kind(section.type);
        item.id = section.id;
        item.label = section.label;
        item.subtext = section.subtext;
        item.icon = references.picture(section.icon);
        Document fragment = read_fragment(context, section, messages);
        item.html = std::move(fragment.html);
        for (const TextSection& text : fragment.sections)
            documents.home_texts.push_back({section_anchor(section.id), text.text});
        view.sections.push_back(std::move(item));
    }
    for (std::size_t i = 0; i < context.site.projects.size(); ++i)
        if (context.site.projects[i].family == NO_PROJECT)
            view.projects.push_back(project_card(context, i));
}

/// A page for addresses that lead nowhere is shown at any depth, so the way to the root starts at
/// the host where the site has an address.
std::string root_for_any_depth(const SiteConfig& config) {
    const std::size_t host = config.url.find("://");
    if (host == std::string::npos)
        return {};
    const std::size_t path = config.url.find('/', host + 3);
    return (path == std::string::npos ? std::string() : config.url.substr(path)) + "/";
}

} // namespace

std::vector<SitePage> site_page_list(const SiteConfig& config) {
    std::vector<SitePage> pages{{FIRST_PAGE, config.title}};
    for (const ConfigPolicy& policy : config.policies)
        if (has_page(policy))
            pages.push_back({policy.slug + ".html", policy_title(policy)});
    if (config.search)
        pages.push_back({SEARCH_PAGE, "Search"});
    pages.push_back({NOT_FOUND_PAGE, "Page not found"});
    return pages;
}

SiteDocuments read_site_documents(const SiteContext& context, Messages& messages) {
    const SiteConfig& config = context.site.config;
    SiteDocuments documents;
    for (const ConfigPolicy& policy : config.policies) {
        if (has_page(policy))
            documents.policies.push_back(read_policy(context, policy, messages));
        else
            messages.push_back({Severity::Complaint, config.file.name,
                                config.file.line_of(policy.slug),
                                "the policy's slug '" + policy.slug +
                                    "' cannot name a page: use lowercase letters and digits in "
                                    "dash-separated runs."});
    }
    read_home(context, documents, messages);
    return documents;
}

void make_site_pages(const SiteContext& context, const Chrome& chrome,
                     const SiteDocuments& documents, const FileWriter& write) {
    const SiteConfig& config = context.site.config;
    const auto put = [&](const std::string& path, const std::string& html) {
        write(path, place_page(html, way_to_root(path)));
    };
    PageFrame home = site_frame(config, FIRST_PAGE, config.home_title);
    home.description = config.description;
    put(home.path, home_page(chrome, home, documents.home));
    for (const PolicyDocument& policy : documents.policies) {
        const PageFrame frame = site_frame(config, policy.path, policy.title);
        put(policy.path,
            policy_page(chrome, frame,
                        {policy.title, policy.document.html, policy.document.headings}));
    }
    if (config.search) {
        PageFrame frame = site_frame(config, SEARCH_PAGE, "Search");
        frame.index = false;
        put(SEARCH_PAGE, search_page(chrome, frame));
    }
    PageFrame frame = site_frame(config, NOT_FOUND_PAGE, "Page not found");
    frame.index = false;
    frame.canonical.clear();
    write(NOT_FOUND_PAGE, place_page(not_found_page(chrome, frame), root_for_any_depth(config)));
}

} // namespace Lumenfold::Builder
