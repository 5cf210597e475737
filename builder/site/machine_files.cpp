#include "builder/site/machine_files.h"

#include "builder/site/project_paths.h"
#include "builder/site/site_pages.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace Lumenfold::Builder {

namespace {

constexpr std::size_t SITEMAP_LIMIT = 50000;
constexpr const char* XML_HEAD = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";

std::string escaped(std::string_view text) {
    std::string xml;
    for (const char c : text) {
        if (c == '&')
            xml += "&amp;";
        else if (c == '<')
            xml += "&lt;";
        else if (c == '>')
            xml += "&gt;";
        else if (c == '"')
            xml += "&quot;";
        else if (static_cast<unsigned char>(c) >= 0x20 || c == '\t' || c == '\n')
            xml += c; // other control characters cannot stand in XML 1.0
    }
    return xml;
}

std::string element(const char* name, std::string_view text) {
    return "<" + std::string(name) + ">" + escaped(text) + "</" + name + ">";
}

bool is_date(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-')
        return false;
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return c == '-' || (c >= '0' && c <= '9'); });
}

struct SitemapEntry {
    std::string address;
    std::string date; ///< empty if unknown
};

/// Every page at the address that search engines should know it by, once.
std::vector<SitemapEntry> sitemap_entries(const SiteContext& context) {
    const SiteConfig& config = context.site.config;
    std::vector<SitemapEntry> entries;
    for (const SitePage& page : site_page_list(config))
        if (page.path != "404.html" && page.path != "search.html")
            entries.push_back({canonical_address(config, page.path), {}});
    for (std::size_t i = 0; i < context.states.size(); ++i) {
        const ProjectState& state = context.states[i];
        const std::string& address = context.site.projects[i].address;
        std::set<std::string, std::less<>> labels;
        for (const ShownVersion& version : state.versions)
            labels.insert(version.label);
        for (const NotedPage& page : state.note.pages) {
            const std::string_view below = std::string_view(page.path).substr(address.size());
            const bool versioned = labels.contains(below.substr(0, below.find('/')));
            if (!versioned)
                entries.push_back({canonical_address(config, page.path),
                                   state.versions.empty() ? "" : state.versions.front().date});
        }
    }
    return entries;
}

std::string sitemap(const SitemapEntry* begin, const SitemapEntry* end) {
    std::string xml = XML_HEAD;
    xml += "<urlset xmlns=\"http://www.sitemaps.org/schemas/sitemap/0.9\">\n";
    for (const SitemapEntry* entry = begin; entry != end; ++entry) {
        xml += "<url>" + element("loc", entry->address);
        if (is_date(entry->date))
            xml += element("lastmod", entry->date);
        xml += "</url>\n";
    }
    return xml + "</urlset>\n";
}

void add_sitemaps(const SiteContext& context, std::vector<SiteAsset>& files) {
    const std::vector<SitemapEntry> entries = sitemap_entries(context);
    const SitemapEntry* first = entries.data();
    if (entries.size() <= SITEMAP_LIMIT) {
        files.push_back({"sitemap.xml", sitemap(first, first + entries.size())});
        return;
    }
    std::string index = XML_HEAD;
    index += "<sitemapindex xmlns=\"http://www.sitemaps.org/schemas/sitemap/0.9\">\n";
    for (std::size_t at = 0, part = 1; at < entries.size(); at += SITEMAP_LIMIT, ++part) {
        const std::string path = "sitemap-" + std::to_string(part) + ".xml";
        const std::size_t end = std::min(at + SITEMAP_LIMIT, entries.size());
        files.push_back({path, sitemap(first + at, first + end)});
        index +=
            "<sitemap>" + element("loc", context.site.config.url + "/" + path) + "</sitemap>\n";
    }
    files.push_back({"sitemap.xml", index + "</sitemapindex>\n"});
}

struct FeedEntry {
    std::string date;
    std::string address;
    std::string title;
    std::string summary;
};

std::vector<FeedEntry> feed_entries(const SiteContext& context) {
    std::vector<FeedEntry> entries;
    for (std::size_t i = 0; i < context.states.size(); ++i) {
        const ProjectConfig& project = context.site.projects[i].config;
        for (const NotedRelease& release : context.states[i].note.releases)
            if (is_date(release.date))
                entries.push_back({release.date,
                                   canonical_address(context.site.config, release.path),
                                   project.name + " " + release.label, project.tagline});
    }
    std::stable_sort(entries.begin(), entries.end(), [](const FeedEntry& a, const FeedEntry& b) {
        return a.date > b.date || (a.date == b.date && a.address < b.address);
    });
    return entries;
}

std::string feed(const SiteContext& context) {
    const SiteConfig& config = context.site.config;
    const std::vector<FeedEntry> entries = feed_entries(context);
    const auto time = [](const std::string& date) { return date + "T00:00:00Z"; };
    const std::string author = config.title.empty() ? config.url : config.title;
    std::string xml = XML_HEAD;
    xml += "<feed xmlns=\"http://www.w3.org/2005/Atom\" xml:lang=\"" +
           escaped(config.language.empty() ? "en" : config.language) + "\">\n";
    xml += element("title", author) + "\n" + element("id", config.url + "/") + "\n";
    xml += "<link href=\"" + escaped(config.url) + "/\"/>\n";
    xml += "<link rel=\"self\" href=\"" + escaped(config.url) + "/feed.xml\"/>\n";
    // A feed has to name a time; one without releases is as old as can be.
    xml += element("updated", time(entries.empty() ? "1970-01-01" : entries.front().date)) + "\n";
    xml += "<author>" + element("name", author) + "</author>\n";
    for (const FeedEntry& entry : entries) {
        xml += "<entry>" + element("title", entry.title) + element("id", entry.address) +
               "<link href=\"" + escaped(entry.address) + "\"/>" +
               element("updated", time(entry.date));
        if (!entry.summary.empty())
            xml += element("summary", entry.summary);
        xml += "</entry>\n";
    }
    return xml + "</feed>\n";
}

} // namespace

std::vector<SiteAsset> machine_files(const SiteContext& context) {
    const std::string& url = context.site.config.url;
    std::vector<SiteAsset> files;
    std::string robots = "User-agent: *\nAllow: /\n";
    if (!url.empty()) {
        robots += "Sitemap: " + url + "/sitemap.xml\n";
        add_sitemaps(context, files);
        files.push_back({"feed.xml", feed(context)});
    }
    files.push_back({"robots.txt", robots});
    return files;
}

} // namespace Lumenfold::Builder
