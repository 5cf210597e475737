#include "builder/versions/source_paths.h"

#include "builder/documents/anchors.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Lumenfold::Builder {
namespace {

std::vector<std::string_view> components(std::string_view path) {
    std::vector<std::string_view> parts;
    while (!path.empty()) {
        const std::size_t slash = std::min(path.find('/'), path.size());
        parts.push_back(path.substr(0, slash));
        path.remove_prefix(std::min(slash + 1, path.size()));
    }
    return parts;
}

bool ends_with_any(std::string_view name, std::initializer_list<std::string_view> endings) {
    return std::any_of(endings.begin(), endings.end(), [&](std::string_view ending) {
        return name.size() > ending.size() &&
               std::equal(ending.begin(), ending.end(), name.end() - ending.size(),
                          [](char wanted, char c) { return wanted == (c | 0x20) || wanted == c; });
    });
}

} // namespace

std::string_view folder_of(std::string_view path) {
    return path.substr(0, path.rfind('/') + 1);
}

std::string_view file_name_of(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

std::optional<std::string> joined_path(std::string_view folder, std::string_view relative) {
    std::vector<std::string_view> parts = components(folder);
    for (const std::string_view part : components(relative)) {
        if (part.empty() || part == ".")
            continue;
        if (part != "..")
            parts.push_back(part);
        else if (parts.empty())
            return std::nullopt;
        else
            parts.pop_back();
    }
    std::string path;
    for (const std::string_view part : parts)
        path.append(path.empty() ? "" : "/").append(part);
    return path;
}

std::string relative_way(std::string_view from_page, std::string_view to) {
    std::string_view from = folder_of(from_page);
    while (!from.empty() && to.starts_with(from.substr(0, from.find('/') + 1))) {
        const std::size_t part = from.find('/') + 1;
        from.remove_prefix(part);
        to.remove_prefix(part);
    }
    std::string way;
    for (const char c : from)
        way += c == '/' ? "../" : "";
    return way.append(to);
}

bool is_markdown(std::string_view path) {
    return ends_with_any(file_name_of(path), {".md", ".markdown", ".mdown", ".mkd"});
}

Found find_in(const SourceTree& tree, std::string_view path) {
    const EntryKind kind = tree.kind(path);
    if (kind == EntryKind::Link || kind == EntryKind::Submodule)
        return {kind, std::string(path)};
    if (kind != EntryKind::Missing)
        return {kind, {}};
    for (std::size_t slash = 0; (slash = path.find('/', slash)) != std::string_view::npos;
         ++slash) {
        const EntryKind above = tree.kind(path.substr(0, slash));
        if (above == EntryKind::Link || above == EntryKind::Submodule)
            return {above, std::string(path.substr(0, slash))};
        if (above == EntryKind::Missing)
            break;
    }
    return {};
}

std::string nearest_path(const SourceTree& tree, std::string_view missing) {
    const std::string_view folder = folder_of(missing);
    const std::string_view plain = folder.empty() ? folder : folder.substr(0, folder.size() - 1);
    const std::vector<std::string> names = tree.names(plain);
    const std::string_view near = nearest(file_name_of(missing), names);
    return near.empty() ? std::string() : std::string(folder).append(near);
}

std::string missing_file(const SourceTree& tree, std::string_view path, bool suggest) {
    const std::string quoted = "\"" + std::string(path) + "\"";
    const Found found = find_in(tree, path);
    if (found.kind == EntryKind::Link)
        return quoted + " is reached by the symbolic link \"" + found.obstacle +
               "\"; links are not followed: put the file itself there";
    if (found.kind == EntryKind::Submodule)
        return quoted + " belongs to the submodule \"" + found.obstacle +
               "\", which is not read; put a copy beside the documents";
    if (found.kind == EntryKind::Folder)
        return quoted + " is a folder, not a file";
    const std::string near = suggest ? nearest_path(tree, path) : std::string();
    return "no file " + quoted +
           (near.empty() ? "; correct the path" : "; did you mean \"" + near + "\"?");
}

} // namespace Lumenfold::Builder
