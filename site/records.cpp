#include "site/records.h"

#include "site/config_files.h"
#include "site/record_lists.h"
#include "site/slug.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <span>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

enum class Presence : std::uint8_t { Always, IfSet };

/// One key of a record's element: a text or a flag of the record, and the words for a missing
/// text that is required. A flag is written only when it is true.
template <class Record>
struct Field {
    const char* key;
    std::string Record::*text = nullptr;
    Presence presence = Presence::Always;
    const char* missing = nullptr;
    bool Record::*flag = nullptr;
};

/// Where a record goes: a list of the file, or of an object in it.
struct ListPlace {
    RecordFile file;
    const char* parent; ///< null for a list of the root
    const char* key;
    const char* unique = nullptr; ///< what a record is called whose "slug" must be new to the list
};

// clang-format off
constexpr Field<DependencyRecord> DEPENDENCY_FIELDS[] = {
    {"name", &DependencyRecord::name, Presence::Always, "Dependency name is empty."},
    {"url", &DependencyRecord::url},
    {"icon", &DependencyRecord::icon, Presence::IfSet},
    {"external", nullptr, Presence::IfSet, nullptr, &DependencyRecord::external},
};
constexpr Field<DownloadRecord> DOWNLOAD_FIELDS[] = {
    {"url", &DownloadRecord::url, Presence::Always, "Download URL is empty."},
    {"platform_icon", &DownloadRecord::platform_icon, Presence::IfSet},
    {"platform_label", &DownloadRecord::platform_label},
    {"size", &DownloadRecord::size, Presence::IfSet},
};
constexpr Field<FactRecord> FACT_FIELDS[] = {
    {"label", &FactRecord::label, Presence::Always, "Fact label is empty."},
    {"value", &FactRecord::value},
    {"href", &FactRecord::href, Presence::IfSet},
    {"note", &FactRecord::note, Presence::IfSet},
};
constexpr Field<SocialRecord> SOCIAL_FIELDS[] = {
    {"label", &SocialRecord::label, Presence::Always, "Social label is empty."},
    {"username", &SocialRecord::username, Presence::IfSet},
    {"url", &SocialRecord::url},
    {"icon", &SocialRecord::icon, Presence::IfSet},
    {"external", nullptr, Presence::IfSet, nullptr, &SocialRecord::external},
};
constexpr Field<PolicyRecord> POLICY_FIELDS[] = {
    {"slug", &PolicyRecord::slug, Presence::Always, "Policy slug is empty."},
    {"name", &PolicyRecord::name},
    {"title", &PolicyRecord::title},
    {"file", &PolicyRecord::file},
};
constexpr Field<TopicRecord> TOPIC_FIELDS[] = {
    {"slug", &TopicRecord::slug, Presence::Always, "Topic slug is empty."},
    {"label", &TopicRecord::label},
    {"title", &TopicRecord::title},
    {"intro", &TopicRecord::intro, Presence::IfSet},
    {"source", &TopicRecord::source, Presence::Always, "Topic source is empty."},
};

constexpr ListPlace DEPENDENCIES = {RecordFile::Config, nullptr, "requires"};
constexpr ListPlace DOWNLOADS = {RecordFile::Config, nullptr, "downloads"};
constexpr ListPlace FACTS = {RecordFile::Config, nullptr, "facts"};
constexpr ListPlace SOCIALS = {RecordFile::Config, nullptr, "socials"};
constexpr ListPlace POLICIES = {RecordFile::Config, nullptr, "policies", "Policy"};
constexpr ListPlace TOPICS = {RecordFile::Manifest, "build", "topics", "Topic"};
// clang-format on

template <class Record>
const char* missing_field(std::span<const Field<Record>> fields, const Record& record) {
    for (const Field<Record>& field : fields)
        if (field.missing && (record.*field.text).empty())
            return field.missing;
    return nullptr;
}

template <class Record>
Json make_element(std::span<const Field<Record>> fields, const Record& record) {
    Json element = Json::object();
    for (const Field<Record>& field : fields) {
        if (field.flag && record.*field.flag)
            element[field.key] = true;
        else if (field.text &&
                 (field.presence == Presence::Always || !(record.*field.text).empty()))
            element[field.key] = record.*field.text;
    }
    return element;
}

bool holds_slug(const Json& list, const std::string& slug) {
    return std::any_of(list.begin(), list.end(),
                       [&](const Json& element) { return text_at(element, "slug") == slug; });
}

/// What a record that has a page must hold to: its slug names the page, and no other has it.
Result check_slug(const ListPlace& place, const Json& list, const std::string& slug) {
    if (holds_slug(list, slug))
        return Result::failed(std::string(place.unique) + " '" + slug + "' already exists.");
    return require_valid_slug(slug);
}

Result append_element(Json& json, const ListPlace& place, Json element) {
    if (place.file == RecordFile::Manifest)
        ensure_format(json);
    Json& list = list_at(place.parent ? object_at(json, place.parent) : json, place.key);
    if (place.unique)
        if (Result checked = check_slug(place, list, text_at(element, "slug")); !checked)
            return checked;
    list.push_back(std::move(element));
    return {};
}

/// The one adder. `finish` sees the document once the element is in.
template <class Record>
bool add_record(const fs::path& path, const ListPlace& place, std::span<const Field<Record>> fields,
                const Record& record, std::string* error,
                void (*finish)(Json&, const Record&) = nullptr) {
    if (const char* missing = missing_field(fields, record))
        return Result::failed(missing).report_to(error);
    const auto append = [&](Json& json) {
        Result appended = append_element(json, place, make_element(fields, record));
        if (appended && finish)
            finish(json, record);
        return appended;
    };
    return edit_record_file(path, place.file, append).report_to(error);
}

std::string policy_page(const std::string& slug) {
    return slug + ".html";
}

void add_footer_link(Json& site, const PolicyRecord& record) {
    if (record.skip_footer_link)
        return;
    Json link = Json::object();
    link["label"] = record.name;
    link["href"] = policy_page(record.slug);
    list_at(site, "footer_links").push_back(std::move(link));
}

void remove_footer_links(Json& site, const std::string& slug) {
    Json* links = find_list(site, "footer_links");
    if (!links || slug.empty())
        return;
    const std::string page = policy_page(slug);
    erase_elements(*links, [&](const Json& link) { return text_at(link, "href") == page; });
}

} // namespace

bool add_dependency(const fs::path& path, const DependencyRecord& record, std::string* error) {
    return add_record<DependencyRecord>(path, DEPENDENCIES, DEPENDENCY_FIELDS, record, error);
}

bool add_download(const fs::path& path, const DownloadRecord& record, std::string* error) {
    return add_record<DownloadRecord>(path, DOWNLOADS, DOWNLOAD_FIELDS, record, error);
}

bool add_fact(const fs::path& path, const FactRecord& record, std::string* error) {
    return add_record<FactRecord>(path, FACTS, FACT_FIELDS, record, error);
}

bool add_social(const fs::path& path, const SocialRecord& record, std::string* error) {
    return add_record<SocialRecord>(path, SOCIALS, SOCIAL_FIELDS, record, error);
}

bool add_policy(const fs::path& path, const PolicyRecord& record, std::string* error) {
    return add_record<PolicyRecord>(path, POLICIES, POLICY_FIELDS, record, error, &add_footer_link);
}

bool add_topic(const fs::path& manifest_path, const TopicRecord& record, std::string* error) {
    return add_record<TopicRecord>(manifest_path, TOPICS, TOPIC_FIELDS, record, error);
}

bool add_empty_object(const fs::path& path, const std::string& key, std::string* error) {
    const auto set_object = [&](Json& json) {
        json[key] = Json::object();
        return Result();
    };
    return edit_config_file(path, set_object).report_to(error);
}

Result remove_record(const fs::path& path, const std::string& key, const ShownRecord& shown) {
    return edit_config_file(path,
                            [&](Json& json) { return erase_shown(find_list(json, key), shown); });
}

Result remove_topic(const fs::path& manifest_path, const ShownRecord& shown) {
    return edit_record_file(manifest_path, RecordFile::Manifest, [&](Json& json) {
        ensure_format(json);
        return erase_shown(find_list(json, "build", "topics"), shown);
    });
}

Result remove_policy(const fs::path& path, const ShownRecord& shown) {
    return edit_config_file(path, [&](Json& json) {
        Json* policies = find_list(json, "policies");
        const Json* policy = find_shown(policies, shown);
        const std::string slug = policy ? text_at(*policy, "slug") : "";
        Result erased = erase_shown(policies, shown);
        if (erased)
            remove_footer_links(json, slug);
        return erased;
    });
}

} // namespace Lumenfold
