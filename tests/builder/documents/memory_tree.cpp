#include "builder/documents/memory_tree.h"

#include <algorithm>
#include <set>
#include <sstream>

namespace Lumenfold::Builder {
namespace {

std::string big32(unsigned value) {
    std::string bytes;
    for (const int shift : {24, 16, 8, 0})
        bytes += static_cast<char>(value >> shift & 0xFF);
    return bytes;
}

std::string png(const std::string& size) {
    std::istringstream numbers(size);
    unsigned width = 0;
    unsigned height = 0;
    char x = 0;
    numbers >> width >> x >> height;
    return "\x89PNG\r\n\x1A\n" + big32(13) + "IHDR" + big32(width) + big32(height);
}

} // namespace

MemoryTree::MemoryTree(const std::string& script) {
    std::istringstream lines(script);
    Entry* file = nullptr;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with('@')) {
            if (file != nullptr)
                file->bytes += line + "\n";
            continue;
        }
        const std::size_t blank = std::min(line.find(' '), line.size() - 1);
        const std::string verb = line.substr(0, blank);
        const std::string path = line.substr(blank + 1);
        file = nullptr;
        if (verb == "@prefix")
            prefix_ = path;
        else if (verb == "@link")
            entries_[path] = {EntryKind::Link, {}};
        else if (verb == "@submodule")
            entries_[path] = {EntryKind::Submodule, {}};
        else if (verb == "@png")
            entries_[path.substr(0, path.rfind(' '))] = {EntryKind::File,
                                                         png(path.substr(path.rfind(' ') + 1))};
        else if (verb == "@")
            file = &entries_[path];
    }
}

EntryKind MemoryTree::kind(std::string_view path) const {
    const auto entry = entries_.find(path);
    if (entry != entries_.end())
        return entry->second.kind;
    return path.empty() || !names(path).empty() ? EntryKind::Folder : EntryKind::Missing;
}

std::optional<std::string> MemoryTree::read(std::string_view path) const {
    const auto entry = entries_.find(path);
    if (entry == entries_.end() || entry->second.kind != EntryKind::File)
        return std::nullopt;
    return entry->second.bytes;
}

std::vector<std::string> MemoryTree::names(std::string_view folder) const {
    const std::string start = folder.empty() ? "" : std::string(folder) + "/";
    std::set<std::string> names;
    for (const auto& [path, entry] : entries_)
        if (path.starts_with(start))
            names.insert(path.substr(start.size(), path.find('/', start.size()) - start.size()));
    return {names.begin(), names.end()};
}

std::string MemoryTree::identity(std::string_view path) const {
    return read(path).value_or("");
}

} // namespace Lumenfold::Builder
