#pragma once

#include "site/json_file.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold {

struct DependencyRecord {
    std::string name;
    std::string url;
    std::string icon;
    bool external = false;
};

struct DownloadRecord {
    std::string url;
    std::string platform_icon;
    std::string platform_label;
    std::string size;
};

struct FactRecord {
    std::string label;
    std::string value;
    std::string href;
    std::string note;
};

struct TopicRecord {
    std::string slug;
    std::string label;
    std::string title;
    std::string intro;
    std::string source;
};

struct PolicyRecord {
    std::string slug;
    std::string name;
    std::string title;
    std::string file;
    bool skip_footer_link = false;
};

struct SocialRecord {
    std::string label;
    std::string username;
    std::string url;
    std::string icon;
    bool external = false;
};

// Each operation below is one transaction on one file: read it whole, change one list, write it
// in place. A failure before the write leaves the file as it was. Adders put words for the user
// in `error`.

bool add_dependency(const std::filesystem::path& path, const DependencyRecord& record,
                    std::string* error);
bool add_download(const std::filesystem::path& path, const DownloadRecord& record,
                  std::string* error);
bool add_fact(const std::filesystem::path& path, const FactRecord& record, std::string* error);
bool add_social(const std::filesystem::path& path, const SocialRecord& record, std::string* error);
/// Also links the policy's page from the footer, unless the record says otherwise.
bool add_policy(const std::filesystem::path& path, const PolicyRecord& record, std::string* error);
/// Works on the source-root manifest, which comes into being if it does not exist.
bool add_topic(const std::filesystem::path& manifest_path, const TopicRecord& record,
               std::string* error);

/// Registers a project, unless an entry already means the same path.
bool add_project_entry(const std::filesystem::path& path, const std::string& reference);
/// Sets `key` to an empty object.
bool add_empty_object(const std::filesystem::path& path, const std::string& key,
                      std::string* error);

/// Removes element `index` of the top-level array `key`; false if there is none.
bool remove_record(const std::filesystem::path& path, const std::string& key, std::size_t index);
bool remove_topic(const std::filesystem::path& manifest_path, std::size_t index);
/// Removes the policy and the footer link to its page; the Markdown file stays.
bool remove_policy(const std::filesystem::path& path, std::size_t index);
/// Removes the registry entries that mean one of `references` (absolute configuration paths).
bool remove_projects(const std::filesystem::path& path,
                     const std::vector<std::filesystem::path>& references);

bool add_home_section(const std::filesystem::path& path, const Json& section);
/// Moves a home section by `delta` places; false if it would leave the list.
bool move_home_section(const std::filesystem::path& path, std::size_t index, int delta);
bool remove_home_section(const std::filesystem::path& path, std::size_t index);
/// `base`, or "section" if it is empty, with "-2", "-3", ... behind it while the id is taken.
std::string unique_section_id(const std::filesystem::path& path, const std::string& base);
/// Makes a custom section's HTML fragment, if it is missing. The section's "body" reference;
/// empty on failure.
std::string create_home_section_fragment(const std::filesystem::path& site_folder,
                                         const std::string& id);

/// ASCII letters and digits in lower case, every run of other bytes as one dash between them.
std::string slugify(std::string_view text);
/// Without blanks and tabs at both ends; line ends stay.
std::string trim(std::string_view text);

} // namespace Lumenfold
