#include "site/new_site.h"

#include "site/config_files.h"
#include "site/path_text.h"

#include <chrono>
#include <ctime>
#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

std::string current_year() {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    const std::tm* local = std::localtime(&now);
    return local ? std::to_string(1900 + local->tm_year) : std::string();
}

/// The first text of a site's configuration, laid out for reading rather than by the serialiser.
std::string new_site_text(const std::string& title) {
    const std::string quoted = quote_json_string(title);
    const std::string copyright = quote_json_string("(c) " + current_year() + " " + title);
    return "{\n"
           "  \"format\": 1,\n"
           "  \"title\": " +
           quoted +
           ",\n"
           "  \"description\": \"A new site\",\n"
           "  \"copyright\": " +
           copyright +
           ",\n"
           "  \"output\": \"./output\",\n"
           "  \"branding\": {\n"
           "    \"tab_text\": " +
           quoted +
           "\n"
           "  },\n"
           "  \"footer_links\": [],\n"
           "  \"projects\": [],\n"
           "  \"socials\": [],\n"
           "  \"home\": {\n"
           "    \"sections\": [\n"
           "      { \"type\": \"description\" },\n"
           "      { \"type\": \"projects\" },\n"
           "      { \"type\": \"socials\" }\n"
           "    ]\n"
           "  },\n"
           "  \"pages\": {\n"
           "    \"home_title\": " +
           quoted +
           "\n"
           "  }\n"
           "}\n";
}

Result make_site(const fs::path& folder, const std::string& title) {
    const fs::path file = folder / SITE_FILE_NAME;
    if (is_occupied(file))
        return Result::failed(".lumenfold-site already exists in " + path_to_utf8(folder));
    const fs::path fragments = folder / "content-fragments";
    std::error_code problem;
    fs::create_directories(fragments, problem);
    if (problem)
        return Result::failed("Could not create site directory: " + path_to_utf8(fragments));
    const fs::path images = folder / "images";
    fs::create_directories(images, problem);
    if (problem)
        return Result::failed("Could not create site images directory: " + path_to_utf8(images));
    if (!write_text_file(file, new_site_text(title.empty() ? "My Site" : title)))
        return Result::failed("Could not write " + path_to_utf8(file));
    return {};
}

} // namespace

bool create_site(const fs::path& folder, const std::string& title, std::string* error) {
    return make_site(folder, title).report_to(error);
}

} // namespace Lumenfold
