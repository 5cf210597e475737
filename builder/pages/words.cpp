#include "builder/pages/words.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <utility>

namespace Lumenfold::Builder {
namespace {

constexpr Words ENGLISH{
    .skip = "Skip to content",
    .main_menu = "Main",
    .footer = "Footer",
    .search = "Search",
    .theme = "Switch between light and dark",
    .on_this_page = "On this page",
    .overview = "Overview",
    .license = "License",
    .version = "Version",
    .versions = "Versions",
    .all_versions = "All versions",
    .newest = "newest",
    .released = "Released",
    .downloads = "Downloads",
    .requirements = "Requires",
    .repository = "Repository",
    .source = "Source of this page",
    .previous = "Previous",
    .next = "Next",
    .projects = "Projects",
    .elsewhere = "Elsewhere",
    .older = "You are reading about version %1. The newest is %2.",
    .read_newest = "Read this page for %2",
    .go_to_newest = "Go to version %2",
    .unreleased = "Nothing is released yet: these pages describe work in progress.",
    .search_without_script = "Searching needs JavaScript. These pages lead everywhere without it:",
    .not_found = "Page not found",
    .not_found_hint = "Nothing is at this address. It may have moved, or have a typing error.",
    .home = "Home",
    .copy = "Copy",
    .copied = "Copied",
    .no_results = "Nothing found for “%1”",
    .one_result = "1 result",
    .results = "%1 results",
    .also_in = "also in",
};

constexpr std::array<std::pair<std::string_view, const Words*>, 1> LANGUAGES{{
    {"en", &ENGLISH},
}};

std::string lower(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return result;
}

} // namespace

const Words& words_for(std::string_view language) {
    const std::string primary = lower(language.substr(0, language.find('-')));
    for (const auto& [name, words] : LANGUAGES)
        if (name == primary)
            return *words;
    return ENGLISH;
}

bool is_right_to_left(std::string_view language) {
    static constexpr std::array<std::string_view, 11> LANGUAGES_FROM_RIGHT{
        "ar", "arc", "ckb", "dv", "fa", "he", "ps", "sd", "ug", "ur", "yi"};
    const std::string name = lower(language);
    if (name.find("-latn") != std::string::npos)
        return false;
    if (name.find("-arab") != std::string::npos || name.find("-hebr") != std::string::npos)
        return true;
    return std::find(LANGUAGES_FROM_RIGHT.begin(), LANGUAGES_FROM_RIGHT.end(),
                     std::string_view(name).substr(0, name.find('-'))) !=
           LANGUAGES_FROM_RIGHT.end();
}

} // namespace Lumenfold::Builder
