#include "builder/site/site_files.h"
#include "builder/site/site_pages.h"

#include <utility>

namespace Lumenfold::Builder {

namespace {

void add_menus(const SiteConfig& config, const ReferenceReader& references, SiteView& view) {
    for (const ConfigMenu& menu : config.menus) {
        MenuView entry;
        entry.link = references.link(menu.link.label, menu.link.href);
        for (const ConfigLink& item : menu.items)
            entry.items.push_back(references.link(item.label, item.href));
        if (!entry.link.label.empty())
            view.menus.push_back(std::move(entry));
    }
}

} // namespace

SiteView site_view(const SiteContext& context, Messages& messages) {
    const SiteConfig& config = context.site.config;
    const ReferenceReader references(context.addresses, config.file, messages);
    SiteView view;
    view.title = config.title;
    view.tab_text = config.tab_text.empty() ? config.title : config.tab_text;
    view.description = config.description;
    view.url = config.url;
    view.language = config.language.empty() ? "en" : config.language;
    view.copyright = config.copyright;
    view.logo = references.picture(config.logo);
    view.logo_height = config.logo_height;
    view.logo_height_mobile = config.logo_height_mobile;
    add_menus(config, references, view);
    for (const ConfigLink& link : config.footer_links)
        view.footer_links.push_back(references.link(link.label, link.href));
    for (const ConfigSocial& social : config.socials) {
        LinkView link = references.link(social.label, social.url, social.external);
        link.note = social.username;
        link.icon = references.picture(social.icon);
        view.socials.push_back(std::move(link));
    }
    view.favicons = favicon_views(config, messages);
    view.search = config.search;
    view.theme_switch = config.allow_switching;
    view.custom_css = has_custom_css(config);
    view.feed = !config.url.empty();
    return view;
}

} // namespace Lumenfold::Builder
