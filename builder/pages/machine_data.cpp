#include "builder/pages/machine_data.h"

#include <nlohmann/json.hpp>

namespace Lumenfold::Builder {
namespace {

using Json = nlohmann::ordered_json;

/// Texts for JSON; ROOT_MARK would become an address that leads nowhere.
std::string plain(const std::string& text) {
    std::string result;
    for (const char c : text)
        if (c != ROOT_MARK)
            result += c;
    return result;
}

void set(Json& object, const char* key, const std::string& value) {
    if (!value.empty())
        object[key] = plain(value);
}

/// As it may stand in <script>: ASCII, and no "<" that could end it or begin a comment.
std::string embedded(const Json& object) {
    const std::string json = object.dump(-1, ' ', true, Json::error_handler_t::replace);
    std::string result;
    for (const char c : json)
        if (c == '<')
            result += "\\u003c";
        else
            result += c;
    return result;
}

} // namespace

std::string software_data(const PageFrame& frame, const ProjectView& project) {
    if (frame.software_version.empty())
        return {};
    Json data{{"@context", "https://schema.org"}, {"@type", "SoftwareApplication"}};
    set(data, "name", project.home.label);
    set(data, "description", project.tagline);
    set(data, "url", frame.canonical);
    set(data, "image", frame.picture.src);
    set(data, "softwareVersion", frame.software_version);
    set(data, "datePublished", project.version.date);
    for (const DownloadView& download : project.downloads)
        if (download.link.href.find("://") != std::string::npos)
            data["downloadUrl"].push_back(plain(download.link.href));
    return "<script type=\"application/ld+json\">" + embedded(data) + "</script>\n";
}

} // namespace Lumenfold::Builder
