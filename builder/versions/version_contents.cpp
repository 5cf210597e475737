#include "builder/versions/version_contents.h"

#include "builder/files/fit_path.h"
#include "site/config_files.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace Lumenfold::Builder {

namespace {

/// One value on one line; bytes that are not UTF-8 become U+FFFD.
std::string dump(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json json_of(const std::vector<Heading>& headings) {
    Json list = Json::array();
    for (const Heading& heading : headings)
        list.push_back(Json::array({heading.level, heading.id, heading.text}));
    return list;
}

Json json_of(const std::vector<SiteLink>& links) {
    Json list = Json::array();
    for (const SiteLink& link : links)
        list.push_back(Json::array({link.address, link.file, link.line}));
    return list;
}

Json json_of(const VersionPage& page) {
    return {{"path", page.path},        {"title", page.title},
            {"label", page.label},      {"intro", page.intro},
            {"source", page.source},    {"headings", json_of(page.headings)},
            {"anchors", page.anchors},  {"site_links", json_of(page.site_links)},
            {"bytes", page.html.size()}};
}

std::vector<Heading> headings_of(const Json& list) {
    std::vector<Heading> headings;
    headings.reserve(list.size());
    for (const Json& entry : list)
        headings.push_back({entry.at(0).get<int>(), entry.at(1), entry.at(2)});
    return headings;
}

std::vector<SiteLink> links_of(const Json& list) {
    std::vector<SiteLink> links;
    links.reserve(list.size());
    for (const Json& entry : list)
        links.push_back({entry.at(0), entry.at(1), entry.at(2).get<std::size_t>()});
    return links;
}

VersionPage page_of(const Json& json) {
    VersionPage page;
    page.path = json.at("path");
    page.title = json.at("title");
    page.label = json.at("label");
    page.intro = json.at("intro");
    page.source = json.at("source");
    page.headings = headings_of(json.at("headings"));
    page.anchors = json.at("anchors").get<std::vector<std::string>>();
    page.site_links = links_of(json.at("site_links"));
    return page;
}

StoredVersion version_of(const Json& json, std::vector<std::size_t>& sizes) {
    StoredVersion version;
    version.label = json.at("label");
    version.tag = json.at("tag");
    version.commit = json.at("commit");
    version.date = json.at("date");
    for (const Json& page : json.at("pages")) {
        version.pages.push_back(page_of(page));
        sizes.push_back(page.at("bytes").get<std::size_t>());
    }
    for (const Json& file : json.at("files"))
        version.files.push_back({file.get<std::string>(), {}});
    return version;
}

/// Whoever changed the file by hand, no path in it leads out of the folder.
bool has_fit_paths(const StoredVersion& version) {
    return std::all_of(version.pages.begin(), version.pages.end(),
                       [](const VersionPage& page) { return is_fit_path(page.path); }) &&
           std::all_of(version.files.begin(), version.files.end(), [](const VersionFile& file) {
               return file.path.starts_with("files/") && is_fit_path(file.path);
           });
}

void append_field(std::string& line, std::string_view text) {
    const std::size_t begin = line.size();
    line += text;
    std::replace_if(
        line.begin() + static_cast<std::ptrdiff_t>(begin), line.end(),
        [](char c) { return c == '\n' || c == '\t'; }, ' ');
}

/// Takes the text up to `end` and the sign itself from the front of `rest`; nothing without one.
std::optional<std::string_view> take_until(std::string_view& rest, char end) {
    const std::size_t at = rest.find(end);
    if (at == std::string_view::npos)
        return std::nullopt;
    const std::string_view taken = rest.substr(0, at);
    rest.remove_prefix(at + 1);
    return taken;
}

bool add_sections(VersionPage& page, std::string_view& rest) {
    for (;;) {
        std::optional<std::string_view> line = take_until(rest, '\n');
        if (!line)
            return false;
        if (line->empty())
            return true;
        const std::optional<std::string_view> anchor = take_until(*line, '\t');
        if (!anchor)
            return false;
        page.sections.push_back({std::string(*anchor), std::string(*line)});
    }
}

} // namespace

std::string contents_text(const StoredVersion& version) {
    // A page a line, so that two versions of the file compare well.
    std::string pages;
    for (const VersionPage& page : version.pages)
        pages += (pages.empty() ? "\n" : ",\n") + dump(json_of(page));
    Json files = Json::array();
    for (const VersionFile& file : version.files)
        files.push_back(file.path);
    std::string head = dump({{"format", CONFIG_FORMAT_VERSION},
                             {"label", version.label},
                             {"tag", version.tag},
                             {"commit", version.commit},
                             {"date", version.date},
                             {"files", files}});
    head.pop_back();
    return head + ",\n\"pages\":[" + pages + "\n]}\n";
}

std::string pages_text(const StoredVersion& version) {
    std::string text;
    for (const VersionPage& page : version.pages)
        text += page.html;
    return text;
}

std::string search_text(const StoredVersion& version) {
    std::string text;
    for (const VersionPage& page : version.pages) {
        for (const TextSection& section : page.sections) {
            append_field(text, section.anchor);
            text += '\t';
            append_field(text, section.text);
            text += '\n';
        }
        text += '\n';
    }
    return text;
}

std::optional<StoredVersion> parse_contents(std::string_view text,
                                            std::vector<std::size_t>& sizes) {
    const std::optional<Json> json = parse_json(text);
    if (!json || !json->is_object() || !check_format(*json, nullptr))
        return std::nullopt;
    try {
        StoredVersion version = version_of(*json, sizes);
        return has_fit_paths(version) ? std::optional(std::move(version)) : std::nullopt;
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

bool add_bodies(StoredVersion& version, std::string_view pages,
                const std::vector<std::size_t>& sizes) {
    for (std::size_t i = 0; i < version.pages.size(); ++i) {
        if (sizes[i] > pages.size())
            return false;
        version.pages[i].html = pages.substr(0, sizes[i]);
        pages.remove_prefix(sizes[i]);
    }
    return pages.empty();
}

bool add_sections(StoredVersion& version, std::string_view search) {
    return std::all_of(version.pages.begin(), version.pages.end(),
                       [&](VersionPage& page) { return add_sections(page, search); }) &&
           search.empty();
}

} // namespace Lumenfold::Builder
