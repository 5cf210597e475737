// The first line of the input holds an operation's number and its arguments, separated by tabs; the
// rest is the file that it changes.
#include "site/config_files.h"
#include "site/new_project.h"
#include "site/promotion.h"
#include "site/records.h"
#include "site/registry.h"
#include "site/versions.h"
#include "temp_folder.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <vector>

using namespace Lumenfold;

namespace {

struct Call {
    std::size_t operation = 0;
    std::vector<std::string> texts = std::vector<std::string>(6);
    std::filesystem::path file;

    ShownRecord shown() const { return {texts[0].size(), {{texts[1], texts[2]}}}; }
};

using Operation = bool (*)(const Call& call);

const Operation OPERATIONS[] = {
    [](const Call& c) {
        return add_dependency(c.file, {c.texts[0], c.texts[1], c.texts[2], true}, nullptr);
    },
    [](const Call& c) {
        return add_download(c.file, {c.texts[0], c.texts[1], c.texts[2], c.texts[3]}, nullptr);
    },
    [](const Call& c) {
        return add_fact(c.file, {c.texts[0], c.texts[1], c.texts[2], c.texts[3]}, nullptr);
    },
    [](const Call& c) {
        return add_social(c.file, {c.texts[0], c.texts[1], c.texts[2], c.texts[3], true}, nullptr);
    },
    [](const Call& c) {
        return add_policy(c.file, {c.texts[0], c.texts[1], c.texts[2], c.texts[3], false}, nullptr);
    },
    [](const Call& c) {
        return add_topic(c.file, {c.texts[0], c.texts[1], c.texts[2], c.texts[3], c.texts[4]},
                         nullptr);
    },
    [](const Call& c) { return add_empty_object(c.file, c.texts[0], nullptr); },
    [](const Call& c) { return bool(add_project_entry(c.file, c.texts[0])); },
    [](const Call& c) { return bool(add_home_section(c.file, Json(c.texts[0]))); },
    [](const Call& c) {
        return bool(move_home_section(c.file, c.shown(), static_cast<int>(c.texts[3].size()) - 2));
    },
    [](const Call& c) { return bool(remove_home_section(c.file, c.shown())); },
    [](const Call& c) { return bool(remove_record(c.file, c.texts[3], c.shown())); },
    [](const Call& c) { return bool(remove_topic(c.file, c.shown())); },
    [](const Call& c) { return bool(remove_policy(c.file, c.shown())); },
    [](const Call& c) { return bool(remove_projects(c.file, {c.file.parent_path() / "project"})); },
    [](const Call& c) { return bool(include_version(c.file, c.texts[0], c.texts[1])); },
    [](const Call& c) { return bool(exclude_version(c.file, c.texts[0])); },
    [](const Call& c) {
        return create_project(c.file, {c.texts[0], c.texts[1], c.texts[2], c.texts[3], c.texts[4]},
                              nullptr, nullptr);
    },
    [](const Call& c) {
        return promote_to_family(c.file, c.file, c.texts[0], c.texts[1], nullptr, nullptr, nullptr);
    },
};

Call read_call(std::string_view line) {
    Call call;
    std::size_t part = 0;
    for (std::size_t at = 0; at <= line.size() && part <= call.texts.size(); ++part) {
        const std::size_t end = std::min(line.find('\t', at), line.size());
        const std::string text(line.substr(at, end - at));
        if (part == 0)
            call.operation =
                static_cast<std::size_t>(std::atoi(text.c_str())) % std::size(OPERATIONS);
        else
            call.texts[part - 1] = text;
        at = end + 1;
    }
    return call;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t line = std::min(input.find('\n'), input.size());
    const std::string text(input.substr(std::min(line + 1, input.size())));
    Call call = read_call(input.substr(0, line));
    const std::filesystem::path folder = temp_folder() / "site";
    std::filesystem::create_directories(folder);
    call.file = folder / "file";
    put_file(call.file, text);
    const bool done = OPERATIONS[call.operation](call);
    if (!done)
        require(read_text_file(call.file) == text);
    else
        require(read_json_file(call.file)->is_object());
    for (const auto& entry : std::filesystem::directory_iterator(temp_folder()))
        require(entry.path() == folder); // nothing leaves the site
    std::filesystem::remove_all(folder);
    return 0;
}
