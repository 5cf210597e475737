#include "builder/versions/manifest.h"

#include "builder/versions/source_paths.h"
#include "site/config_files.h"
#include "site/creation.h"
#include "site/json_file.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace Lumenfold::Builder {
namespace {

/// Usual names in lowercase, the better first.
constexpr std::string_view README_NAMES[] = {"readme.md", "readme.markdown", "readme",
                                             "readme.txt"};
constexpr std::string_view LICENSE_NAMES[] = {"license", "license.md", "license.txt",
                                              "licence", "licence.md", "licence.txt",
                                              "copying", "copying.md", "copying.txt"};

std::string lowered(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
    return lower;
}

template <std::size_t Count>
std::string usual_file(const SourceTree& tree, const std::string_view (&wanted)[Count]) {
    const std::vector<std::string> names = tree.names("");
    for (const std::string_view each : wanted)
        for (const std::string& name : names)
            if (lowered(name) == each && tree.kind(name) == EntryKind::File)
                return name;
    return {};
}

/// The parser's words without its name for the error and the line, which stands before them.
std::string plain_words(const std::string& message) {
    const std::size_t bracket = message.find("] ");
    const std::size_t column = message.find("column ");
    return column != std::string::npos    ? message.substr(column)
           : bracket != std::string::npos ? message.substr(bracket + 2)
                                          : message;
}

class Reading {
public:
    Reading(const SourceTree& tree, const std::string& source_name, Messages& messages)
        : tree_(tree)
        , file_(source_name.empty() ? MANIFEST_FILE_NAME : source_name + "/" + MANIFEST_FILE_NAME)
        , messages_(messages) {}

    std::optional<Manifest> read() {
        const std::optional<Json> json = read_json();
        if (!json)
            return std::nullopt;
        const Json build = object_at(*json, "build");
        Manifest manifest;
        manifest.readme = document(build, "readme", "README");
        manifest.license = document(build, "license", "license");
        if (manifest.readme.empty() && text_at(build, "readme").empty())
            manifest.readme = usual_file(tree_, README_NAMES);
        if (manifest.license.empty() && text_at(build, "license").empty())
            manifest.license = usual_file(tree_, LICENSE_NAMES);
        const auto topics = build.find("topics");
        if (topics != build.end() && topics->is_array())
            read_topics(*topics, manifest.topics);
        else if (topics != build.end() && !topics->is_null())
            complain("\"topics\" is no list; topics are left out");
        return manifest;
    }

private:
    static Json object_at(const Json& json, const char* key) {
        const auto found = json.find(key);
        return found != json.end() && found->is_object() ? *found : Json::object();
    }

    std::optional<Json> read_json() {
        const std::optional<std::string> text = tree_.read(MANIFEST_FILE_NAME);
        if (!text) {
            const std::string problem = tree_.kind(MANIFEST_FILE_NAME) == EntryKind::Missing
                                            ? "no manifest here"
                                            : "the manifest cannot be read";
            fault(0, problem + "; save README and topics of the project in Lumenfold, and commit "
                               "the file before the tag");
            return std::nullopt;
        }
        JsonError error;
        std::optional<Json> json = parse_json(*text, &error);
        if (!json) {
            const auto end =
                text->begin() + static_cast<std::ptrdiff_t>(std::min(error.byte, text->size()));
            fault(error.byte == 0
                      ? 0
                      : 1 + static_cast<std::size_t>(std::count(text->begin(), end, '\n')),
                  "the manifest is not valid JSON: " + plain_words(error.message));
            return std::nullopt;
        }
        std::string refusal = json->is_object() ? "" : "holds no JSON object";
        if (!refusal.empty() || !check_format(*json, &refusal)) {
            fault(0, "the manifest " + refusal);
            return std::nullopt;
        }
        return json;
    }

    /// The file that a key names, if the tree has it.
    std::string document(const Json& build, const char* key, const std::string& what) {
        const std::string path = text_at(build, key);
        return path.empty() ? path : existing_file(path, what);
    }

    std::string existing_file(const std::string& path, const std::string& what) {
        const std::optional<std::string> inside = joined_path("", path);
        if (!inside || path.starts_with('/')) {
            complain(what + ": \"" + path + "\" does not lie in the source folder; move it there");
            return {};
        }
        if (tree_.kind(*inside) == EntryKind::File)
            return *inside;
        complain(what + ": " + missing_file(tree_, *inside));
        return {};
    }

    void read_topics(const Json& list, std::vector<ManifestTopic>& topics) {
        std::size_t number = 0;
        for (const Json& each : list) {
            ++number;
            ManifestTopic topic{text_at(each, "slug"), text_at(each, "label"),
                                text_at(each, "title"), text_at(each, "intro"),
                                text_at(each, "source")};
            if (!has_fit_slug(topic, number, topics))
                continue;
            topic.source = topic_source(topic);
            if (!topic.source.empty())
                topics.push_back(std::move(topic));
        }
    }

    bool has_fit_slug(const ManifestTopic& topic, std::size_t number,
                      const std::vector<ManifestTopic>& topics) {
        const std::string& name = topic.label.empty() ? topic.title : topic.label;
        const std::string what =
            "topic " + std::to_string(number) + (name.empty() ? "" : " (" + name + ")");
        if (topic.slug.empty())
            complain(what + " has no slug and gets no page; give it one");
        else if (!is_valid_slug(topic.slug))
            complain(what + ": the slug \"" + topic.slug +
                     "\" cannot name a page; use lowercase letters and digits in dash-separated "
                     "runs");
        else if (std::any_of(topics.begin(), topics.end(),
                             [&](const ManifestTopic& other) { return other.slug == topic.slug; }))
            complain(what + ": an earlier topic has the slug \"" + topic.slug +
                     "\" and so the same address; give one of them another");
        else
            return true;
        return false;
    }

    std::string topic_source(const ManifestTopic& topic) {
        const std::string what = "topic \"" + topic.slug + "\"";
        if (!topic.source.empty())
            return existing_file(topic.source, what);
        complain(what + " names no source file and gets no page; choose one");
        return {};
    }

    void complain(std::string text) {
        messages_.push_back({Severity::Complaint, file_, 0, std::move(text)});
    }

    void fault(std::size_t line, std::string text) {
        messages_.push_back({Severity::Fault, file_, line, std::move(text)});
    }

    const SourceTree& tree_;
    std::string file_;
    Messages& messages_;
};

} // namespace

std::optional<Manifest> read_manifest(const SourceTree& tree, const std::string& source_name,
                                      Messages& messages) {
    return Reading(tree, source_name, messages).read();
}

} // namespace Lumenfold::Builder
