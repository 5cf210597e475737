#include "sample_site.h"

#include <fstream>
#include <iterator>

namespace Lumenfold::Builder {
namespace {

std::string read_file(const std::string& path) {
    std::ifstream file(SOURCE_ROOT + ("/" + path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Makes views; their texts are hostile if the look asks for it.
class Sample {
public:
    explicit Sample(const SampleLook& look)
        : look_(look)
        , chrome_(make_chrome(site())) {}

    std::vector<SiteAsset> pages() const {
        std::vector<SiteAsset> all;
        const auto add = [&](PageFrame frame, const auto& make) {
            frame.canonical = "https://docs.example/" + frame.path;
            frame.description = text("What this page is about");
            frame.picture = {"https://docs.example/logo.png", 512, 512};
            all.push_back({frame.path, place_page(make(frame), way_to_root(frame.path))});
        };
        add(frame("index.html", "Tidewater – open tide and river tools"),
            [&](const PageFrame& f) { return home_page(chrome_, f, home()); });
        add(frame("gauge/index.html", "Gauge"),
            [&](const PageFrame& f) { return family_page(chrome_, f, family()); });
        PageFrame released = frame("gauge/core/index.html", "Gauge Core");
        released.software_version = text("3.2");
        add(released, [&](const PageFrame& f) {
            return project_page(chrome_, f, project(f.path), document("Gauge Core"));
        });
        PageFrame bare = frame("sandbar/index.html", "Sandbar");
        bare.index = false;
        add(bare, [&](const PageFrame& f) { return project_page(chrome_, f, bare_project(), {}); });
        add(frame("gauge/core/topics/units.html", "Units"), [&](const PageFrame& f) {
            DocumentView topic = document("Units and how they are converted");
            topic.intro = text("Every reading has a unit; a series has exactly one.");
            topic.previous = link("Quickstart", "gauge/core/topics/quickstart.html");
            topic.next = link("Errors", "gauge/core/topics/errors.html");
            return topic_page(chrome_, f, project(f.path), topic);
        });
        add(frame("gauge/core/3.0/topics/units.html", "Units"), [&](const PageFrame& f) {
            DocumentView topic = document("Units");
            topic.newer = link("3.2", "gauge/core/topics/units.html");
            topic.newer_is_same_page = true;
            return topic_page(chrome_, f, project(f.path), topic);
        });
        add(frame("gauge/core/license.html", "License"), [&](const PageFrame& f) {
            DocumentView license;
            license.html = "<p>Permission is hereby granted, free of charge.</p>\n";
            return license_page(chrome_, f, project(f.path), license);
        });
        add(frame("gauge/core/versions.html", "Versions"),
            [&](const PageFrame& f) { return versions_page(chrome_, f, project(f.path)); });
        add(frame("privacy.html", "Privacy"), [&](const PageFrame& f) {
            return policy_page(chrome_, f, {text("Privacy"), prose(), headings()});
        });
        add(frame("search.html", "Search"),
            [&](const PageFrame& f) { return search_page(chrome_, f); });
        add(frame("404.html", "Not found"),
            [&](const PageFrame& f) { return not_found_page(chrome_, f); });
        return all;
    }

private:
    std::string text(const std::string& plain) const {
        return look_.hostile ? plain + "</title></script><script>alert('x')</script>\" onload=\"x "
                                       "&amp; \x01\x02 \xc2\x85 <!-- %1"
                             : plain;
    }

    LinkView link(const std::string& label, const std::string& path,
                  const std::string& icon = {}) const {
        LinkView view;
        view.label = text(label);
        view.href = path.find(':') == std::string::npos ? ROOT_MARK + path : path;
        view.external = path.starts_with("http");
        if (look_.hostile)
            view.href += "\"><script>x</script>";
        if (!icon.empty())
            view.icon = picture(icon, 24);
        return view;
    }

    static PictureView picture(const std::string& name, int size) {
        return {ROOT_MARK + ("images/" + name), size, size};
    }

    PageFrame frame(const std::string& path, const std::string& title) const {
        PageFrame frame;
        frame.path = path;
        frame.title = text(title);
        return frame;
    }

    SiteView site() const {
        SiteView site;
        site.title = text("Tidewater");
        site.tab_text = text("Tidewater");
        site.description = text("Open tools for tides, rivers and the people who live beside "
                                "them – from Århus to Zürich, from Saint-Malo to Θεσσαλονίκη.");
        site.url = "https://docs.example";
        site.language = look_.language;
        site.copyright = text("© 2019–2026 The Tidewater contributors");
        site.logo = picture("logo.svg", 256);
        site.menus = {{link("Guides", ""),
                       {link("Your first prediction", "harmonics/index.html"),
                        link("Units", "gauge/core/topics/units.html")}},
                      {link("Projects", "index.html"), {}}};
        site.footer_links = {link("Privacy", "privacy.html"),
                             link("Code of Conduct", "conduct.html"),
                             link("Status", "https://status.example")};
        site.socials = {link("Forge", "https://code.example/tidewater", "forge.svg"),
                        link("Post", "mailto:post@tidewater.example", "mail.svg")};
        site.socials[0].note = text("tidewater");
        site.favicons = {
            {"icon", "image/svg+xml", "", std::string(1, ROOT_MARK) + "images/logo.svg"}};
        site.theme_switch = true;
        site.feed = true;
        return site;
    }

    ProjectCard card(const std::string& name, const std::string& path, const std::string& tagline,
                     const std::string& logo) const {
        ProjectCard card;
        card.link = link(name, path);
        card.tagline = text(tagline);
        card.logo = picture(logo, 128);
        card.version = text("3.2");
        card.date = "2026-02-11";
        return card;
    }

    HomeView home() const {
        HomeView view;
        view.heading = text("Tidewater – open tide and river tools");
        view.hero = picture("harbour.png", 320);
        HomeSectionView custom;
        custom.id = "getting-started";
        custom.label = text("Getting started");
        custom.subtext = text("Your first tide table in five minutes");
        custom.icon = picture("compass.svg", 24);
        custom.html = "<p>Install <a href=\"gauge/core/index.html\">gauge</a>, then:</p>\n"
                      "<pre><code>gauge fetch --station brest | harmonics predict</code></pre>\n";
        HomeSectionView description;
        description.kind = HomeSectionKind::Description;
        HomeSectionView projects;
        projects.kind = HomeSectionKind::Projects;
        HomeSectionView socials;
        socials.kind = HomeSectionKind::Socials;
        view.sections = {description, custom, projects, socials};
        view.projects = {card("Gauge", "gauge/index.html",
                              "Read any water level station through one interface", "gauge.svg"),
                         card("Harmonics", "harmonics/index.html",
                              "Tide prediction from constituents", "harmonics.svg"),
                         card("Marée", "maree/index.html",
                              "Dates, heights and names of tides, in your language", "maree.svg")};
        view.projects[0].members = {link("Core", "gauge/core/index.html"),
                                    link("Command line", "gauge/cli/index.html")};
        return view;
    }

    FamilyView family() const {
        FamilyView view;
        view.name = text("Gauge");
        view.tagline = text("Read any water level station through one interface");
        view.logo = picture("gauge.svg", 128);
        view.members = {card("Gauge Core", "gauge/core/index.html",
                             "The library: stations, series and units", "gauge.svg"),
                        card("Gauge for Python", "gauge/python/index.html", "Series as data frames",
                             "python.svg")};
        view.facts = {{text("License"), text("MIT"), "https://mit.example", ""}};
        view.document = document("Gauge");
        return view;
    }

    ProjectView project(const std::string& path) const {
        const bool old = path.find("/3.0/") != std::string::npos;
        ProjectView view;
        view.home = link("Gauge Core", old ? "gauge/core/3.0/index.html" : "gauge/core/index.html");
        view.tagline = text("The library: stations, series and units");
        view.logo = picture("gauge.svg", 128);
        view.family = link("Gauge", "gauge/index.html");
        view.members = {link("Core", "gauge/core/index.html"),
                        link("Command line", "gauge/cli/index.html"),
                        link("Python", "gauge/python/index.html")};
        view.members[0].current = true;
        const std::string topics = old ? "gauge/core/3.0/topics/" : "gauge/core/topics/";
        view.topics = {link("Quickstart", topics + "quickstart.html"),
                       link("Units", topics + "units.html"),
                       link("Errors", topics + "errors.html")};
        view.license = link("License", "gauge/core/license.html");
        view.versions_page = link("Versions", "gauge/core/versions.html");
        for (const std::string label : {"3.2", "3.1", "3.0"}) {
            VersionView version;
            version.label = text(label);
            version.tag = label + ".0";
            version.date = "2026-02-11";
            version.license = text("MIT");
            version.href = ROOT_MARK + ("gauge/core/" + label + "/index.html");
            version.newest = label == "3.2";
            version.current = label == (old ? "3.0" : "3.2");
            if (version.current)
                view.version = version;
            view.versions.push_back(version);
        }
        view.facts = {{text("Stable release"), text("3.2"), "", text("11 February 2026")},
                      {text("License"), text("MIT"), "https://mit.example", ""},
                      {text("Language"), text("C++20"), "", ""},
                      {text("Stations"), text("4 217"), "", text("counted on every release")}};
        view.downloads = {
            {link("Linux (x86-64)", "https://files.example/a.tar.xz", "linux.svg"), text("3.4 MB")},
            {link("Windows", "https://files.example/a.zip", "windows.svg"), "3.9 MB"},
            {link("Source archive", "https://files.example/s.tar.xz"), "880 KB"}};
        view.requirements = {link("zlib", "https://zlib.example", "archive.svg"),
                             link("Harmonics", "harmonics/index.html")};
        view.repository = link("", "https://code.example/gauge");
        return view;
    }

    ProjectView bare_project() const {
        ProjectView view;
        view.home = link("Sandbar", "sandbar/index.html");
        view.unreleased = true;
        return view;
    }

    static std::string prose() {
        std::string html = read_file("tests/builder/pages/data/document.html");
        html.insert(html.find("images/harbour.png"), 1, ROOT_MARK);
        return html;
    }

    std::vector<Heading> headings() const {
        return {{2, "stations", text("Stations and series")},
                {3, "what-a-series-is", text("What a series is")},
                {2, "tables", text("Tables")},
                {2, "alerts", text("Alerts")},
                {2, "lists", text("Lists and details")}};
    }

    DocumentView document(const std::string& title) const {
        DocumentView view;
        view.title = text(title);
        view.html = prose();
        view.headings = headings();
        view.source = link("", "https://code.example/gauge/units.md");
        return view;
    }

    const SampleLook& look_;
    Chrome chrome_;
};

} // namespace

Corvel::Theme shipped_theme(const std::string& name) {
    return Corvel::parse_theme_file(read_file("ext/corvel/themes/" + name + ".json")).value();
}

std::vector<SiteAsset> sample_site(const SampleLook& look) {
    std::vector<SiteAsset> all = Sample(look).pages();
    SearchPage page;
    page.path = "gauge/core/topics/units.html";
    page.title = "Units";
    page.sections = {{"", "Every reading has a unit; a series has exactly one."}};
    for (SiteAsset& file : search_files({search_summary({page})}, {}))
        all.push_back(std::move(file));
    Messages messages;
    for (SiteAsset& asset :
         site_assets(shipped_theme(look.theme), shipped_theme(look.other), {}, messages))
        all.push_back(std::move(asset));
    return all;
}

} // namespace Lumenfold::Builder
