#pragma once

#include "site/result.h"
#include "site/shown_record.h"

#include <filesystem>
#include <string>

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
// in place. Whatever fails, the file keeps its bytes. Adders return false then, with words for the
// user in `error`.

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

/// Sets `key` to an empty object.
bool add_empty_object(const std::filesystem::path& path, const std::string& key,
                      std::string* error);

/// Removes a record of the top-level array `key`.
Result remove_record(const std::filesystem::path& path, const std::string& key,
                     const ShownRecord& shown);
Result remove_topic(const std::filesystem::path& manifest_path, const ShownRecord& shown);
/// Removes the policy and the footer link to its page; the Markdown file stays.
Result remove_policy(const std::filesystem::path& path, const ShownRecord& shown);

} // namespace Lumenfold
