#include "random_site.h"

#include "support/temp_dir.h"

#include <algorithm>
#include <functional>

namespace TestSupport {

namespace fs = std::filesystem;
using Lumenfold::Json;

namespace {

const std::string SITE_FILE = "site/.lumenfold-site";
constexpr const char* NAMING_KEYS[] = {"name", "label", "platform_label"};

std::string name_of(const fs::path& file) {
    return file.filename().string();
}

/// What is in a record itself.
Json own_values(const Json& record) {
    Json own = Json::object();
    for (const auto& [key, value] : record.items())
        if (value.is_primitive() && key != "uid")
            own[key] = value;
    return own;
}

void collect(const Json& value, const std::string& file, const std::string& place, Look& look) {
    if (value.is_array()) {
        auto& uids = look.lists[place];
        for (const Json& element : value) {
            collect(element, file, place, look);
            if (element.is_object() && element.contains("uid"))
                uids.push_back(element["uid"]);
        }
    } else if (value.is_object()) {
        if (value.contains("uid"))
            look.records[value["uid"]] = {file, place, own_values(value)};
        for (const auto& [key, child] : value.items())
            collect(child, file, place + "/" + key, look);
    }
}

std::string title_of_type(const std::string& type) {
    return type == "description" ? "Website Description"
           : type == "projects"  ? "Projects"
           : type == "socials"   ? "Socials"
                                 : "";
}

/// The lists of records in a configuration.
void find_lists(Json& value, std::vector<Json*>& lists) {
    if (value.is_array() && !value.empty() && value[0].is_object())
        lists.push_back(&value);
    if (value.is_structured())
        for (Json& child : value)
            find_lists(child, lists);
}

} // namespace

Site::Site(Random& random, fs::path root)
    : random_(random)
    , root_(std::move(root)) {
    Json site = {{"uid", "site"}, {"title", random_.word()}, {"description", random_.word()}};
    for (const char* type : {"description", "projects", "socials"}) {
        site["home"]["sections"].push_back(
            {{"uid", std::string("section ") + type}, {"type", type}});
        owners_[title_of_type(type)] = std::string("section ") + type;
    }
    for (const char* file : {"policies/p0.md", "policies/p1.md", "policies/p2.md"}) {
        site["socials"].push_back(make_record({"label", "url"}));
        site["policies"].push_back(make_record({"name", "slug", "title"}, {{"file", file}}));
        put("site/" + std::string(file), random_.word());
        const std::string body = "/content-fragments/" + random_.word() + "_home.html";
        site["home"]["sections"].push_back(
            make_record({"id", "label"}, {{"type", "custom"}, {"body", body}}));
        put("site" + body, random_.word());
    }
    for (const char* slug : {"a", "b", "c"}) {
        make_project(slug);
        site["projects"].push_back(
            {{"uid", std::string("entry ") + slug},
             {"config", std::string("./projects/") + slug + "/.lumenfold-project"}});
    }
    put(SITE_FILE, site);
}

Json Site::make_record(std::initializer_list<const char*> named,
                       std::initializer_list<std::pair<const char*, std::string>> others) {
    Json record = Json::object();
    for (const char* key : named)
        record[key] = random_.word();
    for (const auto& [key, value] : others)
        record[key] = value;
    claim(record, random_.word());
    return record;
}

void Site::make_project(const std::string& slug) {
    const std::string folder = "site/projects/" + slug + "/";
    Json project = {{"uid", slug}, {"slug", slug}, {"name", random_.word()}};
    project["build"] = {{"source_path", "src"}};
    for (int i = 0; i < 3; ++i) {
        project["facts"].push_back(make_record({"label", "value"}));
        project["requires"].push_back(make_record({"name", "url"}));
        project["downloads"].push_back(make_record({"platform_label", "url"}));
    }
    claim(project, slug);
    put(folder + ".lumenfold-project", project);
    for (const std::string source : {"src", "src2"}) {
        Json manifest = {{"build", {{"readme", "README.md"}, {"license", "LICENSE"}}}};
        for (const char* file : {"t0.md", "t1.md"}) {
            manifest["build"]["topics"].push_back(
                make_record({"label", "slug", "title"}, {{"source", file}}));
            put(folder + source + "/" + file, random_.word());
        }
        claim(manifest, slug + " " + source);
        put(folder + source + "/.lumenfold", manifest);
        put(folder + source + "/README.md", random_.word());
        put(folder + source + "/LICENSE", random_.word());
    }
}

std::vector<fs::path> Site::to_open() const {
    return {at(SITE_FILE), at("site/projects/a/.lumenfold-project"),
            at("site/projects/b/.lumenfold-project"), at("site/projects/c/.lumenfold-project")};
}

Look Site::look() const {
    Look look;
    look.files = file_tree(root_);
    for (const auto& [file, content] : look.files) {
        if (!is_configuration(file))
            continue;
        const auto json = Lumenfold::parse_json(content);
        if (json)
            collect(*json, file, file + "#", look);
        look.all_parse = look.all_parse && json;
    }
    return look;
}

// --- Somebody else

std::vector<std::string> Site::files(bool configurations) const {
    std::vector<std::string> names;
    for (const auto& [file, content] : file_tree(root_))
        if (!file.ends_with("/") && is_configuration(file) == configurations)
            names.push_back(file);
    return names;
}

void Site::save_earlier(const std::string& file) {
    const std::string content = read_file(at(file));
    auto& earlier = earlier_[file];
    if (!is_configuration(file) || Lumenfold::parse_json(content))
        earlier.push_back(content);
    if (earlier.size() > 6)
        earlier.erase(earlier.begin());
}

void Site::put(const std::string& file, const std::string& text) {
    write_file(at(file), text);
}

void Site::put(const std::string& file, const Json& json) {
    put(file, Lumenfold::dump_config(json).value_or(""));
}

std::string Site::restore() {
    std::vector<std::string> names;
    for (const auto& [file, contents] : earlier_)
        if (!contents.empty())
            names.push_back(file);
    if (names.empty())
        return "nothing";
    const auto is_broken = [&](const std::string& file) {
        return is_configuration(file) && !Lumenfold::parse_json(read_file(at(file)));
    };
    const auto broken = std::find_if(names.begin(), names.end(), is_broken);
    const std::string file = broken != names.end() ? *broken : random_.any_of(names);
    put(file, random_.any_of(earlier_[file]));
    return "restores " + file;
}

/// Puts a new record of the same kind somewhere in front of one.
void Site::add_twin(Json& list, std::size_t at) {
    Json twin = list[at];
    if (twin.contains("config") || !title_of_type(twin.value("type", "")).empty())
        return; // there is one of each
    for (const char* key : {"name", "label", "platform_label", "url", "slug", "id", "value"})
        if (twin.contains(key))
            twin[key] = random_.word();
    twin.erase("uid");
    claim(twin, random_.word());
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(random_.below(at + 1)), twin);
}

std::string Site::disturb_list(const std::string& file, Json& json) {
    std::vector<Json*> lists;
    find_lists(json, lists);
    if (lists.empty())
        return "nothing";
    Json& list = *random_.any_of(lists);
    const std::size_t at = random_.below(list.size());
    switch (random_.below(5)) {
    case 0:
        std::swap(list[at], list[random_.below(list.size())]);
        break;
    case 1:
        list.erase(at);
        break;
    case 2:
        add_twin(list, at);
        break;
    case 3:
        for (const char* key : NAMING_KEYS)
            if (list[at].contains(key)) {
                list[at][key] = random_.word();
                owners_[list[at][key]] = list[at].value("uid", "");
            }
        break;
    default:
        std::reverse(list.begin(), list.end());
    }
    put(file, json);
    return "changes a list of " + file;
}

std::string Site::disturb(const std::string& preferred) {
    std::string file = random_.any_of(files(!random_.one_in(3)));
    if (!preferred.empty() && fs::exists(at(preferred)) && random_.one_in(2))
        file = preferred;
    if (random_.one_in(4))
        return restore();
    save_earlier(file);
    if (random_.one_in(12)) {
        fs::remove(at(file));
        return "removes " + file;
    }
    if (!is_configuration(file)) {
        put(file, random_.word());
        return "writes " + file;
    }
    auto json = Lumenfold::parse_json(read_file(at(file)));
    if (!json)
        return restore();
    if (random_.one_in(12)) {
        put(file, Lumenfold::dump_config(*json).value_or("").substr(0, 40));
        return "breaks " + file;
    }
    return disturb_list(file, *json);
}

// --- Who is who

void Site::claim(Json& value, const std::string& uid) {
    if (!value.is_object())
        return;
    const std::string title = title_of_type(value.value("type", ""));
    std::string given = title.empty() ? uid : "section " + value.value("type", "");
    if (value.contains("config")) // of the registry
        given = "entry " + name_of(fs::path(value.value("config", "")).parent_path());
    const std::string own = value.value("uid", given);
    value["uid"] = own;
    owners_[own] = own;
    for (const char* key : NAMING_KEYS)
        if (value.contains(key) && value[key].is_string())
            owners_.try_emplace(value[key], own); // a footer link has its policy's name
    if (!title.empty())
        owners_[title] = own;
    claim_children(value, own);
}

void Site::claim_children(Json& value, const std::string& uid) {
    for (auto& [key, child] : value.items()) {
        if (child.is_array())
            for (Json& element : child)
                claim(element, random_.word());
        else if (key == "build")
            claim(child, uid + " build");
        else if (child.is_object())
            claim_children(child, uid);
    }
}

void Site::claim_new_records() {
    for (const std::string& file : files(true)) {
        auto json = Lumenfold::parse_json(read_file(at(file)));
        if (!json || !json->is_object())
            continue;
        const Json before = *json;
        const fs::path path(file);
        const std::string uid =
            name_of(path) == ".lumenfold-project"
                ? json->value("slug", "")
                : name_of(path.parent_path().parent_path()) + " " + name_of(path.parent_path());
        claim(*json, uid);
        if (*json != before)
            put(file, *json);
    }
}

std::string Site::owner_of(const std::string& name) const {
    const auto owner = owners_.find(name);
    return owner == owners_.end() ? std::string() : owner->second;
}

void Site::owns(const std::string& text, const std::pair<std::string, std::string>& place) {
    if (std::find(std::begin(NAMING_KEYS), std::end(NAMING_KEYS), place.second) !=
        std::end(NAMING_KEYS))
        owners_[text] = place.first;
}

std::string Site::value_for(const std::string& key, const std::string& word) {
    const std::string number = std::to_string(random_.below(4));
    if (key == "source_path")
        return random_.one_of({"src", "src2"});
    if (key == "file")
        return "policies/p" + number + ".md";
    return key == "source" ? "t" + number + ".md" : word;
}

std::string Site::with_title(const std::string& text, const std::string& word) {
    auto json = Lumenfold::parse_json(text);
    if (!json || !json->is_object())
        return "{\"description\": \"" + word;
    (*json)["description"] = word;
    return Lumenfold::dump_config(*json).value_or("");
}

bool Site::is_configuration(const std::string& file) {
    const std::string name = name_of(file);
    return name == ".lumenfold-site" || name == ".lumenfold-project" || name == ".lumenfold";
}

bool Site::is_in_its_place(const std::string& file) {
    const std::string name = name_of(file);
    const bool is_known = file.ends_with("/") || is_configuration(file) || name == "LICENSE" ||
                          name.ends_with(".md") || name.ends_with(".html");
    return is_known && file.starts_with("site/") && file.find("..") == std::string::npos &&
           file.find('~') == std::string::npos;
}

} // namespace TestSupport
