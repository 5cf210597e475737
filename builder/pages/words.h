#pragma once

#include <string_view>

namespace Lumenfold::Builder {

/// The words that templates and scripts bring along, plain. "%1" and "%2" stand for what a sentence
/// tells of.
struct Words {
    std::string_view skip;
    std::string_view main_menu;
    std::string_view footer;
    std::string_view search;
    std::string_view theme;
    std::string_view on_this_page;
    std::string_view overview;
    std::string_view license;
    std::string_view version;
    std::string_view versions;
    std::string_view all_versions;
    std::string_view newest;
    std::string_view released;
    std::string_view downloads;
    std::string_view requirements;
    std::string_view repository;
    std::string_view source;
    std::string_view previous;
    std::string_view next;
    std::string_view projects;
    std::string_view elsewhere;
    std::string_view older;        ///< %1 this version, %2 the newest
    std::string_view read_newest;  ///< %2: the same page
    std::string_view go_to_newest; ///< %2: its first page
    std::string_view unreleased;
    std::string_view search_without_script;
    std::string_view not_found;
    std::string_view not_found_hint;
    std::string_view home;
    std::string_view copy;
    std::string_view copied;
    std::string_view no_results; ///< %1 what was looked for
    std::string_view one_result;
    std::string_view results; ///< %1 a number
    std::string_view also_in; ///< before the versions that have the same page
};

/// The words for a language (BCP 47), English for one that is not known.
const Words& words_for(std::string_view language);

/// Whether a language is written from right to left.
bool is_right_to_left(std::string_view language);

} // namespace Lumenfold::Builder
