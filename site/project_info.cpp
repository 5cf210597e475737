#include "site/project_info.h"

#include "site/file_stamp.h"
#include "site/json_file.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <mutex>
#include <unordered_map>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

ProjectInfo unreadable(std::string problem) {
    ProjectInfo info;
    info.problem = std::move(problem);
    return info;
}

ProjectInfo read_file(const fs::path& file) {
    const std::optional<std::string> text = read_text_file(file);
    if (!text) {
        std::error_code error;
        return fs::exists(file, error) ? unreadable("Cannot be read") : ProjectInfo();
    }
    JsonError error;
    const std::optional<Json> json = parse_json(*text, &error);
    if (!json)
        return unreadable(describe_json_error(error, *text));
    if (!json->is_object())
        return unreadable("Not a JSON object");
    const auto slug = json->find("slug");
    return {.slug = text_at(*json, "slug"),
            .name = text_at(*json, "name"),
            .tagline = text_at(*json, "tagline"),
            .parent_slug = text_at(*json, "parent_slug"),
            .family_label = text_at(*json, "family_label"),
            .logo = text_at(*json, "logo"),
            .problem = {},
            .slug_is_text = slug == json->end() || slug->is_string()};
}

/// What was read of files, by their paths. May be asked from any thread.
class ProjectMemory {
public:
    ProjectInfo info_of(const fs::path& file) {
        const std::optional<FileStamp> stamp = stamp_of(file);
        const std::lock_guard lock(mutex_);
        const auto known = memory_.find(file.native());
        if (stamp && known != memory_.end() && known->second.stamp == *stamp)
            return known->second.info;
        const fs::file_time_type now = fs::file_time_type::clock::now();
        ProjectInfo info = read_file(file);
        if (stamp && is_settled(*stamp, now))
            remember(file, {*stamp, info});
        else if (known != memory_.end())
            memory_.erase(known);
        return info;
    }

private:
    static constexpr std::size_t MAX_FILES = 50'000;

    struct Entry {
        FileStamp stamp;
        ProjectInfo info;
    };

    void remember(const fs::path& file, Entry entry) {
        if (memory_.size() >= MAX_FILES)
            memory_.clear();
        memory_.insert_or_assign(file.native(), std::move(entry));
    }

    std::mutex mutex_;
    std::unordered_map<fs::path::string_type, Entry> memory_;
};

} // namespace

ProjectInfo read_project_info(const std::string& reference, const fs::path& site_root) {
    return read_project_info(site_root / path_from_utf8(reference));
}

ProjectInfo read_project_info(const fs::path& file) {
    static ProjectMemory memory;
    return memory.info_of(file);
}

} // namespace Lumenfold
